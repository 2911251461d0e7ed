#include "bench/pass/null_host.h"

// clang-format off
#include "dbmain.h"
#include "acedads.h"
#include "adscodes.h"
#include "gs.h"
#include "acgs.h"
// clang-format on

#include <windows.h>

HINSTANCE _hdllInstance = nullptr;

namespace {

/// Keeps what it is given, draws nothing.
class NullView final : public AcGsView {
 public:
  AcGePoint3d position() const override { return mPosition; }
  AcGePoint3d target() const override { return mTarget; }
  AcGeVector3d upVector() const override { return mUp; }
  bool isPerspective() const override { return false; }
  double fieldWidth() const override { return 16; }
  double fieldHeight() const override { return 9; }
  void setView(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& up, double, double,
               Projection) override {
    mPosition = position;
    mTarget = target;
    mUp = up;
  }
  void zoom(double) override {}
  bool isValid() const override { return true; }
  void update() override {}

 private:
  AcGePoint3d mPosition{10, -20, 15};
  AcGePoint3d mTarget{0, 0, 0};
  AcGeVector3d mUp{0, 0, 1};
};

NullView view;

}  // namespace

void resetNullView() {
  view = NullView();
}

/// TILEMODE and CVPORT alike: a viewport that is navigated in 3D.
extern "C" int acedGetVar(const ACHAR*, resbuf* result) {
  result->resval.rint = 2;
  return RTNORM;
}

AcGsView* acgsGetGsView(int, bool) {
  return &view;
}

Adesk::Boolean acgsSetViewParameters(int, const AcGsView*, bool, bool, bool) {
  return 1;
}
