#include "common_sources/auto_cad_proxy.h"

#include "LM_Daemon/src/logging.h"
#include "common_sources/ansi_text.h"
#include "common_sources/camera.h"
#include "common_sources/cap_arithmetic.h"
#include "common_sources/command_text.h"
#include "common_sources/control_scrolling.h"
#include "common_sources/current_document.h"
#include "common_sources/exporter_place.h"
#include "common_sources/host_objects.h"
#include "common_sources/lm_auto_cad.h"
#include "common_sources/menu_table.h"
#include "common_sources/object_motion.h"
#include "common_sources/paper_view.h"
#include "common_sources/selected_objects.h"
#include "device/special_functions.h"
#include "util/util.h"

#include "acdocman.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <optional>

namespace {

constexpr const char* kClass = "AutoCadProxy";
constexpr UINT kIdlePeriodMs = 100;
constexpr UINT kMovingPeriodMs = 10;
constexpr double kMoveGain = 5.0;  // visible fields per pass for a cap value equal to the divisor

// Neither a Windows timer procedure nor a command handler receives an object.
AutoCadProxy* theProxyP = nullptr;

/// The setting's value, or its default when the module cannot work with it: a divisor of 0, a negative time.
std::int32_t checkedNumber(std::string_view key, std::int32_t value) {
  const std::int32_t number = usableNumber(key, value);
  if (number != value)
    LM_LOG(kError, kClass, "AutoCadProxy::AutoCadProxy")
        << "Setting '" << key << "' is " << value << ", " << number << " is used!";
  return number;
}

}  // namespace

AutoCadProxy::AutoCadProxy(LmAutoCad* lmAutoCadP) : mLmAutoCadP(lmAutoCadP) {
  LM_LOG(kCreation, kClass, "AutoCadProxy::AutoCadProxy") << "Constructing ...";
  mTransSensBase = checkedNumber("transSensBase", mLmAutoCadP->transSensBase());
  mRotSensBase = checkedNumber("rotSensBase", mLmAutoCadP->rotSensBase());
  mMaxContMoveTime =
      static_cast<std::uint32_t>(checkedNumber("maxContMoveTime", mLmAutoCadP->maxContMoveTime()));
  // Only for its line in the log: the threshold is read in each pass.
  checkedNumber("minThreshold", mLmAutoCadP->minThreshold());
  mUseInt3dIntrfce = mLmAutoCadP->useInt3dIntrfce();
  if (!mUseInt3dIntrfce) StartDotNETPlugin();
  theProxyP = this;
  armTimer();
  LM_LOG(kCreation, kClass, "AutoCadProxy::AutoCadProxy") << "AutoCadProxy constructed.";
}

AutoCadProxy::~AutoCadProxy() {
  LM_LOG(kCreation, kClass, "AutoCadProxy::~AutoCadProxy") << "Destructing ...";
  mIsTimerActive = false;
  KillTimer(nullptr, mTimerId);
  assert(theProxyP == this && "one proxy at a time");
  theProxyP = nullptr;
  // An unload in the middle of a movement must not leave the user's document locked.
  try {
    mDocumentLock.unlock();
  } catch (...) {
    LM_LOG(kError, kClass, "AutoCadProxy::~AutoCadProxy") << "Error unlockDocument()";
  }
  LM_LOG(kCreation, kClass, "AutoCadProxy::~AutoCadProxy") << "Destructed.";
}

AutoCadProxy* AutoCadProxy::instance() {
  return theProxyP;
}

const std::string& AutoCadProxy::applModeName() const {
  static const std::string kUnknown = "Unknown";
  const PublishedNames::Names& modes = mModes.current();
  // The mode is the index into the list of the menu file; a shorter list, or none, gives "Unknown".
  const auto index = static_cast<std::size_t>(mMode.load(std::memory_order_relaxed));
  return index < modes.size() ? modes[index] : kUnknown;
}

void CALLBACK TimerProc(HWND, UINT, UINT_PTR, DWORD) {
  if (theProxyP != nullptr) theProxyP->tick();
}

void AutoCadProxy::armTimer() {
  // The id is 0 unless the last timer could not be killed. That one is armed again: its id would be lost
  // otherwise, and it would run on in code that has been unloaded.
  const UINT_PTR timerId =
      SetTimer(nullptr, mTimerId, mIsCapMoving ? kMovingPeriodMs : kIdlePeriodMs, TimerProc);
  if (timerId == 0)
    LM_LOG(kError, kClass, "AutoCadProxy::armTimer") << "Error SetTimer()";
  else
    mTimerId = timerId;
}

