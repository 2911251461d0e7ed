// A pass runs hundreds of times a second while the cap is held: it must not allocate. The stand-ins' calls
// that a pass makes do not either, so the count is the module's.
#include "standin_desktop.h"
#include "tests/module/module_fixture.h"
#include "tests/support/allocations.h"

#include <gtest/gtest.h>

namespace desktop = standin::desktop;
namespace host = standin::host;

namespace {

class PassAllocations : public ModuleTest {
 protected:
  void SetUp() override {
    restart(0);  // frames without time: the other threads rest
    writeSettings({{"warning", "off"},
                   {"creation", "off"},
                   {"trace", "off"},
                   {"devcom", "off"},
                   {"intcom", "off"},
                   {"info", "off"},
                   {"debug", "off"},
                   {"tmp", "off"}});
    load();
    host::setListener(nullptr);
  }
  void TearDown() override {
    deflect({});
    proxy().handleDeviceCap();
  }
  /// Allocations of a hundred passes after the first of a movement.
  std::uint64_t allocations(std::array<std::int16_t, 6> cap) {
    deflect(cap);
    proxy().handleDeviceCap();
    const std::uint64_t before = tests::allocations();
    for (int pass = 0; pass < 100; ++pass) proxy().handleDeviceCap();
    return tests::allocations() - before;
  }
};

TEST_F(PassAllocations, PassInSpaceAllocatesNothing) {
  EXPECT_EQ(allocations({1, -1, 1, 1, -1, 1}), 0u);
}

TEST_F(PassAllocations, PassAboutASelectedCentreAllocatesNothing) {
  ASSERT_TRUE(host::select({0x12}));
  EXPECT_EQ(allocations({0, 0, 0, 1, -1, 1}), 0u);
}

TEST_F(PassAllocations, PassOnTheSheetAllocatesNothing) {
  ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
  ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
  EXPECT_EQ(allocations({1, -1, 1, 0, 0, 0}), 0u);
}

TEST_F(PassAllocations, PassAllocatesNothingWhileThePointerRestsOnTheCanvas) {
  desktop::makeStandardDesktop();
  ASSERT_TRUE(desktop::pointAt("canvas"));
  EXPECT_EQ(allocations({1, -1, 1, 1, -1, 1}), 0u);
  desktop::clear();
}

TEST_F(PassAllocations, CounterCountsAnAllocation) {
  const std::uint64_t before = tests::allocations();
  const auto number = std::make_unique<int>(1);
  EXPECT_GT(tests::allocations(), before) << *number;
}

}  // namespace
