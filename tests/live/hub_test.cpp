#include "workbench/live/hub.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace workbench {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class HubTest : public ::testing::Test {
 protected:
  HubTest() {
    hub.opened(1);
    hub.opened(2);
  }

  std::vector<std::string> deviceActions() {
    std::vector<std::string> texts;
    for (const PageDeviceAction& action : inbox.takeDevice()) texts.push_back(action.text);
    return texts;
  }

  /// Drops what arrives with the pages themselves.
  bool hasErrand() {
    Errand errand;
    while (inbox.take(errand))
      if (!std::holds_alternative<PageArrived>(errand.what) &&
          !std::holds_alternative<DriverChanged>(errand.what))
        return true;
    return false;
  }

  Inbox inbox;
  Hub hub{inbox};
};

TEST_F(HubTest, OfDeflectionsInARowTheLastIsKept) {
  hub.received(1, R"({"do": "motion 1 0 0 0 0 0"})");
  hub.received(1, R"({"do": "motion 2 0 0 0 0 0"})");
  hub.received(1, R"({"do": "key top"})");
  hub.received(1, R"({"do": "motion 3 0 0 0 0 0"})");
  EXPECT_THAT(deviceActions(), ElementsAre("motion 2 0 0 0 0 0", "key top", "motion 3 0 0 0 0 0"));
}

TEST_F(HubTest, PageThatWatchesIsHeardAndNotObeyed) {
  for (const char* text : {R"({"do": "motion 1 0 0 0 0 0"})", R"({"do": "select all"})", R"({"open": 0})",
                           R"({"settings": {"name": "x"}})", R"({"save": true})", R"({"report": true})"})
    EXPECT_TRUE(hub.received(2, text)) << text;
  EXPECT_THAT(deviceActions(), IsEmpty());
  EXPECT_FALSE(hasErrand());
}

TEST_F(HubTest, PageThatTakesOverIsObeyed) {
  hub.received(2, R"({"take": true})");
  EXPECT_EQ(hub.driver(), 2U);
  hub.received(1, R"({"do": "select all"})");
  EXPECT_FALSE(hasErrand());
  hub.received(2, R"({"do": "select all"})");
  EXPECT_TRUE(hasErrand());
}

TEST_F(HubTest, MessageThatIsNoneEndsTheConnection) {
  EXPECT_FALSE(hub.received(1, "{}"));
  EXPECT_FALSE(hub.received(2, R"({"do": "document open /etc/passwd.dxf"})"));
}

TEST_F(HubTest, PageThatClosesLetsTheCapGo) {
  hub.received(1, R"({"do": "motion 1 0 0 0 0 0"})");
  deviceActions();
  hub.closed(1);
  EXPECT_THAT(deviceActions(), ElementsAre("motion 0 0 0 0 0 0"));
  EXPECT_EQ(hub.driver(), 0U);
}

TEST_F(HubTest, CapIsLetGoAlsoWhileTheDeviceIsDown) {
  hub.received(1, R"({"do": "motion 1 0 0 0 0 0"})");
  hub.received(1, R"({"do": "device down"})");
  deviceActions();
  hub.closed(1);
  EXPECT_THAT(deviceActions(), ElementsAre("device up", "motion 0 0 0 0 0 0"));
}

TEST_F(HubTest, CapThatSpringsBackWhileTheDeviceIsDownIsLetGo) {
  hub.received(1, R"({"do": "motion 1 0 0 0 0 0"})");
  hub.received(1, R"({"do": "device down"})");
  hub.received(1, R"({"do": "motion 0 0 0 0 0 0"})");
  deviceActions();
  hub.closed(1);
  EXPECT_THAT(deviceActions(), ElementsAre("device up", "motion 0 0 0 0 0 0"));
}

TEST_F(HubTest, PageThatAsksTooMuchIsEnded) {
  for (std::size_t i = 0; i < Inbox::kMostErrands; ++i) hub.received(1, R"({"do": "select all"})");
  EXPECT_FALSE(hub.received(1, R"({"do": "select all"})"));
}

}  // namespace
}  // namespace workbench
