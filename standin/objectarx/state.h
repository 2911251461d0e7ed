/// Everything the host holds. Only while State::mMutex is held, which a Call does.
#ifndef STANDIN_STATE_H
#define STANDIN_STATE_H

#include "command_line.h"
#include "graphics_view.h"
#include "host_control.h"
#include "viewports.h"

// clang-format off
#include "accmd.h"
#include "acdocman.h"
// clang-format on

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace standin::host {

/// Size of the layout's sheet (A3, in millimetres).
constexpr double kSheetWidth = 420;
constexpr double kSheetHeight = 297;
/// Size of the floating viewport on it.
constexpr double kWindowWidth = 380;
constexpr double kWindowHeight = 257;

struct Document final : AcApDocument {
  explicit Document(std::unique_ptr<Drawing> drawing) : mDrawingP(std::move(drawing)) {}

  std::unique_ptr<Drawing> mDrawingP;
  std::vector<AcAp::DocLockMode> mLocks;
  LayoutViewport mPaper{kPaperViewport, kSheetWidth, kSheetHeight};
  LayoutViewport mFloating{kFloatingViewport, kWindowWidth, kWindowHeight};
  TileRecord mTile;

  /// The sheet, all of it, as the paper-space viewport shows it.
  PaperView sheet() const { return LayoutViewport(kPaperViewport, kSheetWidth, kSheetHeight).shown(); }
};

struct RegisteredCommand {
  std::wstring group;
  std::wstring globalName;
  std::wstring localName;
  AcRxFunctionPtr function = nullptr;
};

/// What start() begins anew.
struct Run {
  std::shared_ptr<const std::function<void()>> mDrawnP;
  std::unique_ptr<Document> mDocumentP;
  bool mIsModelTab = true;
  int mLayoutViewport = kPaperViewport;  ///< the current one of the layout
  bool mIsViewValid = true;
  GraphicsView mTileView{kTileViewport};
  GraphicsView mPaperView{kPaperViewport};
  GraphicsView mFloatingView{kFloatingViewport};
  std::vector<std::uint64_t> mSelection;
  std::map<std::int64_t, std::vector<std::uint64_t>> mSelectionSets;
  std::int64_t mNextSelectionSet = 1;
  std::vector<AcApDocManagerReactor*> mReactors;
  std::vector<RegisteredCommand> mCommands;
  int mCommandDepth = 0;  ///< commands that are being carried out: they may write without a lock
  std::deque<std::wstring> mQueue;
  CommandLine mCommandLine;
  Report mReport;
};

struct State {
  std::recursive_mutex mMutex;
  std::thread::id mMainThread = std::this_thread::get_id();
  std::atomic<Listener*> mListenerP{nullptr};
  std::unique_ptr<Run> mRunP = std::make_unique<Run>();
};

State& state();
inline Run& run() {
  return *state().mRunP;
}
inline Drawing* currentDrawing() {
  return run().mDocumentP ? run().mDocumentP->mDrawingP.get() : nullptr;
}
/// The document is locked for write, or a command is being carried out.
bool mayWrite();
FaultRegistry& faultRegistry();

/// Handles of what the user can select: neither erased nor invisible.
std::vector<std::uint64_t> selectableHandles();

/// Calls the listener, when there is one. Not while the host's lock is held.
template <class Told, class... Arguments>
void tell(Told told, const Arguments&... arguments) {
  if (Listener* listenerP = state().mListenerP) (listenerP->*told)(arguments...);
}
/// Tells the run that something was drawn. Not while the host's lock is held.
void drawn();

}  // namespace standin::host

#endif
