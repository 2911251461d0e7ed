#include "common_sources/auto_cad_proxy.h"

#include <cmath>

#include "LM_Daemon/src/logging.h"
#include "acdocman.h"
#include "acedads.h"
#include "adscodes.h"
#include "common_sources/axis_share.h"
#include "common_sources/host_objects.h"
#include "common_sources/lm_auto_cad.h"
#include "common_sources/zoom_factor.h"
#include "dbents.h"

namespace {

constexpr const char* kClass = "AutoCadProxy";
constexpr UINT kIdlePeriodMs = 100;
constexpr UINT kMovingPeriodMs = 10;
constexpr double kMoveGain = 5.0;
const AcGeVector3d kWorldZ(0, 0, 1);

// A Windows timer procedure gets no user data, and a command handler no object.
AutoCadProxy* theProxyP = nullptr;

short systemVariable(const ACHAR* name) {
  resbuf result{};
  acedGetVar(name, &result);
  return result.resval.rint;
}

AcGsView::Projection projection(bool isPerspective) {
  return isPerspective ? AcGsView::kPerspective : AcGsView::kParallel;
}

/// Centre of the entity's box.
AcGePoint3d boxCentre(const ads_name name) {
  OpenedEntity entity(name, AcDb::kForRead);
  AcDbExtents box;
  require(entity && entity->getGeomExtents(box) == Acad::eOk);
  entity.close();
  const AcGePoint3d low = box.minPoint();
  const AcGePoint3d high = box.maxPoint();
  return AcGePoint3d((low.x + high.x) * 0.5, (low.y + high.y) * 0.5, (low.z + high.z) * 0.5);
}

/// False, and nothing changed, when the entity is not a line or has no length.
bool readLine(const ads_name name, AcGeVector3d* directionP, AcGePoint3d* pointP) {
  OpenedEntity entity(name, AcDb::kForRead);
  require(static_cast<bool>(entity));
  AcGePoint3d start, end;
  const bool isLine = entity->isA()->isDerivedFrom(AcDbLine::desc());
  if (isLine) {
    const auto* const lineP = static_cast<const AcDbLine*>(entity.get());
    require(lineP->getStartPoint(start) == Acad::eOk && lineP->getEndPoint(end) == Acad::eOk);
  }
  entity.close();
  AcGeVector3d direction = end - start;
  if (!isLine || direction.dotProduct(direction) == 0.0) return false;
  *directionP = direction.normalize();
  *pointP = start;
  return true;
}

AcGePoint3d rotationCentre(const AcGsView* viewP, int rotCenterMode, bool isPerspective) {
  if (rotCenterMode == kCamStandard && isPerspective) return viewP->position();
  if (rotCenterMode == kCamTarget || rotCenterMode == kObjScreen) return viewP->target();
  return AcGePoint3d::kOrigin;
}

}  // namespace

AutoCadProxy::AutoCadProxy(LmAutoCad* lmAutoCadP) : mLmAutoCadP(lmAutoCadP) {
  LM_LOG(kCreation, kClass, "AutoCadProxy::AutoCadProxy") << "Constructing ...";
  mTransSensBase = mLmAutoCadP->transSensBase();
  mRotSensBase = mLmAutoCadP->rotSensBase();
  mMaxContMoveTime = static_cast<std::uint32_t>(mLmAutoCadP->maxContMoveTime());
  mUseInt3dIntrfce = mLmAutoCadP->useInt3dIntrfce();
  theProxyP = this;
  mTimerId = SetTimer(nullptr, 0, kIdlePeriodMs, TimerProc);
  LM_LOG(kCreation, kClass, "AutoCadProxy::AutoCadProxy") << "AutoCadProxy constructed.";
}

AutoCadProxy::~AutoCadProxy() {
  LM_LOG(kCreation, kClass, "AutoCadProxy::~AutoCadProxy") << "Destructing ...";
  mIsTimerActive = false;
  KillTimer(nullptr, mTimerId);
  theProxyP = nullptr;
  LM_LOG(kCreation, kClass, "AutoCadProxy::~AutoCadProxy") << "Destructed.";
}

AutoCadProxy* AutoCadProxy::instance() {
  return theProxyP;
}

const std::string& AutoCadProxy::applModeName() const {
  static const std::string kUnknown = "Unknown";
  const PublishedNames::Names& modes = mModes.current();
  const auto index = static_cast<std::size_t>(mMode.load(std::memory_order_relaxed));
  return index < modes.size() ? modes[index] : kUnknown;
}

void CALLBACK TimerProc(HWND, UINT, UINT_PTR, DWORD) {
  if (theProxyP != nullptr) theProxyP->tick();
}

