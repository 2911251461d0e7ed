/// An open drawing with what belongs to it: locks, tabs, viewports and their views, selection, command line.
/// Only while the host's lock is held.
#ifndef STANDIN_DOCUMENT_H
#define STANDIN_DOCUMENT_H

#include "active_command.h"
#include "drawing.h"
#include "graphics_view.h"
#include "viewports.h"

#include "acdocman.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace standin::host {

/// Size of the layout's sheet (A3, in millimetres).
constexpr double kSheetWidth = 420;
constexpr double kSheetHeight = 297;
/// Size of the floating viewport on it.
constexpr double kWindowWidth = 380;
constexpr double kWindowHeight = 257;

struct Document final : AcApDocument {
  /// In the model tab, which shows the drawing's own view, or all of it from above.
  explicit Document(std::unique_ptr<Drawing> opened);

  std::unique_ptr<Drawing> drawing;
  std::vector<AcAp::DocLockMode> locks;
  bool isModelTab = true;
  int layoutViewport = kPaperViewport;  ///< the current one of the layout
  TileRecord tile;
  LayoutViewport paper{kPaperViewport, kSheetWidth, kSheetHeight};
  LayoutViewport floating{kFloatingViewport, kWindowWidth, kWindowHeight};
  GraphicsView tileView{kTileViewport};
  GraphicsView paperView{kPaperViewport};
  GraphicsView floatingView{kFloatingViewport};
  std::vector<std::uint64_t> selection;  ///< handles, in the order in which they were selected
  std::deque<std::wstring> queue;        ///< texts sent for the command line
  CommandLine commandLine;

  /// The sheet, all of it, as the paper-space viewport shows it.
  PaperView sheet() const { return LayoutViewport(kPaperViewport, kSheetWidth, kSheetHeight).shown(); }
  /// The view of a viewport of the current tab, null when there is none of that number.
  GraphicsView* viewOf(int viewport);
  /// Number of the current viewport.
  int currentViewport() const { return isModelTab ? kTileViewport : layoutViewport; }
  GraphicsView& currentView() { return *viewOf(currentViewport()); }
  /// The current viewport is the paper-space one.
  bool isOnPaper() const { return !isModelTab && layoutViewport == kPaperViewport; }
  /// What is drawn, or the drawing's limits when there is nothing.
  AcDbExtents extentsToShow() const;
};

/// Handles of what the user can select: neither erased nor invisible.
std::vector<std::uint64_t> selectableHandles(const Drawing& drawing);

}  // namespace standin::host

#endif