void AutoCadProxy::tick() try {
  assert(isMainThread() && "timers run on the thread that made the proxy");
  // A Windows timer repeats. This one is armed again at the end, so that a pass in which the host handles
  // messages does not begin another tick.
  if (KillTimer(nullptr, mTimerId)) mTimerId = 0;
  // In every tick until it succeeds: the exporter writes the file some time after the module is loaded.
  if (!mIsMenuLoaded) loadMenufile();
  doTransform();
  if (mIsTimerActive) armTimer();
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::TimerProc") << "Error TimerProc()";
}

void AutoCadProxy::doTransform() {
  const DWORD start = GetTickCount();
  DWORD elapsed = 0;
  bool isToContinue = true;
  while (elapsed < mMaxContMoveTime && isToContinue) {
    try {
      // Unsigned, so that a wrap of the tick count does no harm. Read before the work: a slow host still gets
      // one pass.
      elapsed = GetTickCount() - start;
      // Keys before the cap, so that the cap moves the view that a key has just chosen.
      handleDeviceKeys();
      // With the other interface the cap belongs to another plug-in; keys are still served, once a tick.
      isToContinue = mUseInt3dIntrfce ? false : handleDeviceCap();
    } catch (...) {
      // The flag keeps its value, so a failing pass is repeated until the time is up and not given up at
      // once.
      LM_LOG(kError, kClass, "AutoCadProxy::doTransform") << "Error doTransform()";
    }
  }
}

bool AutoCadProxy::handleDeviceCap() {
  // Read in each pass, unlike the divisors: the threshold may change while the module runs. Below 0 even a
  // cap at rest would count as deflected.
  const std::int32_t threshold = std::max(mLmAutoCadP->minThreshold(), 0);
  const int mode = getNavigationMode();
  const CapValues& cap = mLmAutoCadP->capData();
  if (isCapReleased(cap, threshold)) {
    handleCapIsReleased(mode);
    return false;
  }
  const auto [x, y, z, rx, ry, rz] = cap.axes;
  // Before any motion, and without mIsCapMoving: scrolling neither locks a document nor commits a view.
  if (scrollTreeOrList(x, y, z)) return true;
  if (mode == k2DMode)
    handleCapIsDeflectedIn2DMode(x, y, z);
  else
    handleCapIsDeflectedIn3DMode(x, y, z, rx, ry, rz);
  // After the first pass, which reads the selection and locks the document because the flag is not set yet.
  if (!mIsCapMoving) {
    mIsCapMoving = true;
    LM_LOG(kInfo, kClass, "AutoCadProxy::handleDeviceCap") << "Cap moving.";
  }
  return true;
}

int AutoCadProxy::getNavigationMode() {
  const short tileMode = systemVariable(L"tilemode");
  const short viewport = systemVariable(L"cvport");
  // Viewport 1 of a layout is the sheet itself. Every other viewport shows the model.
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
  // Also after a failure: the next deflection begins a movement of its own.
  forgetMovement();
  LM_LOG(kTrace, kClass, "AutoCadProxy::handleCapIsReleased") << "Cap released.";
}

void AutoCadProxy::forgetMovement() {
  mIsCapMoving = false;
  mIsSelectionDue = false;
  mIsSelCentreValid = false;
  mIsSelAxisValid = false;
}

void AutoCadProxy::releaseIn2DMode() {
  mDocumentLock.unlock();
  LM_LOG(kTrace, kClass, "AutoCadProxy::handleCapIsReleased") << "Document unlocked";
}

void AutoCadProxy::releaseIn3DMode() {
  // A movement that began on the sheet or moved objects holds a lock here too. It ends before the commit,
  // which regenerates the drawing.
  mDocumentLock.unlock();
  AcGsView* viewP = nullptr;
  int viewportNumber = 0;
  retrieveViewParams(&viewP, &viewportNumber);
  if (viewP == nullptr) return;
  if (viewP->isValid())
    // Regenerate, rescale the window, leave the table of named views alone.
    acgsSetViewParameters(viewportNumber, viewP, true, true, false);
  else
    LM_LOG(kError, kClass, "AutoCadProxy::handleCapIsReleased") << "viewP not valid!";
}