void AutoCadProxy::tick() try {
  KillTimer(nullptr, mTimerId);
  doTransform();
  if (mIsTimerActive)
    mTimerId = SetTimer(nullptr, 0, mIsCapMoving ? kMovingPeriodMs : kIdlePeriodMs, TimerProc);
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::TimerProc") << "Error TimerProc()";
}

void AutoCadProxy::doTransform() {
  const DWORD start = GetTickCount();
  DWORD elapsed = 0;
  bool isToContinue = true;
  while (elapsed < mMaxContMoveTime && isToContinue) {
    try {
      // Unsigned, so that a wrap of the tick count does no harm.
      elapsed = GetTickCount() - start;
      isToContinue = mUseInt3dIntrfce ? false : handleDeviceCap();
    } catch (...) {
      LM_LOG(kError, kClass, "AutoCadProxy::doTransform") << "Error doTransform()";
    }
  }
}

bool AutoCadProxy::handleDeviceCap() {
  const std::int32_t threshold = mLmAutoCadP->minThreshold();
  const int mode = getNavigationMode();
  const CapValues& cap = mLmAutoCadP->capData();
  if (isCapReleased(cap, threshold)) {
    handleCapIsReleased(mode);
    return false;
  }
  const auto [x, y, z, rx, ry, rz] = cap.mAxes;
  if (mode != k2DMode) handleCapIsDeflectedIn3DMode(x, y, z, rx, ry, rz);
  if (!mIsCapMoving) {
    mIsCapMoving = true;
    LM_LOG(kInfo, kClass, "AutoCadProxy::handleDeviceCap") << "Cap moving.";
  }
  return true;
}

int AutoCadProxy::getNavigationMode() {
  const short tileMode = systemVariable(L"tilemode");
  const short viewport = systemVariable(L"cvport");
  const int mode = tileMode == 0 && viewport == 1 ? k2DMode : k3DMode;
  mMode.store(mode, std::memory_order_relaxed);
  return mode;
}

void AutoCadProxy::handleCapIsReleased(int mode) {
  if (!mIsCapMoving) return;
  try {
    if (mode == k2DMode)
      releaseIn2DMode();
    else
      releaseIn3DMode();
  } catch (...) {
    LM_LOG(kError, kClass, "AutoCadProxy::handleCapIsReleased") << "Error handleCapIsReleased()";
  }
  mIsCapMoving = false;
  LM_LOG(kTrace, kClass, "AutoCadProxy::handleCapIsReleased") << "Cap released.";
}

void AutoCadProxy::releaseIn2DMode() {
  unlockDocument();
  LM_LOG(kTrace, kClass, "AutoCadProxy::handleCapIsReleased") << "Document unlocked";
}

void AutoCadProxy::releaseIn3DMode() {
  unlockDocument();
  AcGsView* viewP = nullptr;
  int viewportNumber = 0;
  retrieveViewParams(&viewP, &viewportNumber);
  if (viewP == nullptr) return;
  if (viewP->isValid())
    acgsSetViewParameters(viewportNumber, viewP, true, true, false);
  else
    LM_LOG(kError, kClass, "AutoCadProxy::handleCapIsReleased") << "viewP not valid!";
}

void AutoCadProxy::unlockDocument() {
  if (!mIsDocLocked) return;
  AcApDocument* const documentP = acDocManagerPtr()->curDocument();
  // A document that refuses stays marked, and the next release asks it again; one that is gone took its lock
  // along.
  mIsDocLocked = documentP != nullptr && acDocManagerPtr()->unlockDocument(documentP) != Acad::eOk;
}

int AutoCadProxy::retrieveViewParams(AcGsView** viewP, int* viewportNumberP) {
  mViewP = nullptr;
  try {
    resbuf result{};
    const int rc = acedGetVar(L"CVPORT", &result);
    if (rc != RTNORM) {
      LM_LOG(kError, kClass, "AutoCadProxy::retrieveViewParams")
          << "System variable 'CVPORT'could not be retrieved! rc = " << rc;
    } else {
      mViewportNumber = result.resval.rint;
      mViewP = acgsGetGsView(mViewportNumber, true);
      if (mViewP == nullptr)
        LM_LOG(kError, kClass, "AutoCadProxy::retrieveViewParams")
            << "AcGsView object could not be retrieved!";
    }
  } catch (...) {
    LM_LOG(kError, kClass, "AutoCadProxy::retrieveViewParams") << "Error retrieveViewParams()";
  }
  *viewP = mViewP;
  *viewportNumberP = mViewportNumber;
  return mViewportNumber;
}

