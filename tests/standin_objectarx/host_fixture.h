/// A host with a small drawing, and what it reported to its listener.
#ifndef TESTS_STANDIN_OBJECTARX_HOST_FIXTURE_H
#define TESTS_STANDIN_OBJECTARX_HOST_FIXTURE_H

#include "standin/objectarx/drawing.h"
#include "standin/objectarx/host_control.h"
#include "tests/support/host_recorder.h"

// clang-format off
#include "dbmain.h"
#include "acdocman.h"
// clang-format on

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Entities: 10 a line from (0,0,0) to (10,0,0); 11 a circle of radius 2 about (5,5,0); 12 a line on a locked
/// layer.
class HostTest : public testing::Test {
 protected:
  HostTest() {
    standin::host::start([this] { ++mDrawnCount; });
    auto drawing = std::make_unique<standin::Drawing>();
    drawing->addLayer({"kept", 1, true, true});
    drawing->add(standin::makeLine({0x10}, {0, 0, 0}, {10, 0, 0}));
    drawing->add(standin::makeCircle({0x11}, {5, 5, 0}, {0, 0, 1}, 2));
    drawing->add(standin::makeLine({0x12, "kept"}, {0, 8, 0}, {10, 8, 4}));
    standin::host::openDocument(std::move(drawing));
    standin::host::setListener(&mHost);
  }
  ~HostTest() override {
    standin::host::setListener(nullptr);
    standin::host::start();
  }

  static AcApDocument* document() { return acDocManager->curDocument(); }
  static void lock() { ASSERT_EQ(acDocManager->lockDocument(document()), Acad::eOk); }
  static Acad::ErrorStatus open(AcDbEntity*& entityP, std::uint64_t handle, AcDb::OpenMode mode,
                                bool openErased = false) {
    return acdbOpenAcDbEntity(entityP, AcDbObjectId(standin::host::objectIdOf(handle)), mode, openErased);
  }
  static std::vector<std::string> breaches() { return standin::host::counts().breaches; }
  static standin::Polyline3 pointsOf(std::uint64_t handle) {
    return standin::host::drawing()->find(handle)->points();
  }

  HostRecorder mHost;
  int mDrawnCount = 0;
};

inline void expectPoint(const AcGePoint3d& point, double x, double y, double z) {
  EXPECT_NEAR(point.x, x, 1e-9);
  EXPECT_NEAR(point.y, y, 1e-9);
  EXPECT_NEAR(point.z, z, 1e-9);
}

#endif
