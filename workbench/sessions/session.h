/// A session: what the device and the user do during a run, as a file of plain text gives it.
///
/// One event a line, "TIME VERB ARGUMENTS", times in ms and never decreasing, '#' starts a comment, blank
/// lines are skipped:
///
// clang-format off
///   rotmode CODE zoom on|off          the device's advanced settings (000 to 999); announced by event 0x20001
///   motion X Y Z RX RY RZ             the cap from now on, each -32768 to 32767
///   key NAME                          front right top back left bottom fit
///   function N                        application function N
///   event CODE                        any event code, decimal or 0x...; below 0 it is a motion record of the
///                                     cap as it is
///   device down|up                    down: every operation of the controller library fails
///   select all|none|HANDLE...         pre-selects entities by their handles (hexadecimal); one that the
///                                     drawing does not have is told of at the command line and left out
///   command TEXT                      types TEXT at the command line
///   setvar NAME VALUE                 sets a system variable
///   projection parallel|perspective   of the current view
///   pointer canvas|tree|list|edit|qt|none   what lies under the mouse pointer
///   menu                              the exporter writes the menu file (--menu), which otherwise is there
///                                     from the beginning
///   end                               the end of the run, the last event if it is there
// clang-format on
#ifndef WORKBENCH_SESSION_H
#define WORKBENCH_SESSION_H

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace workbench {

struct RotationMode {
  std::int32_t code = 0;
  bool isZoomAfterView = false;
};
struct DeviceEvent {  ///< motion, key, function and event alike: what the daemon sends
  std::int32_t code = -1;
  std::array<std::int16_t, 6> axes{};  ///< of the cap; all 0 for a command event
};
struct DevicePower {
  bool isDown = false;
};
struct Select {
  enum class Kind { kAll, kNone, kHandles };
  Kind kind = Kind::kNone;
  std::vector<std::uint64_t> handles;
};
struct Command {
  std::string text;  ///< UTF-8
};
struct SetVariable {
  std::string name;
  std::string value;
};
struct SetProjection {
  bool isPerspective = false;
};
enum class PointerTarget { kCanvas, kTree, kList, kEdit, kQt, kNone };
struct MovePointer {
  PointerTarget target = PointerTarget::kCanvas;
};
struct WriteMenu {};

using DeviceAction = std::variant<RotationMode, DeviceEvent, DevicePower>;
using UserAction = std::variant<Select, Command, SetVariable, SetProjection, MovePointer, WriteMenu>;

struct TimedDeviceAction {
  std::int64_t timeMs = 0;
  std::size_t line = 0;
  DeviceAction action;
};
struct TimedUserAction {
  std::int64_t timeMs = 0;
  std::size_t line = 0;
  UserAction action;
};

struct Session {
  std::string file;  ///< for messages
  std::vector<TimedDeviceAction> device;
  std::vector<TimedUserAction> user;
  std::int64_t endMs = 0;  ///< the time of `end`, or of the last event
};

/// Latest time of an event: a week, so that no sum of times overflows and a slip of the pen is caught.
constexpr std::int64_t kLatestEventMs = 7LL * 24 * 3600 * 1000;

/// The session of `text`. Throws InputError with `file` and the line of the first thing wrong.
Session parseSession(std::string_view text, const std::string& file);

/// The session of a file. Throws InputError.
Session readSession(const std::filesystem::path& file);

}  // namespace workbench

#endif