bool AutoCadProxy::calcScreenAxesRelativeToObject(AcGsView* viewP, AcGeVector3d* xAxisP, AcGeVector3d* yAxisP,
                                                  AcGeVector3d* zAxisP) try {
  const AcGeVector3d up = viewP->upVector();
  *zAxisP = viewP->position() - viewP->target();
  *yAxisP = up;
  *xAxisP = zAxisP->crossProduct(up);
  xAxisP->normalize();
  yAxisP->normalize();
  zAxisP->normalize();
  return true;
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::calcScreenAxesRelativeToObject")
      << "Error calcScreenAxesRelativeToObject()";
  return false;
}

bool AutoCadProxy::getSelObjectsCenter(const ads_name selectionSet, AcGePoint3d* centreP) try {
  if (mIsCapMoving && selectionSet == nullptr) return mIsSelCentreValid;
  mIsSelCentreValid = false;
  if (selectionSet != nullptr) {
    mIsSelCentreValid = meanOfBoxCentres(selectionSet, centreP);
    return mIsSelCentreValid;
  }
  ImpliedSelection selection;
  if (!selection.isTaken()) return false;
  const bool isFound = meanOfBoxCentres(selection.name(), centreP);
  selection.free();
  mIsSelCentreValid = isFound;
  return isFound;
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::getSelObjectsCenter") << "Error getSelObjectsCenter()";
  return false;
}

bool AutoCadProxy::meanOfBoxCentres(const ads_name selectionSet, AcGePoint3d* centreP) {
  const AdInt32 count = selectionLength(selectionSet);
  if (count == 0) return false;
  AcGeVector3d sum(0, 0, 0);
  for (AdInt32 i = 0; i < count; ++i) {
    ads_name name{};
    if (acedSSName(selectionSet, i, name) != RTNORM) return false;
    sum = sum + (boxCentre(name) - AcGePoint3d::kOrigin);
  }
  *centreP = AcGePoint3d(sum.x / count, sum.y / count, sum.z / count);
  LM_LOG(kTmp, kClass, "AutoCadProxy::getSelObjectsCenter")
      << "selCenterPoint: " << centreP->x << ", " << centreP->y << ", " << centreP->z;
  return true;
}

bool AutoCadProxy::getSelObjectAxis(AcGeVector3d* directionP, AcGePoint3d* pointP) try {
  if (mIsCapMoving) return mIsSelAxisValid;
  mIsSelAxisValid = false;
  ImpliedSelection selection;
  if (!selection.isTaken()) return false;
  ads_name name{};
  bool isLine = false;
  if (selectionLength(selection.name()) == 1 && acedSSName(selection.name(), 0, name) == RTNORM)
    isLine = readLine(name, directionP, pointP);
  selection.free();
  mIsSelAxisValid = isLine;
  return isLine;
} catch (...) {
  // The text is shared with the query of the centre.
  LM_LOG(kError, kClass, "AutoCadProxy::getSelObjectAxis") << "Error getSelObjectsCenter()";
  return false;
}

void AutoCadProxy::handleCapIsDeflectedIn3DMode(short x, short y, short z, short rx, short ry, short rz) try {
  AcGsView* viewP = nullptr;
  int viewportNumber = 0;
  retrieveViewParams(&viewP, &viewportNumber);
  if (viewP == nullptr) {
    LM_LOG(kError, kClass, "AutoCadProxy::handleCapIsDeflectedIn3DMode") << "ViewP could not be retrieved!";
    return;
  }
  ScreenAxes axes{AcGeVector3d(1, 0, 0), AcGeVector3d(0, 1, 0), AcGeVector3d(0, 0, 1)};
  if (!calcScreenAxesRelativeToObject(viewP, &axes[0], &axes[1], &axes[2])) return;
  const bool isPerspective = viewP->isPerspective();
  const RotationMode mode = rotationMode();
  if (x != 0 || y != 0 || z != 0) {
    const double base = mTransSensBase;
    moveXYZ(viewP, x / base, y / base, z / base, &axes[0], &axes[1], &axes[2], mode.mRotCenterMode,
            isPerspective, mode.mIsHover);
  }
  if (rx != 0 || ry != 0 || rz != 0) rotateByCap(viewP, rx, ry, rz, axes, mode, isPerspective);
  viewP->update();
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::handleCapIsDeflectedIn3DMode")
      << "Error handleCapIsDeflectedIn3DMode()";
}

