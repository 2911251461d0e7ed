#include "workbench/live/cap_guard.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

using std::chrono::milliseconds;

constexpr CapGuard::Axes kDeflected{0, 0, 0, 0, 350, 0};
constexpr CapGuard::Axes kReleased{};
const CapGuard::Time kStart{};

TEST(CapGuard, FirstPageDrives) {
  CapGuard guard;
  guard.opened(1);
  guard.opened(2);
  EXPECT_EQ(guard.driver(), 1U);
}

TEST(CapGuard, PageThatClosesLetsTheCapGo) {
  CapGuard guard;
  guard.opened(1);
  guard.moved(kDeflected, kStart);
  EXPECT_TRUE(guard.closed(1));
  EXPECT_EQ(guard.driver(), CapGuard::kNobody);
}

TEST(CapGuard, PageThatWatchesClosesWithoutEffect) {
  CapGuard guard;
  guard.opened(1);
  guard.opened(2);
  guard.moved(kDeflected, kStart);
  EXPECT_FALSE(guard.closed(2));
  EXPECT_EQ(guard.driver(), 1U);
}

TEST(CapGuard, CapAtRestNeedsNotBeLetGo) {
  CapGuard guard;
  guard.opened(1);
  guard.moved(kDeflected, kStart);
  guard.moved(kReleased, kStart);
  EXPECT_FALSE(guard.looked(kStart + std::chrono::hours(1)));
  EXPECT_FALSE(guard.closed(1));
}

TEST(CapGuard, SilenceLetsTheCapGoOnce) {
  CapGuard guard;
  guard.opened(1);
  guard.moved(kDeflected, kStart);
  EXPECT_FALSE(guard.looked(kStart + milliseconds(500)));
  EXPECT_TRUE(guard.looked(kStart + milliseconds(501)));
  EXPECT_FALSE(guard.looked(kStart + milliseconds(502)));
}

TEST(CapGuard, SignOfLifeKeepsTheCap) {
  CapGuard guard;
  guard.opened(1);
  guard.moved(kDeflected, kStart);
  guard.heard(1, kStart + milliseconds(400));
  EXPECT_FALSE(guard.looked(kStart + milliseconds(900)));
  EXPECT_TRUE(guard.looked(kStart + milliseconds(901)));
}

TEST(CapGuard, PageThatWatchesKeepsNothing) {
  CapGuard guard;
  guard.opened(1);
  guard.opened(2);
  guard.moved(kDeflected, kStart);
  guard.heard(2, kStart + milliseconds(400));
  EXPECT_TRUE(guard.looked(kStart + milliseconds(600)));
}

TEST(CapGuard, TakingOverLetsTheCapGo) {
  CapGuard guard;
  guard.opened(1);
  guard.opened(2);
  guard.moved(kDeflected, kStart);
  EXPECT_TRUE(guard.takenOver(2));
  EXPECT_EQ(guard.driver(), 2U);
  EXPECT_FALSE(guard.takenOver(2));
}

}  // namespace
}  // namespace workbench
