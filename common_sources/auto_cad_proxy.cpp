#include "common_sources/auto_cad_proxy.h"

#include "LM_Daemon/src/logging.h"
#include "common_sources/ansi_text.h"
#include "common_sources/axis_share.h"
#include "common_sources/command_text.h"
#include "common_sources/host_objects.h"
#include "common_sources/lm_auto_cad.h"
#include "common_sources/menu_table.h"
#include "common_sources/scroll_amount.h"
#include "common_sources/window_search.h"
#include "common_sources/zoom_factor.h"
#include "device/lmt_ctrlr.h"
#include "util/threads.h"
#include "util/util.h"

// clang-format off
#include "acedads.h"
#include "adscodes.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "acdocman.h"
#include "aced.h"
#include "gepnt2d.h"
#include "gemat3d.h"
#include "dbxEntryPoint.h"
// clang-format on

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <optional>

namespace {

constexpr const char* kClass = "AutoCadProxy";
constexpr UINT kIdlePeriodMs = 100;
constexpr UINT kMovingPeriodMs = 10;
constexpr double kMoveGain = 5.0;
constexpr double kMoveUnits = 0.5;        // drawing units per unit of the cap and pass
constexpr double kSheetMoveUnits = 5e-5;  // the same on a sheet
constexpr double kTurnUnits = 0.002;      // radians per unit of the cap and pass
constexpr int kDrawEntity = 1;            // mode of acedRedraw
const AcGeVector3d kWorldY(0, 1, 0);
const AcGeVector3d kWorldZ(0, 0, 1);

// A Windows timer procedure gets no user data, and a command handler no object.
AutoCadProxy* theProxyP = nullptr;

short systemVariable(const ACHAR* name) {
  resbuf result{};
  acedGetVar(name, &result);
  return result.resval.rint;
}

/// The setting's value, or its default when the module cannot work with it: a divisor of 0, a negative time.
std::int32_t usableNumber(std::string_view key, std::int32_t value) {
  for (const Setting& setting : kProgramSettings) {
    if (setting.key != key || isUsable(setting.usableNumbers, value)) continue;
    const std::int32_t defaultValue = std::get<std::int32_t>(setting.defaultValue);
    LM_LOG(kError, kClass, "AutoCadProxy::AutoCadProxy")
        << "Setting '" << key << "' is " << value << ", " << defaultValue << " is used!";
    return defaultValue;
  }
  return value;
}

AcGsView::Projection projection(bool isPerspective) {
  return isPerspective ? AcGsView::kPerspective : AcGsView::kParallel;
}

enum class Activate { kNo, kYes };

/// Queues a text for the document's command line. Without a document there is nobody to read it.
Acad::ErrorStatus sendText(AcApDocument* documentP, const wchar_t* text, Activate activate) {
  if (documentP == nullptr) return Acad::eNoDocument;
  return acDocManagerPtr()->sendStringToExecute(documentP, text, activate == Activate::kYes, false, true);
}

/// Full path of the module's own file; empty when the system does not tell.
std::wstring moduleFilePath() {
  std::array<wchar_t, MAX_PATH> path{};
  const DWORD length = GetModuleFileNameW(_hdllInstance, path.data(), static_cast<DWORD>(path.size()));
  return {path.data(), std::min<std::size_t>(length, path.size())};
}

using ClassName = std::array<char, 261>;

/// The window's class name in the ANSI code page, blanks for what it does not hold, cut to what fits.
ClassName windowClass(HWND window) {
  std::array<wchar_t, 510> wide{};
  ClassName narrow{};
  const int read = GetClassNameW(window, wide.data(), static_cast<int>(wide.size()));
  const int length = std::min(read, static_cast<int>(narrow.size()) - 1);
  WideCharToMultiByte(CP_ACP, 0, wide.data(), length, narrow.data(), static_cast<int>(narrow.size()) - 1, " ",
                      nullptr);
  return narrow;
}

ScrollBar scrollBar(HWND window, int which) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;
  GetScrollInfo(window, which, &info);
  return {info.nMin, info.nMax, info.nPage, info.nPos};
}

