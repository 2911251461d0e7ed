/// An open drawing with what belongs to it: locks, tabs, viewports and their views, selection, command line.
/// Only while the host's lock is held.
#ifndef STANDIN_DOCUMENT_H
#define STANDIN_DOCUMENT_H

#include "active_command.h"
#include "drawing.h"
#include "graphics_view.h"
#include "viewports.h"

#include "acdocman.h"

#include <cassert>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace standin::host {

/// A viewport of the layout: the sheet itself, which is number 1, or a floating one.
struct LayoutWindow {
  /// Of the drawing with that serial number.
  LayoutWindow(std::uint64_t drawing, int number, const PaperView& at)
      : place(at), viewport(drawing, number, at.width, at.height), view(number) {}

  PaperView place;  ///< on the sheet
  LayoutViewport viewport;
  GraphicsView view;
};

struct QueuedText {
  std::wstring text;
  bool isActivating = true;  ///< the document becomes current for it
};

struct Document final : AcApDocument {
  /// In the model tab, which shows the drawing's own view, or all of it from above.
  Document(std::unique_ptr<Drawing> opened, std::wstring fileName);

  std::wstring name;
  std::unique_ptr<Drawing> drawing;
  std::vector<AcAp::DocLockMode> locks;
  bool isModelTab = true;
  int layoutViewport = kPaperViewport;  ///< the current one of the layout
  TileRecord tile;
  GraphicsView tileView{kTileViewport};
  PaperView sheet;                                     ///< all of the layout
  std::vector<std::unique_ptr<LayoutWindow>> windows;  ///< in the order of their numbers, from 1 on
  std::vector<std::uint64_t> selection;                ///< handles, in the order in which they were selected
  std::deque<QueuedText> queue;                        ///< sent for the command line
  CommandLine commandLine;

  LayoutWindow& paper() {
    assert(!windows.empty() && "the sheet has a window");
    return *windows.front();
  }
  /// Null when there is none of that number.
  LayoutWindow* window(int number);
  /// The view of a viewport of the current tab, null when there is none of that number.
  GraphicsView* viewOf(int viewport);
  /// Number of the current viewport.
  int currentViewport() const { return isModelTab ? kTileViewport : layoutViewport; }
  GraphicsView& currentView() {
    GraphicsView* const viewP = viewOf(currentViewport());
    assert(viewP != nullptr && "the current viewport has a view");
    return *viewP;
  }
  /// The current viewport is the paper-space one.
  bool isOnPaper() const { return !isModelTab && layoutViewport == kPaperViewport; }
  /// Drops what was shown and not stored.
  void revertViews();
  /// What is drawn, or the drawing's limits when there is nothing.
  AcDbExtents extentsToShow() const;

  /// Locked for write.
  bool isWritable() const;
  /// A database object by the lower part of its id; null when there is none.
  AcDbObject* object(std::uint64_t number);
  std::uint64_t openObjects() const;
};

/// Handles of what the user can select: neither erased nor invisible.
std::vector<std::uint64_t> selectableHandles(const Drawing& drawing);

}  // namespace standin::host

#endif
