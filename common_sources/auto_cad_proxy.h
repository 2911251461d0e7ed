/// Turns the state of the device into actions of the host. A timer on the host's main thread polls what the
/// reading thread has stored; every host call is made on that thread. One for each load of the module.
///
///   state            | deflected                         | released
///   idle, 100 ms     | -> moving; logs "Cap moving."     | stays idle
///   moving, 10 ms    | one pass of motion after another  | commits, unlocks, logs "Cap released." -> idle
///
/// A deflection that scrolls a control under the pointer changes neither state.
#ifndef COMMON_SOURCES_AUTO_CAD_PROXY_H
#define COMMON_SOURCES_AUTO_CAD_PROXY_H

#include "common_sources/camera.h"
#include "common_sources/document_lock.h"
#include "common_sources/published_names.h"
#include "common_sources/rotation_mode.h"
#include "util/threads.h"

// clang-format off
#include "dbmain.h"
#include "adsdef.h"
#include "gs.h"
#include "acgs.h"
#include "gepnt3d.h"
#include "gevec3d.h"
// clang-format on

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

class LmAutoCad;

/// Navigation modes.
enum NavigationMode : int { kUnknownMode = 0, k2DMode = 1, k3DMode = 2 };

/// All operations belong to the main thread unless they say otherwise. None throws except handleDeviceCap,
/// getNavigationMode, pan2D, zoom2D and the execution of functions, whose callers catch.
class AutoCadProxy {
 public:
  /// Copies its settings from the core object, which outlives it, and arms the timer: the first tick comes
  /// after 100 ms.
  explicit AutoCadProxy(LmAutoCad* lmAutoCadP);
  ~AutoCadProxy();

  AutoCadProxy(const AutoCadProxy&) = delete;
  AutoCadProxy& operator=(const AutoCadProxy&) = delete;

  /// The one proxy of the module, null when there is none.
  static AutoCadProxy* instance();

  LmAutoCad* lmAutoCad() const { return mLmAutoCadP; }

  /// The timer is not armed again after the next tick.
  void deactivate() { mIsTimerActive = false; }

  /// Any thread. All four fields change at once.
  void setRotationMode(RotationMode mode) { mRotationMode.store(mode, std::memory_order_release); }
  RotationMode rotationMode() const { return mRotationMode.load(std::memory_order_acquire); }

  /// Any thread. Name of the current application mode, "Unknown" while the menu file has none for it. Valid
  /// as long as this object.
  const std::string& applModeName() const;

  bool isObjectMoveMode() const { return mIsObjectMoveMode; }
  void setObjectMoveMode(bool isObjectMoveMode) { mIsObjectMoveMode = isObjectMoveMode; }
  bool isCapMoving() const { return mIsCapMoving; }
  bool isDocLocked() const { return mDocumentLock.isHeld(); }

  /// Called before the host destroys a document: unlocks it if this object has locked it, and ends a movement
  /// in it. Throws what the host throws; both have been done then.
  void documentToBeDestroyed(AcApDocument* documentP);

  // --- polling ---

  /// One tick: runs doTransform and arms the timer again, 10 ms ahead while the cap moves, else 100 ms. After
  /// a failure of its own the timer stays off.
  void tick();

  /// Serves the device for up to the setting maxContMoveTime, or until the cap is released.
  void doTransform();

  /// Handles the current deflection once. True while the cap is deflected.
  bool handleDeviceCap();

  /// k2DMode in the paper-space viewport of a layout, else k3DMode.
  int getNavigationMode();

  /// Ends a movement: commits the 3D view, unlocks the document. Does nothing when none is under way.
  void handleCapIsReleased(int mode);

  // --- keys, application functions, menu file ---

  /// Executes the pending application function, then the pending special function. A request whose execution
  /// failed stays pending, and so does one that arrived during the execution.
  void handleDeviceKeys();

  /// Sends the menu macro of application function `number` to the command line, a text for each of its
  /// tokens. Throws what the host throws.
  void execApplFunction(std::int32_t number);

  /// Sends the command of a special function's event code. Throws what the host throws.
  void execSpecialApplFunction(std::int32_t eventCode);

  /// Makes the host load the menu exporter in the module's folder.
  void StartDotNETPlugin();

  /// Reads the menu file into the modes and the menu table. A missing file is no failure: it may come later.
  void loadMenufile();

  // --- scrolling ---

  /// Scrolls the tree or list under the mouse pointer by raw cap values and waits, the longer the less the
  /// cap is deflected. False when scroll mode is off or there is nothing to scroll.
  bool scrollTreeOrList(int x, int y, int z);

  // --- the view ---

  /// Fetches the current graphics view (null when there is none) and the current viewport's number. Returns
  /// the number.
  int retrieveViewParams(AcGsView** viewP, int* viewportNumberP);

  /// Unit axes of the screen in world coordinates: z from the target to the camera, y the up vector, x = z
  /// cross up (it points to the left of the screen). False after a failure.
  bool calcScreenAxesRelativeToObject(AcGsView* viewP, AcGeVector3d* xAxisP, AcGeVector3d* yAxisP,
                                      AcGeVector3d* zAxisP);

