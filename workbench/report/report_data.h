/// What the report page shows of a run, as plain values.
#ifndef WORKBENCH_REPORT_DATA_H
#define WORKBENCH_REPORT_DATA_H

#include "standin/objectarx/host_control.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace workbench {

/// One entity as it is drawn: polylines in world coordinates.
struct ReportShape {
  std::uint64_t handle = 0;
  std::string layer;
  int colour = 7;  ///< AutoCAD colour index, already resolved (256 "by layer" does not occur)
  std::vector<standin::Polyline3> outline;
  std::string type{};  ///< as entities.csv has it
};

/// A scroll bar as the system reports it; `page` positions are in view at once.
struct ReportScrollBar {
  int minimum = 0;
  int maximum = 0;
  int page = 0;
  int position = 0;
};

/// A window of the desktop, in screen coordinates.
struct ReportWindow {
  std::string className;      ///< UTF-8
  std::array<int, 4> rect{};  ///< left, top, right, bottom
  std::optional<ReportScrollBar> vertical;
  std::optional<ReportScrollBar> horizontal;
};

/// The desktop: its windows, a parent before its children, and the mouse pointer.
struct ReportDesktop {
  std::vector<ReportWindow> windows;
  std::array<int, 2> pointer{};
};

/// What was on the screen at one moment.
struct ReportMoment {
  std::int64_t timeMs = 0;
  std::array<int, 6> cap{};  ///< x, y, z, rx, ry, rz last handed to the module
  int viewport = 2;
  bool isLayout = false;         ///< a layout is shown: `paper` is what is seen of its sheet
  bool isPaper = false;          ///< and the sheet itself is current, not the window in it
  standin::host::Camera camera;  ///< of the model, in a layout as its window shows it
  standin::host::PaperView paper;
  standin::host::PaperView sheet;        ///< all of the layout
  standin::host::PaperView window;       ///< place on the sheet of the window that `camera` is of
  std::vector<std::uint64_t> selection;  ///< handles pre-selected at this moment
  /// Shapes that differ from those of ReportData::shapes at this moment (moved), or are not among them (new).
  std::vector<ReportShape> changed;
  std::vector<std::uint64_t> gone;       ///< handles of ReportData::shapes that are not there at this moment
  std::optional<ReportDesktop> desktop;  ///< only when the session moves the pointer
};

/// An application function: an item of the menu file.
struct ReportFunction {
  std::string label;
  std::string macro;
};

/// A key, or several at one time, and its effects.
struct ReportKey {
  std::int64_t timeMs = 0;
  std::string name;               ///< as the session writes it
  std::vector<std::string> sent;  ///< texts for the command line, UTF-8
  std::string view;               ///< the resulting view in words; empty when no view was changed
};

struct ReportLine {
  std::int64_t timeMs = 0;
  std::string kind;  ///< send, send-activate, print, host, box, beep
  std::string text;  ///< UTF-8, as it was sent (not escaped)
};

/// What was shown from a time on.
struct ReportPass {
  std::int64_t timeMs = 0;
  int viewport = 2;
  bool isPaper = false;   ///< the sheet is current: position x, y and the fields are what is seen of it
  bool isLayout = false;  ///< a layout is shown
  standin::host::Camera camera;
  bool isDrawn = false;  ///< the module moved it: a pass, not a command or an event
};

/// The rotation mode from a time on, as the session sets it.
struct ReportMode {
  std::int64_t timeMs = 0;
  int code = 0;  ///< three decimal digits: hover, level horizon, centre of rotation
  bool isZoomAfterView = false;
};

/// The switches of the rotation's centre as the module has them when it is loaded.
struct ReportToggles {
  std::int64_t timeMs = 0;
  bool isSelectionCentre = true;  ///< the selection is the rotation centre
  bool isLineAxis = false;        ///< a selected line is the rotation axis
};

/// The cap from a time on.
struct ReportCap {
  std::int64_t timeMs = 0;
  std::array<std::int16_t, 6> axes{};
};

struct ReportSelection {
  std::int64_t timeMs = 0;
  std::vector<std::uint64_t> handles;
};

/// A line of the session.
struct ReportEvent {
  std::int64_t timeMs = 0;
  std::size_t line = 0;
  std::string text;  ///< UTF-8
};

struct ReportProblem {
  std::optional<std::int64_t> timeMs;  ///< when it was first seen; none when only the end showed it
  std::string text;
};

struct ReportData {
  std::string drawingName;
  std::string sessionName;
  bool isClean = false;
  std::vector<std::pair<std::string, std::string>> summary;  ///< rows of the summary table: what, how much
  std::vector<ReportShape> shapes;
  std::vector<ReportMoment> moments;
  std::vector<ReportPass> passes;           ///< every change of what is shown, in order of time
  std::vector<ReportCap> caps;              ///< every deflection, in order of time
  std::vector<ReportMode> modes;            ///< every announcement of the control panel's settings
  std::vector<ReportToggles> toggles;       ///< of every load of the module, in order of time
  std::vector<ReportSelection> selections;  ///< every change of the pre-selection, in order of time
  std::vector<ReportEvent> events;          ///< of the session
  std::vector<ReportProblem> problems;
  std::vector<ReportLine> commandLine;
  std::vector<ReportFunction> functions;  ///< by number
  std::vector<ReportKey> keys;
  std::string log;            ///< the module's entries of this run, UTF-8
  bool isLogOnClock = false;  ///< the times of its entries are ms since midnight of the session's time 0
  std::string logNote;        ///< why there are none, or which are missing; empty when all are there
};

}  // namespace workbench

#endif