void AutoCadProxy::documentToBeDestroyed(AcApDocument* documentP) {
  assert(isMainThread() && "the host destroys documents on its main thread");
  // A cap that is still held begins a movement of its own in the document that becomes current next: with its
  // lock, its view and its selection.
  if (mDocumentLock.isHeldOn(documentP) || isCurrentDocument(documentP)) forgetMovement();
  mDocumentLock.documentToBeDestroyed(documentP);
}

void AutoCadProxy::handleDeviceKeys() try {
  // A request is cleared after its execution, so that one whose execution throws is tried again.
  PendingSlot& functions = mLmAutoCadP->applFuncSlot();
  const PendingSlot::Request function = functions.get();
  if (function.value >= 0) {
    execApplFunction(function.value);
    functions.clear(function, LmAutoCad::kNoApplFunc);
  }
  PendingSlot& specialFunctions = mLmAutoCadP->specialApplFuncSlot();
  const PendingSlot::Request specialFunction = specialFunctions.get();
  if (specialFunction.value >= 1) {
    execSpecialApplFunction(specialFunction.value);
    specialFunctions.clear(specialFunction, LmAutoCad::kNoSpecialApplFunc);
  }
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::handleDeviceKeys") << "Error handleDeviceKeys()";
}

void AutoCadProxy::execApplFunction(std::int32_t number) {
  const auto count = static_cast<std::int32_t>(mMenuTable.size());
  if (number >= count) {
    LM_LOG(kError, kClass, "AutoCadProxy::execApplFunction")
        << "keyEvent (" << number << "') too big (max. is " << count - 1 << ")!";
    return;
  }
  const std::vector<std::string> tokens = splitMacro(mMenuTable[static_cast<std::size_t>(number)]);
  if (tokens.empty()) return;
  AcApDocument* const documentP = acDocManagerPtr()->curDocument();
  // Menu items begin at an empty command line.
  sendText(documentP, kCancel, Activate::kYes);
  for (const std::string& token : tokens) sendText(documentP, commandOfToken(token).c_str(), Activate::kYes);
}

void AutoCadProxy::execSpecialApplFunction(std::int32_t eventCode) {
  AcApDocument* const documentP = acDocManagerPtr()->curDocument();
  if (mMode == k2DMode) {
    // A sheet has one side only.
    if (eventCode == LM_FIT_ALL) sendText(documentP, kZoomAll, Activate::kNo);
    return;
  }
  const SpecialFunction* const functionP = findSpecialFunction(eventCode);
  if (functionP != nullptr)
    sendText(documentP, functionP->commandP, Activate::kNo);
  else
    LM_LOG(kError, kClass, "AutoCadProxy::execSpecialApplFunction")
        << "Unknown special command '" << eventCode << "' found!";
  // After an unknown code too: the device's setting asks for a zoom after every key of this kind.
  if (eventCode != LM_FIT_ALL && rotationMode().isZoomAllAfterView)
    sendText(documentP, kZoomAllTransparent, Activate::kNo);
}

void AutoCadProxy::StartDotNETPlugin() try {
  const std::string& folder = mLmAutoCadP->applicationsDirPath();
  if (!Util::folderExists(folder)) {
    Util::beepAndShowMessage(
        nullptr,
        "Folder '" + folder +
            "' not found!\n\nStart the driver first and try again to read out AutoCAD's menu items.",
        "Lumetra Plug-in Error", MB_OK);
    return;
  }
  LM_LOG(kTrace, kClass, "AutoCadProxy::StartDotNETPlugin") << "Start .NET Plugin...";
  const std::wstring modulePath = moduleFilePath();
  const std::string charPath = ansiFromWide(modulePath.c_str());
  LM_LOG(kTrace, kClass, "AutoCadProxy::StartDotNETPlugin") << "charPath: '" << charPath << "'";
  const std::optional<std::wstring> exporter = exporterPath(modulePath);
  if (!exporter) {
    LM_LOG(kError, kClass, "AutoCadProxy::StartDotNETPlugin") << "Error: Invalid path " << charPath;
    return;
  }
  const std::string dllPath = ansiFromWide(exporter->c_str());
  LM_LOG(kTrace, kClass, "AutoCadProxy::StartDotNETPlugin") << "dllPath: '" << dllPath << "'";
  if (!Util::fileExists(dllPath)) {
    LM_LOG(kError, kClass, "AutoCadProxy::StartDotNETPlugin")
        << "Error: MenuScriber does not exist " << dllPath;
    return;
  }
  const std::wstring command = netloadCommand(*exporter);
  const Acad::ErrorStatus status =
      sendText(acDocManagerPtr()->curDocument(), command.c_str(), Activate::kYes);
  LM_LOG(kTrace, kClass, "AutoCadProxy::StartDotNETPlugin")
      << "totalCmd: '" << ansiFromWide(command.c_str()) << "', ec: " << static_cast<int>(status);
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::StartDotNETPlugin") << "Error StartDotNETPlugin()";
}