  /// Mean of the centres of the selected entities' boxes, drawing units; entities without a box are left out.
  /// `selectionSet` null: of the implied selection; it is read once a movement, later passes get the validity
  /// found then and leave `centreP` alone. False when nothing is selected.
  bool getSelObjectsCenter(const ads_name selectionSet, AcGePoint3d* centreP);

  /// Unit direction of the one selected line and a point on it, read once a movement. False when anything
  /// else is selected.
  bool getSelObjectAxis(AcGeVector3d* directionP, AcGePoint3d* pointP);

  // --- 2D motion ---

  /// One pass over the sheet of a layout; raw cap values. Locks the document on the first pass of a movement.
  void handleCapIsDeflectedIn2DMode(short x, short y, short z);

  /// Moves the centre of the view by dx, dy: fractions of its width and height.
  void pan2D(double dx, double dy);

  /// Shows more for a positive, less for a negative dz (dimensionless), at most 20 % either way.
  void zoom2D(double dz);

  // --- moving objects ---

  /// Moves and turns the implied selection by raw cap values along and about the screen axes, around its own
  /// centre. False when nothing is selected or the host failed.
  bool transformSelection3d(double x, double y, double z, double rx, double ry, double rz,
                            const AcGeVector3d* xAxisP, const AcGeVector3d* yAxisP,
                            const AcGeVector3d* zAxisP, bool isHover, bool isKeepHorizon);

  /// Moves the implied selection on the sheet by raw cap values. False as above.
  bool transformSelection2d(double x, double y);

  // --- 3D motion ---

  /// One pass of view motion; raw cap values.
  void handleCapIsDeflectedIn3DMode(short x, short y, short z, short rx, short ry, short rz);

  /// Moves the camera along the screen axes by five times dx, dy (fractions of the field's size,
  /// dimensionless) and zooms by dz; in a hovering perspective view dz flies the camera forward or back
  /// instead.
  void moveXYZ(AcGsView* viewP, double dx, double dy, double dz, const AcGeVector3d* xAxisP,
               const AcGeVector3d* yAxisP, const AcGeVector3d* zAxisP, int rotCenterMode, bool isPerspective,
               bool isHover);

  /// Moves camera and target by distance * sqrt(field width * field height) along the axis; a hovering
  /// perspective camera keeps its elevation.
  void move3D(AcGsView* viewP, double distance, const AcGeVector3d* axisP, bool isHover, bool isPerspective);

  /// Turns camera, target and up vector by `angle` (radians, right-handed) about the axis through the centre.
  /// `axisIndex` 0, 1, 2 for the screen's x, y, z. Level horizon: no turn about z, and y becomes the world Z
  /// axis, which is written to `*axisP`.
  void rotate(AcGsView* viewP, double angle, int axisIndex, const AcGePoint3d* centreP, AcGeVector3d* axisP,
              int rotCenterMode, bool isKeepHorizon, bool isPerspective);

 private:
  enum class Turn { kAboutSelectedLine, kAboutSelectedCentre, kByMode };

  bool isMainThread() const { return currentThreadId() == mMainThread; }
  /// Whether the selection's centre and axis are those of the movement under way.
  bool isSelectionRead() const { return mIsCapMoving && !mIsSelectionDue; }

  void armTimer();
  void forgetMovement();
  void releaseIn2DMode();
  void releaseIn3DMode();
  /// What a rotation turns about. The first pass of a movement calls it also when nothing turns, because the
  /// selection counts as it is then.
  Turn findTurn();
  void rotateByCap(AcGsView* viewP, short rx, short ry, short rz, ScreenAxes& axes, const RotationMode& mode,
                   bool isPerspective);

  const std::uint32_t mMainThread = currentThreadId();
  LmAutoCad* mLmAutoCadP;
  std::int32_t mTransSensBase;
  std::int32_t mRotSensBase;
  std::uint32_t mMaxContMoveTime;  ///< ms
  bool mUseInt3dIntrfce;
  std::atomic<int> mMode{kUnknownMode};  ///< read by the reading thread for the mode report
  bool mIsCapMoving = false;
  bool mIsSelectionDue = false;  ///< the movement's passes have had no view so far
  bool mIsTimerActive = true;
  DocumentLock mDocumentLock;
  std::atomic<RotationMode> mRotationMode{RotationMode{}};
  bool mIsObjectMoveMode = false;
  UINT_PTR mTimerId = 0;  ///< of the timer that is set, 0 when there is none

  PublishedNames mModes;
  std::vector<std::string> mMenuTable;
  bool mIsMenuLoaded = false;

  AcGsView* mViewP = nullptr;  ///< the host's; of the last retrieveViewParams
  int mViewportNumber = 0;

  // Found on the first pass of a movement, used unchanged until the cap is released.
  AcGePoint3d mSelCentre{0, 0, 0};
  bool mIsSelCentreValid = false;
  AcGeVector3d mSelAxisDirection{0, 0, 0};
  AcGePoint3d mSelAxisPoint{0, 0, 0};
  bool mIsSelAxisValid = false;
};

/// The timer's procedure: one tick of the module's proxy.
void CALLBACK TimerProc(HWND window, UINT message, UINT_PTR timerId, DWORD tickCount);

#endif
