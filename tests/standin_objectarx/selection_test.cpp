#include "host_fixture.h"

// clang-format off
#include "acedads.h"
#include "dbmain.h"
#include "gs.h"
#include "acgs.h"
// clang-format on

#include "gmock/gmock.h"

namespace {

using namespace standin;
using Selection = HostTest;

TEST_F(Selection, EmptyPreSelectionGivesAnError) {
  ads_name ss = {7, 7};
  EXPECT_EQ(acedSSGet(L"I", nullptr, nullptr, nullptr, ss), RTERROR);
  EXPECT_EQ(ss[0], 7);
}

TEST_F(Selection, SetHoldsWhatWasSelectedInOrder) {
  ASSERT_TRUE(host::select({0x12, 0x10}));
  ads_name ss;
  ASSERT_EQ(acedSSGet(L"I", nullptr, nullptr, nullptr, ss), RTNORM);
  host::selectNone();
  AdInt32 length = 0;
  EXPECT_EQ(acedSSLength(ss, &length), RTNORM);
  EXPECT_EQ(length, 2);
  ads_name name;
  AcDbObjectId id;
  ASSERT_EQ(acedSSName(ss, 1, name), RTNORM);
  ASSERT_EQ(acdbGetObjectId(id, name), Acad::eOk);
  EXPECT_EQ(id, AcDbObjectId(host::objectIdOf(0x10)));
  EXPECT_EQ(acedSSName(ss, 2, name), RTERROR);
  EXPECT_EQ(acedSSName(ss, -1, name), RTERROR);
  EXPECT_EQ(acedSSFree(ss), RTNORM);
}

TEST_F(Selection, HostCountsSetsUntilTheyAreFreed) {
  host::selectAll();
  ads_name first;
  ads_name second;
  acedSSGet(L"I", nullptr, nullptr, nullptr, first);
  acedSSGet(L"_i", nullptr, nullptr, nullptr, second);
  EXPECT_EQ(host::counts().selectionSetsAlive, 2u);
  acedSSFree(first);
  EXPECT_EQ(host::counts().selectionSetsAlive, 1u);
  acedSSFree(second);
  EXPECT_EQ(host::counts().selectionSetsAlive, 0u);
}

TEST_F(Selection, UseOfAFreedSetBreaksARule) {
  host::selectAll();
  ads_name ss;
  AdInt32 length = 0;
  acedSSGet(L"I", nullptr, nullptr, nullptr, ss);
  acedSSFree(ss);
  EXPECT_EQ(acedSSFree(ss), RTERROR);
  EXPECT_EQ(acedSSLength(ss, &length), RTERROR);
  EXPECT_EQ(breaches(),
            (std::vector<std::string>{"acedSSFree: called for a selection set that is not alive",
                                      "acedSSLength: called for a selection set that is not alive"}));
}

TEST_F(Selection, OnlyTheImpliedModeFindsEntities) {
  host::selectAll();
  ads_name ss;
  EXPECT_EQ(acedSSGet(L"X", nullptr, nullptr, nullptr, ss), RTERROR);
  EXPECT_EQ(host::counts().selectionSetsAlive, 0u);
}

TEST_F(Selection, SelectAllLeavesOutErasedAndInvisibleEntities) {
  host::drawing()->addLayer({"off", 7, false, false});
  host::drawing()->add(makePoint({0x20, "off"}, {1, 1, 1}));
  host::drawing()->erase(0x11);
  host::selectAll();
  EXPECT_THAT(host::selection(), testing::ElementsAre(0x10u, 0x12u));
}

TEST_F(Selection, UnknownHandleSelectsNothing) {
  host::select({0x10});
  EXPECT_FALSE(host::select({0x11, 0x99}));
  EXPECT_THAT(host::selection(), testing::ElementsAre(0x10u));
}

/// Takes what is pre-selected, redraws each entity of it and frees it, as a pass over the selection does.
int redrawSelection() {
  ads_name ss;
  AdInt32 count = 0;
  EXPECT_EQ(acedSSGet(L"I", nullptr, nullptr, nullptr, ss), RTNORM);
  acedSSLength(ss, &count);
  for (AdInt32 i = 0; i < count; ++i) {
    ads_name name;
    acedSSName(ss, i, name);
    EXPECT_EQ(acedRedraw(name, 1), RTNORM);
  }
  acedSSFree(ss);
  return count;
}

TEST_F(Selection, RedrawRefusesWhatIsNoEntity) {
  host::select({0x10});
  ads_name ss;
  acedSSGet(L"I", nullptr, nullptr, nullptr, ss);
  EXPECT_EQ(acedRedraw(ss, 1), RTERROR);
  acedSSFree(ss);
  EXPECT_EQ(mDrawnCount, 0);
}

TEST_F(Selection, RunOfRedrawsDrawsOnce) {
  host::select({0x10, 0x11, 0x12});
  EXPECT_EQ(redrawSelection(), 3);
  EXPECT_EQ(mDrawnCount, 1);
}

TEST_F(Selection, EachPassOverTheSelectionDrawsAnew) {
  host::select({0x10, 0x11});
  redrawSelection();
  host::select({0x12});
  redrawSelection();
  EXPECT_EQ(mDrawnCount, 2);
}

TEST_F(Selection, RedrawAfterADrawingOfAllDrawsAnew) {
  host::select({0x10, 0x11});
  ads_name ss;
  ads_name name;
  acedSSGet(L"I", nullptr, nullptr, nullptr, ss);
  acedSSName(ss, 0, name);
  acedRedraw(name, 1);
  acgsGetGsView(2, true)->update();
  acedSSName(ss, 1, name);
  acedRedraw(name, 1);
  EXPECT_EQ(mDrawnCount, 3);
  acedSSFree(ss);
}

TEST_F(Selection, RefusedRedrawDrawsNothing) {
  host::select({0x10});
  host::faults().inject("acedRedraw", {Misbehaviour::kFail});
  ads_name ss;
  ads_name name;
  acedSSGet(L"I", nullptr, nullptr, nullptr, ss);
  acedSSName(ss, 0, name);
  EXPECT_EQ(acedRedraw(name, 1), RTERROR);
  EXPECT_EQ(mDrawnCount, 0);
  acedSSFree(ss);
}

}  // namespace