void AutoCadProxy::loadMenufile() try {
  const std::string path = mLmAutoCadP->applicationsDirPath() + "\\autocad.mnu";
  std::optional<MenuTable> table = readMenuFile(path);
  const bool isRead = table.has_value();
  // When the file has vanished, its modes and functions go, too.
  if (!isRead) table.emplace();
  mMenuTable = std::move(table->macros);
  mModes.publish(table->modes);
  if (!isRead) return;
  LM_LOG(kCreation, kClass, "AutoCadProxy::loadMenufile")
      << "Menu file '" << path << "' with " << mMenuTable.size() << " entries loaded.";
  // A file without modes is incomplete: the exporter may still be writing it.
  mIsMenuLoaded = !table->modes.empty();
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::loadMenufile") << "Error loadMenufile()";
}

bool AutoCadProxy::scrollTreeOrList(int x, int y, int z) {
  return mLmAutoCadP->scrollTreeAndList() && scrollControlUnderPointer(x, y, z);
}

int AutoCadProxy::retrieveViewParams(AcGsView** viewP, int* viewportNumberP) {
  // The host may have freed the view of the last pass.
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
  const ScreenAxes axes = screenAxesOf(*viewP);
  *xAxisP = axes[0];
  *yAxisP = axes[1];
  *zAxisP = axes[2];
  return true;
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::calcScreenAxesRelativeToObject")
      << "Error calcScreenAxesRelativeToObject()";
  return false;
}

bool AutoCadProxy::getSelObjectsCenter(const ads_name selectionSet, AcGePoint3d* centreP) try {
  // The centre stays where it was when the movement began, even if the selection changes meanwhile.
  if (isSelectionRead() && selectionSet == nullptr) return mIsSelCentreValid;
  mIsSelCentreValid = false;
  const std::optional<AcGePoint3d> centre =
      selectionSet != nullptr ? meanOfBoxCentres(selectionSet) : meanOfSelectedBoxCentres();
  if (!centre) return false;
  LM_LOG(kTmp, kClass, "AutoCadProxy::getSelObjectsCenter")
      << "selCenterPoint: " << centre->x << ", " << centre->y << ", " << centre->z;
  *centreP = *centre;
  // When a later pass has nothing to move, the view turns about the centre of what was moved last.
  mSelCentre = *centre;
  mIsSelCentreValid = true;
  return true;
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::getSelObjectsCenter") << "Error getSelObjectsCenter()";
  return false;
}

bool AutoCadProxy::getSelObjectAxis(AcGeVector3d* directionP, AcGePoint3d* pointP) try {
  if (isSelectionRead()) return mIsSelAxisValid;
  mIsSelAxisValid = false;
  const std::optional<Axis> axis = axisOfSelectedLine();
  if (!axis) return false;
  *directionP = axis->direction;
  *pointP = axis->point;
  mIsSelAxisValid = true;
  return true;
} catch (...) {
  // The text is that of the centre's query; users' notes and filters rely on it.
  LM_LOG(kError, kClass, "AutoCadProxy::getSelObjectAxis") << "Error getSelObjectsCenter()";
  return false;
}

void AutoCadProxy::handleCapIsDeflectedIn2DMode(short x, short y, short z) try {
  // Falls back to the view when nothing is selected, or when the host refuses.
  if (mIsObjectMoveMode && transformSelection2d(x, y)) return;
  if (!mIsCapMoving && !isDocLocked() && mDocumentLock.lock())
    LM_LOG(kTrace, kClass, "AutoCadProxy::handleCapIsDeflectedIn2DMode") << "Document locked";
  const double base = mTransSensBase;
  // The sheet follows the cap, so the centre of the view moves the other way. A push (z > 0) zooms in.
  if (x != 0 || y != 0) pan2D(-(x / base), -(y / base));
  if (z != 0) zoom2D(-(z / base));
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::handleCapIsDeflectedIn2DMode")
      << "Error handleCapIsDeflectedIn2DMode()";
}

