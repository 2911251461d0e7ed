#include "workbench/report/key_effects.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

TrajectoryRow viewRow(std::int64_t timeMs, const AcGePoint3d& position) {
  TrajectoryRow row;
  row.timeMs = timeMs;
  row.kind = RowKind::kView;
  row.camera.position = position;
  row.camera.fieldWidth = 160;
  row.camera.fieldHeight = 100;
  return row;
}

std::vector<ReportKey> effects(const std::string& session, const Recording& recording) {
  return keyEffects(parseSession(session, "a.session"), recording, {{"Plan", "_-VIEW;_TOP"}});
}

TEST(KeyEffects, KeyHasWhatWasSentAndSeenUntilTheNext) {
  Recording recording;
  recording.commandLine = {{101, LineKind::kSend, "one "},
                           {101, LineKind::kHost, "two"},
                           {250, LineKind::kSendActivate, "three\n"}};
  recording.rows = {viewRow(50, {1, 0, 0}), viewRow(110, {0, -5, 0}), viewRow(250, {0, 0, 9})};
  const auto keys = effects("100 key front\n200 function 0\n400 function 1\n", recording);
  ASSERT_EQ(keys.size(), 3u);
  EXPECT_EQ(keys[0].name, "key front");
  EXPECT_EQ(keys[0].sent, (std::vector<std::string>{"one "}));
  EXPECT_EQ(keys[0].view, "from the front, 160 x 100");
  EXPECT_EQ(keys[1].name, "function 0: Plan");
  EXPECT_EQ(keys[1].view, "from above, 160 x 100");
  EXPECT_EQ(keys[2].name, "function 1: there is none");
  EXPECT_EQ(keys[2].view, "");
}

TEST(KeyEffects, ActionOfTheUserEndsTheEffectOfAKey) {
  Recording recording;
  recording.rows = {viewRow(300, {1, 0, 0})};
  EXPECT_EQ(effects("100 key top\n300 projection perspective\n", recording).at(0).view, "");
}

TEST(KeyEffects, KeysPressedTogetherShareARow) {
  const auto keys = effects("100 key top\n100 motion 1 0 0 0 0 0\n100 key fit\n", {});
  ASSERT_EQ(keys.size(), 1u);
  EXPECT_EQ(keys[0].name, "key top, key fit");
}

TEST(KeyEffects, EveryStandardDirectionHasAName) {
  const std::pair<AcGePoint3d, const char*> table[] = {
      {{2, 0, 0}, "from the right"},         {{-2, 0, 0}, "from the left"}, {{0, 2, 0}, "from behind"},
      {{0, -2, 0}, "from the front"},        {{0, 0, 2}, "from above"},     {{0, 0, -2}, "from below"},
      {{3, 0, 4}, "from (0.60, 0.00, 0.80)"}};
  for (const auto& [position, words] : table)
    EXPECT_EQ(viewInWords(viewRow(0, position)), std::string(words) + ", 160 x 100");
}

TEST(KeyEffects, SheetIsDescribedByItsCentre) {
  TrajectoryRow row = viewRow(0, {210, 148.5, 0});
  row.isPaper = true;
  EXPECT_EQ(viewInWords(row), "the sheet around (210, 148.5), 160 x 100");
}

}  // namespace
}  // namespace workbench