void AutoCadProxy::rotateByCap(AcGsView* viewP, short rx, short ry, short rz, ScreenAxes& axes,
                               const RotationMode& mode, bool isPerspective) {
  AcGePoint3d centre;
  if (mLmAutoCadP->toggleRotationAxis() && getSelObjectAxis(&mSelAxisDirection, &mSelAxisPoint)) {
    rx = axisShare(rx, mSelAxisDirection, axes[0]);
    ry = axisShare(ry, mSelAxisDirection, axes[1]);
    rz = axisShare(rz, mSelAxisDirection, axes[2]);
    axes.fill(mSelAxisDirection);
    centre = mSelAxisPoint;
  } else if (mLmAutoCadP->toggleRotationCenter() && getSelObjectsCenter(nullptr, &mSelCentre)) {
    centre = mSelCentre;
  } else {
    centre = rotationCentre(viewP, mode.mRotCenterMode, isPerspective);
  }
  const double base = mRotSensBase;
  const auto turn = [&](double angle, int axisIndex) {
    rotate(viewP, angle, axisIndex, &centre, &axes[static_cast<std::size_t>(axisIndex)], mode.mRotCenterMode,
           mode.mIsKeepHorizon, isPerspective);
  };
  if (rx != 0) turn(rx / base, 0);
  if (ry != 0) turn(-ry / base, 1);
  if (rz != 0) turn(-rz / base, 2);
}

void AutoCadProxy::moveXYZ(AcGsView* viewP, double dx, double dy, double dz, const AcGeVector3d* xAxisP,
                           const AcGeVector3d* yAxisP, const AcGeVector3d* zAxisP, int rotCenterMode,
                           bool isPerspective, bool isHover) try {
  if (viewP == nullptr) return;
  if (isCameraMode(rotCenterMode)) {
    dx = -dx;
    dy = -dy;
    dz = -dz;
  }
  if (dx != 0.0) {
    LM_LOG(kInfo, kClass, "AutoCadProxy::moveXYZ") << "Move x-Direction, value: " << dx;
    move3D(viewP, dx * kMoveGain, xAxisP, isHover, isPerspective);
  }
  if (dy != 0.0) {
    LM_LOG(kInfo, kClass, "AutoCadProxy::moveXYZ") << "Move y-Direction, value: " << dy;
    move3D(viewP, dy * -kMoveGain, yAxisP, isHover, isPerspective);
  }
  if (dz == 0.0) return;
  LM_LOG(kInfo, kClass, "AutoCadProxy::moveXYZ") << "Move z-Direction, value: " << dz;
  if (isHover && isPerspective)
    move3D(viewP, dz * -kMoveGain, zAxisP, isHover, isPerspective);
  else
    viewP->zoom(zoomFactor(dz));
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::moveXYZ") << "Error moveXYZ()";
}

void AutoCadProxy::move3D(AcGsView* viewP, double distance, const AcGeVector3d* axisP, bool isHover,
                          bool isPerspective) try {
  if (distance == 0.0 || viewP == nullptr) return;
  const double width = viewP->fieldWidth();
  const double height = viewP->fieldHeight();
  // In proportion to the visible field, so that panning feels the same at every zoom level.
  const double length = distance * std::sqrt(width * height);
  const bool isElevationKept = isHover && isPerspective;
  const AcGeVector3d step(length * axisP->x, length * axisP->y, isElevationKept ? 0.0 : length * axisP->z);
  viewP->setView(viewP->position() + step, viewP->target() + step, viewP->upVector(), width, height,
                 projection(isPerspective));
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::move3D") << "Error move3D()";
}

void AutoCadProxy::rotate(AcGsView* viewP, double angle, int axisIndex, const AcGePoint3d* centreP,
                          AcGeVector3d* axisP, int rotCenterMode, bool isKeepHorizon,
                          bool isPerspective) try {
  if (angle == 0.0) return;
  // With a level horizon there is no roll about the line of sight.
  if (axisIndex == 2 && isKeepHorizon) return;
  if (isCameraMode(rotCenterMode)) angle = -angle;
  LM_LOG(kDebug, kClass, "AutoCadProxy::rotate") << "Rotate Axis: " << angle << "(" << axisIndex << ")";
  if (viewP == nullptr) return;
  if (axisIndex == 1 && isKeepHorizon) {
    if (axisP->z < 0.0) angle = -angle;
    *axisP = kWorldZ;
  }
  AcGePoint3d position = viewP->position();
  AcGePoint3d target = viewP->target();
  AcGeVector3d up = viewP->upVector();
  position.rotateBy(angle, *axisP, *centreP);
  target.rotateBy(angle, *axisP, *centreP);
  up.rotateBy(angle, *axisP);
  viewP->setView(position, target, up, viewP->fieldWidth(), viewP->fieldHeight(), projection(isPerspective));
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::rotate") << "Error rotate()";
}