void AutoCadProxy::pan2D(double dx, double dy) {
  const PaperChange change = panPaper(dx, dy);
  if (change != PaperChange::kDone) LM_LOG(kError, kClass, "AutoCadProxy::pan2D") << errorText(change);
}

void AutoCadProxy::zoom2D(double dz) {
  const PaperChange change = zoomPaper(zoomFactor(dz));
  if (change != PaperChange::kDone) LM_LOG(kError, kClass, "AutoCadProxy::zoom2D") << errorText(change);
}

bool AutoCadProxy::transformSelection3d(double x, double y, double z, double rx, double ry, double rz,
                                        const AcGeVector3d* xAxisP, const AcGeVector3d* yAxisP,
                                        const AcGeVector3d* zAxisP, bool isHover, bool isKeepHorizon) try {
  if (acDocManagerPtr()->curDocument() == nullptr) return false;
  ImpliedSelection selection;
  if (!selection.isTaken()) return false;
  AcGePoint3d centre;
  // Found anew in each pass, since the objects have moved.
  if (!getSelObjectsCenter(selection.name(), &centre)) centre = AcGePoint3d::kOrigin;
  const AcGeMatrix3d motion =
      objectMotion({x, y, z, rx, ry, rz}, {*xAxisP, *yAxisP, *zAxisP}, centre, isHover, isKeepHorizon);
  require(mDocumentLock.lock());
  transformEach(selection.name(), motion, Redraw::kNo);
  selection.free();
  return true;
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::transformSelection3d") << "Error transformSelection()";
  return false;
}

bool AutoCadProxy::transformSelection2d(double x, double y) try {
  if (acDocManagerPtr()->curDocument() == nullptr) return false;
  ImpliedSelection selection;
  if (!selection.isTaken()) return false;
  require(mDocumentLock.lock());
  transformEach(selection.name(), sheetMotion(x, y), Redraw::kYes);
  selection.free();
  return true;
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::transformSelection2d") << "Error transformSelection()";
  return false;
}

void AutoCadProxy::handleCapIsDeflectedIn3DMode(short x, short y, short z, short rx, short ry, short rz) try {
  AcGsView* viewP = nullptr;
  int viewportNumber = 0;
  retrieveViewParams(&viewP, &viewportNumber);
  if (viewP == nullptr) {
    LM_LOG(kError, kClass, "AutoCadProxy::handleCapIsDeflectedIn3DMode") << "ViewP could not be retrieved!";
    // The movement begins all the same, and the first pass that has a view reads the selection.
    if (!mIsCapMoving) mIsSelectionDue = true;
    return;
  }
  ScreenAxes axes{AcGeVector3d(1, 0, 0), AcGeVector3d(0, 1, 0), AcGeVector3d(0, 0, 1)};
  if (!calcScreenAxesRelativeToObject(viewP, &axes[0], &axes[1], &axes[2])) return;
  // Read before the motion, because setView() sets the projection as well.
  const bool isPerspective = viewP->isPerspective();
  const RotationMode mode = rotationMode();
  const bool isSelectionMoved =
      mIsObjectMoveMode && transformSelection3d(x, y, z, rx, ry, rz, &axes[0], &axes[1], &axes[2],
                                                mode.isHover, mode.isKeepHorizon);
  if (isSelectionMoved) {
    mIsSelectionDue = false;
    viewP->update();
    return;
  }
  if (x != 0 || y != 0 || z != 0) {
    const double base = mTransSensBase;
    moveXYZ(viewP, x / base, y / base, z / base, &axes[0], &axes[1], &axes[2], mode.rotCenterMode,
            isPerspective, mode.isHover);
  }
  if (rx != 0 || ry != 0 || rz != 0)
    rotateByCap(viewP, rx, ry, rz, axes, mode, isPerspective);
  else if (!isSelectionRead())
    // The selection counts as it is when the movement begins, also for a rotation that begins later.
    findTurn();
  mIsSelectionDue = false;
  viewP->update();
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::handleCapIsDeflectedIn3DMode")
      << "Error handleCapIsDeflectedIn3DMode()";
}