/// False when the bar that the deflection asks for cannot be scrolled.
bool scrollByLines(HWND window, const ScrollAmount& amount) {
  const int horizontal = std::abs(amount.mHorizontal), vertical = std::abs(amount.mVertical);
  if (horizontal == vertical) return true;
  const bool isVertical = horizontal < vertical;
  const ScrollBar bar = scrollBar(window, isVertical ? SB_VERT : SB_HORZ);
  if (!isUsable(bar)) return false;
  const int lines = isVertical ? amount.mVertical : amount.mHorizontal;
  const WPARAM backward = isVertical ? SB_LINEUP : SB_LINELEFT;
  const WPARAM forward = isVertical ? SB_LINEDOWN : SB_LINERIGHT;
  if (isScrollable(bar, lines))
    for (int i = lineCount(bar); i > 0; --i)
      SendMessageW(window, isVertical ? WM_VSCROLL : WM_HSCROLL, lines < 0 ? backward : forward, 0);
  sleepMs(static_cast<std::uint32_t>(scrollWaitMs(amount) + shortListWaitMs(bar)));
  return true;
}

void scrollByWheel(HWND window, POINT pointer, const ScrollAmount& amount) {
  const int horizontal = std::abs(amount.mHorizontal), vertical = std::abs(amount.mVertical);
  if (horizontal != vertical) {
    const int stronger = horizontal < vertical ? amount.mVertical : amount.mHorizontal;
    const int turn = stronger < 0 ? WHEEL_DELTA : -WHEEL_DELTA;
    SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(turn)),
                 MAKELPARAM(static_cast<WORD>(pointer.x), static_cast<WORD>(pointer.y)));
    UpdateWindow(window);
  }
  sleepMs(static_cast<std::uint32_t>(scrollWaitMs(amount)));
}

/// Adds the centre of the entity's box; false when it cannot be opened or has no box.
bool addBoxCentre(const ads_name name, AcGeVector3d* sumP) {
  Opened<AcDbEntity> entity = openEntity(name, AcDb::kForRead);
  AcDbExtents box;
  const bool isFound = entity && entity->getGeomExtents(box) == Acad::eOk;
  entity.close();
  if (!isFound) return false;
  const AcGePoint3d low = box.minPoint();
  const AcGePoint3d high = box.maxPoint();
  *sumP += AcGeVector3d((low.x + high.x) * 0.5, (low.y + high.y) * 0.5, (low.z + high.z) * 0.5);
  return true;
}

/// False, and nothing changed, when the entity is not a line or has no length.
bool readLine(const ads_name name, AcGeVector3d* directionP, AcGePoint3d* pointP) {
  Opened<AcDbEntity> entity = openEntity(name, AcDb::kForRead);
  require(static_cast<bool>(entity));
  AcGePoint3d start, end;
  const bool isLine = entity->isA()->isDerivedFrom(AcDbLine::desc());
  if (isLine) {
    const auto* const lineP = static_cast<const AcDbLine*>(&*entity);
    require(lineP->getStartPoint(start) == Acad::eOk && lineP->getEndPoint(end) == Acad::eOk);
  }
  entity.close();
  AcGeVector3d direction = end - start;
  if (!isLine || direction.dotProduct(direction) == 0.0) return false;
  *directionP = direction.normalize();
  *pointP = start;
  return true;
}

/// An error of a method that is known at run time only.
void logError(int line, const char* methodName, const char* textP) {
  LogEntry(LogLevel::kError, LM_LOG_SOURCE_FILE,
           LogPosition(LM_LOG_SOURCE_FILE, line, kClass, methodName).text())
      << textP;
}

/// Changes the current tile of the model tab through its table record. Throws what the host throws.
template <typename Change>
void changeTile(const char* methodName, Change change) {
  acedVports2VportTableRecords();
  Opened<AcDbViewportTableRecord> tile =
      openObject<AcDbViewportTableRecord>(acedActiveViewportId(), AcDb::kForWrite);
  if (!tile) {
    logError(__LINE__, methodName, "AcDbViewportTableRecordPointer could not be retrieved!");
    return;
  }
  change(*tile);
  // Only a closed record reaches the screen.
  tile.close();
  acedVportTableRecords2Vports();
}

/// Changes the active viewport of a layout. Throws what the host throws.
template <typename Change>
void changeViewport(const char* methodName, Change change) {
  Opened<AcDbViewport> viewport = openObject<AcDbViewport>(acedActiveViewportId(), AcDb::kForWrite);
  if (!viewport) {
    logError(__LINE__, methodName, "AcDbObjectPointer could not be retrieved!");
    return;
  }
  change(*viewport);
  viewport->updateDisplay();
  viewport.close();
}

enum class Redraw { kNo, kYes };