AutoCadProxy::Turn AutoCadProxy::findTurn() {
  if (mLmAutoCadP->toggleRotationAxis() && getSelObjectAxis(&mSelAxisDirection, &mSelAxisPoint))
    return Turn::kAboutSelectedLine;
  if (mLmAutoCadP->toggleRotationCenter() && getSelObjectsCenter(nullptr, &mSelCentre))
    return Turn::kAboutSelectedCentre;
  return Turn::kByMode;
}

void AutoCadProxy::rotateByCap(AcGsView* viewP, short rx, short ry, short rz, ScreenAxes& axes,
                               const RotationMode& mode, bool isPerspective) {
  AcGePoint3d centre;
  switch (findTurn()) {
    case Turn::kAboutSelectedLine:
      rx = axisShare(rx, mSelAxisDirection, axes[0]);
      ry = axisShare(ry, mSelAxisDirection, axes[1]);
      rz = axisShare(rz, mSelAxisDirection, axes[2]);
      // Each share is the part of its rotation that acts along the line, so all three turn about the line.
      axes.fill(mSelAxisDirection);
      centre = mSelAxisPoint;
      break;
    case Turn::kAboutSelectedCentre:
      centre = mSelCentre;
      break;
    case Turn::kByMode:
      centre = rotationCentre(*viewP, mode.rotCenterMode, isPerspective);
      break;
  }
  const double base = mRotSensBase;
  // The device counts rotations about y and z against the screen's axes, the one about x along its own.
  const auto turn = [&](double angle, int axisIndex) {
    rotate(viewP, angle, axisIndex, &centre, &axes[static_cast<std::size_t>(axisIndex)], mode.rotCenterMode,
           mode.isKeepHorizon, isPerspective);
  };
  if (rx != 0) turn(rx / base, 0);
  if (ry != 0) turn(-ry / base, 1);
  if (rz != 0) turn(-rz / base, 2);
}

void AutoCadProxy::moveXYZ(AcGsView* viewP, double dx, double dy, double dz, const AcGeVector3d* xAxisP,
                           const AcGeVector3d* yAxisP, const AcGeVector3d* zAxisP, int rotCenterMode,
                           bool isPerspective, bool isHover) try {
  if (viewP == nullptr) return;
  // The camera moves instead of the scene.
  if (isCameraMode(rotCenterMode)) {
    dx = -dx;
    dy = -dy;
    dz = -dz;
  }
  if (dx != 0.0) {
    LM_LOG(kInfo, kClass, "AutoCadProxy::moveXYZ") << "Move x-Direction, value: " << dx;
    // The scene follows the cap, so the camera moves against it: to the left for x, whose axis points there,
    // and against the axes of y and z.
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
  Camera camera = cameraOf(*viewP);
  // In proportion to the visible field, so that panning feels the same at every zoom level.
  const double length = distance * std::sqrt(camera.fieldWidth * camera.fieldHeight);
  // As when walking: without this, looking down would make every step forward a step down.
  const bool isElevationKept = isHover && isPerspective;
  moveCamera(camera, {length * axisP->x, length * axisP->y, isElevationKept ? 0.0 : length * axisP->z});
  setCamera(*viewP, camera, isPerspective);
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::move3D") << "Error move3D()";
}

void AutoCadProxy::rotate(AcGsView* viewP, double angle, int axisIndex, const AcGePoint3d* centreP,
                          AcGeVector3d* axisP, int rotCenterMode, bool isKeepHorizon,
                          bool isPerspective) try {
  assert(axisIndex >= 0 && axisIndex <= 2 && "index of a screen axis");
  if (angle == 0.0) return;
  // With a level horizon there is no roll about the line of sight.
  if (axisIndex == 2 && isKeepHorizon) return;
  if (isCameraMode(rotCenterMode)) angle = -angle;
  LM_LOG(kDebug, kClass, "AutoCadProxy::rotate") << "Rotate Axis: " << angle << "(" << axisIndex << ")";
  if (viewP == nullptr) return;
  if (axisIndex == 1 && isKeepHorizon) {
    // For a camera that is upside down, left and right stay as the user sees them.
    if (axisP->z < 0.0) angle = -angle;
    *axisP = AcGeVector3d(0, 0, 1);  // the world's vertical
  }
  Camera camera = cameraOf(*viewP);
  turnCamera(camera, angle, *axisP, *centreP);
  setCamera(*viewP, camera, isPerspective);
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::rotate") << "Error rotate()";
}