/// Transforms every entity of the set that can be opened; one that cannot (on a locked layer, erased) is
/// passed over.
void transformEach(const ads_name selectionSet, const AcGeMatrix3d& motion, Redraw redraw) {
  const AdInt32 count = selectionLength(selectionSet);
  for (AdInt32 i = 0; i < count; ++i) {
    ads_name name{};
    if (acedSSName(selectionSet, i, name) != RTNORM) continue;
    Opened<AcDbEntity> entity = openEntity(name, AcDb::kForWrite);
    if (!entity) continue;
    entity->transformBy(motion);
    entity.close();
    if (redraw == Redraw::kYes) acedRedraw(name, kDrawEntity);
  }
}

AcGePoint3d rotationCentre(const AcGsView* viewP, int rotCenterMode, bool isPerspective) {
  if (rotCenterMode == kCamStandard && isPerspective) return viewP->position();
  if (rotCenterMode == kCamTarget || rotCenterMode == kObjScreen) return viewP->target();
  return AcGePoint3d::kOrigin;
}

}  // namespace

AutoCadProxy::AutoCadProxy(LmAutoCad* lmAutoCadP) : mLmAutoCadP(lmAutoCadP) {
  LM_LOG(kCreation, kClass, "AutoCadProxy::AutoCadProxy") << "Constructing ...";
  mTransSensBase = usableNumber("transSensBase", mLmAutoCadP->transSensBase());
  mRotSensBase = usableNumber("rotSensBase", mLmAutoCadP->rotSensBase());
  mMaxContMoveTime =
      static_cast<std::uint32_t>(usableNumber("maxContMoveTime", mLmAutoCadP->maxContMoveTime()));
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
  theProxyP = nullptr;
  // Unloaded in the middle of a movement, the module must not leave the user's document locked.
  try {
    unlockDocument();
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
  const auto index = static_cast<std::size_t>(mMode.load(std::memory_order_relaxed));
  return index < modes.size() ? modes[index] : kUnknown;
}

void CALLBACK TimerProc(HWND, UINT, UINT_PTR, DWORD) {
  if (theProxyP != nullptr) theProxyP->tick();
}

void AutoCadProxy::armTimer() {
  mTimerId = SetTimer(nullptr, 0, mIsCapMoving ? kMovingPeriodMs : kIdlePeriodMs, TimerProc);
  if (mTimerId == 0) LM_LOG(kError, kClass, "AutoCadProxy::armTimer") << "Error SetTimer()";
}

void AutoCadProxy::tick() try {
  KillTimer(nullptr, mTimerId);
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
      // Unsigned, so that a wrap of the tick count does no harm.
      elapsed = GetTickCount() - start;
      handleDeviceKeys();
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
  if (scrollTreeOrList(x, y, z)) return true;
  if (mode == k2DMode)
    handleCapIsDeflectedIn2DMode(x, y, z);
  else
    handleCapIsDeflectedIn3DMode(x, y, z, rx, ry, rz);
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
  mIsSelCentreValid = false;
  mIsSelAxisValid = false;
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

bool AutoCadProxy::lockDocument() {
  if (mIsDocLocked) return true;
  mLockedDocumentP = acDocManagerPtr()->curDocument();
  mIsDocLocked =
      mLockedDocumentP != nullptr &&
      acDocManagerPtr()->lockDocument(mLockedDocumentP, AcAp::kWrite, nullptr, nullptr, true) == Acad::eOk;
  return mIsDocLocked;
}

void AutoCadProxy::unlockDocument() {
  if (!mIsDocLocked) return;
  // A document that refuses stays marked: the next release tries again.
  mIsDocLocked = acDocManagerPtr()->unlockDocument(mLockedDocumentP) != Acad::eOk;
}

void AutoCadProxy::documentToBeDestroyed(AcApDocument* documentP) {
  if (!mIsDocLocked || documentP != mLockedDocumentP) return;
  unlockDocument();
  mIsDocLocked = false;
}

void AutoCadProxy::handleDeviceKeys() try {
  PendingSlot& functions = mLmAutoCadP->applFuncSlot();
  const PendingSlot::Request function = functions.get();
  if (function.mValue >= 0) {
    execApplFunction(function.mValue);
    functions.clear(function, LmAutoCad::kNoApplFunc);
  }
  PendingSlot& specialFunctions = mLmAutoCadP->specialApplFuncSlot();
  const PendingSlot::Request specialFunction = specialFunctions.get();
  if (specialFunction.mValue >= 1) {
    execSpecialApplFunction(specialFunction.mValue);
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
  sendText(documentP, kCancel, Activate::kYes);
  for (const std::string& token : tokens) sendText(documentP, commandOfToken(token).c_str(), Activate::kYes);
}

void AutoCadProxy::execSpecialApplFunction(std::int32_t eventCode) {
  AcApDocument* const documentP = acDocManagerPtr()->curDocument();
  if (mMode == k2DMode) {
    if (eventCode == LM_FIT_ALL) sendText(documentP, kZoomAll, Activate::kNo);
    return;
  }
  if (eventCode == LM_FIT_ALL) {
    sendText(documentP, kZoomAllTransparent, Activate::kNo);
    return;
  }
  if (const wchar_t* const commandP = viewCommand(eventCode))
    sendText(documentP, commandP, Activate::kNo);
  else
    LM_LOG(kError, kClass, "AutoCadProxy::execSpecialApplFunction")
        << "Unknown special command '" << eventCode << "' found!";
  if (rotationMode().mIsZoomAllAfterView) sendText(documentP, kZoomAllTransparent, Activate::kNo);
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
  // Cut while it is wide: in some code pages a backslash is also the second half of a letter.
  const std::size_t folderEnd = modulePath.rfind(L'\\');
  if (folderEnd == std::wstring::npos) {
    LM_LOG(kError, kClass, "AutoCadProxy::StartDotNETPlugin") << "Error: Invalid path " << charPath;
    return;
  }
  std::wstring exporter = modulePath.substr(0, folderEnd) + L"\\MenuScribe2015.dll";
  const std::string dllPath = ansiFromWide(exporter.c_str());
  LM_LOG(kTrace, kClass, "AutoCadProxy::StartDotNETPlugin") << "dllPath: '" << dllPath << "'";
  if (!Util::fileExists(dllPath)) {
    LM_LOG(kError, kClass, "AutoCadProxy::StartDotNETPlugin")
        << "Error: MenuScriber does not exist " << dllPath;
    return;
  }
  std::replace(exporter.begin(), exporter.end(), L'\\', L'/');
  const std::wstring command = netloadCommand(exporter);
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
  if (!isRead) table.emplace();
  mMenuTable = std::move(table->mMacros);
  mModes.publish(table->mModes);
  if (!isRead) return;
  LM_LOG(kCreation, kClass, "AutoCadProxy::loadMenufile")
      << "Menu file '" << path << "' with " << mMenuTable.size() << " entries loaded.";
  mIsMenuLoaded = !table->mModes.empty();
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::loadMenufile") << "Error loadMenufile()";
}

bool AutoCadProxy::scrollTreeOrList(int x, int y, int z) {
  if (!mLmAutoCadP->scrollTreeAndList()) return false;
  POINT pointer{};
  if (!GetCursorPos(&pointer)) return false;
  const HWND window = smallestWindowAt(pointer);
  if (window == nullptr) return false;
  const ScrollAmount amount = scrollAmount(x, y, z);
  switch (scrollKind(windowClass(window).data())) {
    case ScrollKind::kNone:
      return false;
    case ScrollKind::kScrollBar:
      return scrollByLines(window, amount);
    case ScrollKind::kWheel:
      scrollByWheel(window, pointer, amount);
      return true;
  }
  return false;
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
    if (mIsSelCentreValid) mSelCentre = *centreP;
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
  AdInt32 boxes = 0;
  for (AdInt32 i = 0; i < count; ++i) {
    ads_name name{};
    if (acedSSName(selectionSet, i, name) != RTNORM) return false;
    // An erased entity, or an empty block, must not cost the others their centre.
    if (addBoxCentre(name, &sum)) ++boxes;
  }
  require(boxes > 0);
  *centreP = AcGePoint3d(sum.x / boxes, sum.y / boxes, sum.z / boxes);
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

void AutoCadProxy::handleCapIsDeflectedIn2DMode(short x, short y, short z) try {
  if (mIsObjectMoveMode && transformSelection2d(x, y)) return;
  if (!mIsCapMoving && !mIsDocLocked && lockDocument())
    LM_LOG(kTrace, kClass, "AutoCadProxy::handleCapIsDeflectedIn2DMode") << "Document locked";
  const double base = mTransSensBase;
  // The sheet follows the cap, so what is shown moves the other way.
  if (x != 0 || y != 0) pan2D(-(x / base), -(y / base));
  if (z != 0) zoom2D(-(z / base));
} catch (...) {
  LM_LOG(kError, kClass, "AutoCadProxy::handleCapIsDeflectedIn2DMode")
      << "Error handleCapIsDeflectedIn2DMode()";
}

void AutoCadProxy::pan2D(double dx, double dy) {
  if (systemVariable(L"TILEMODE") == 1) {
    changeTile("AutoCadProxy::pan2D", [=](AcDbViewportTableRecord& tile) {
      const AcGePoint2d centre = tile.centerPoint();
      tile.setCenterPoint(AcGePoint2d(centre.x + dx * tile.width(), centre.y + dy * tile.height()));
    });
    return;
  }
  changeViewport("AutoCadProxy::pan2D", [=](AcDbViewport& viewport) {
    const double height = viewport.viewHeight();
    const double width = viewport.width() / viewport.height() * height;
    const AcGePoint2d centre = viewport.viewCenter();
    viewport.setViewCenter(AcGePoint2d(centre.x + dx * width, centre.y + dy * height));
  });
}

void AutoCadProxy::zoom2D(double dz) {
  const double factor = zoomFactor(dz);
  if (systemVariable(L"TILEMODE") == 1)
    changeTile("AutoCadProxy::zoom2D",
               [=](AcDbViewportTableRecord& tile) { tile.setHeight(tile.height() * factor); });
  else
    changeViewport("AutoCadProxy::zoom2D",
                   [=](AcDbViewport& viewport) { viewport.setViewHeight(viewport.viewHeight() * factor); });
}

bool AutoCadProxy::transformSelection3d(double x, double y, double z, double rx, double ry, double rz,
                                        const AcGeVector3d* xAxisP, const AcGeVector3d* yAxisP,
                                        const AcGeVector3d* zAxisP, bool isHover, bool isKeepHorizon) try {
  if (acDocManagerPtr()->curDocument() == nullptr) return false;
  ImpliedSelection selection;
  if (!selection.isTaken()) return false;
  AcGePoint3d centre;
  if (!getSelObjectsCenter(selection.name(), &centre)) centre = AcGePoint3d::kOrigin;
  AcGeVector3d step = (*xAxisP * -x + *yAxisP * y + *zAxisP * z) * kMoveUnits;
  if (isHover) step.y = 0.0;
  AcGeMatrix3d motion;
  motion.setTranslation(step);
  if (rx != 0.0) motion = motion * AcGeMatrix3d::rotation(rx * -kTurnUnits, *xAxisP, centre);
  if (ry != 0.0)
    motion = motion * AcGeMatrix3d::rotation(ry * kTurnUnits, isKeepHorizon ? kWorldY : *yAxisP, centre);
  if (rz != 0.0 && !isKeepHorizon) motion = motion * AcGeMatrix3d::rotation(rz * kTurnUnits, *zAxisP, centre);
  require(lockDocument());
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
  AcGeMatrix3d motion;
  motion.setTranslation(AcGeVector3d(x * kSheetMoveUnits, y * kSheetMoveUnits, 0.0));
  require(lockDocument());
  transformEach(selection.name(), motion, Redraw::kYes);
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
    return;
  }
  ScreenAxes axes{AcGeVector3d(1, 0, 0), AcGeVector3d(0, 1, 0), AcGeVector3d(0, 0, 1)};
  if (!calcScreenAxesRelativeToObject(viewP, &axes[0], &axes[1], &axes[2])) return;
  const bool isPerspective = viewP->isPerspective();
  const RotationMode mode = rotationMode();
  const bool isSelectionMoved =
      mIsObjectMoveMode && transformSelection3d(x, y, z, rx, ry, rz, &axes[0], &axes[1], &axes[2],
                                                mode.mIsHover, mode.mIsKeepHorizon);
  if (isSelectionMoved) {
    viewP->update();
    return;
  }
  if (x != 0 || y != 0 || z != 0) {
    const double base = mTransSensBase;
    moveXYZ(viewP, x / base, y / base, z / base, &axes[0], &axes[1], &axes[2], mode.mRotCenterMode,
            isPerspective, mode.mIsHover);
  }
  if (rx != 0 || ry != 0 || rz != 0)
    rotateByCap(viewP, rx, ry, rz, axes, mode, isPerspective);
  else if (!mIsCapMoving)
    findTurn();
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
      axes.fill(mSelAxisDirection);
      centre = mSelAxisPoint;
      break;
    case Turn::kAboutSelectedCentre:
      centre = mSelCentre;
      break;
    case Turn::kByMode:
      centre = rotationCentre(viewP, mode.mRotCenterMode, isPerspective);
      break;
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
