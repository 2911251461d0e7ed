/// A session: what the device and the user do during a run, as a text file gives it. docs/sessions.md has the
/// grammar; `sessionVerbs` lists its verbs.
#ifndef WORKBENCH_SESSION_H
#define WORKBENCH_SESSION_H

#include "device/lmt_ctrlr.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace workbench {

struct AdvancedSettings {
  std::int32_t rotationMode = 0;  ///< three decimal digits: hover, level horizon, centre of rotation
  bool isZoomAfterView = false;
};
struct DeviceEvent {                   ///< any event of the daemon: motion, key, function
  std::int32_t code = -1;              ///< below 0: motion
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
/// What is under the mouse pointer: the drawing, a tree, a list box, an edit field, a widget that scrolls
/// itself, or nothing of the host's.
enum class PointerTarget { kCanvas, kTree, kList, kEdit, kQt, kNone };
struct MovePointer {
  PointerTarget target = PointerTarget::kCanvas;
};
struct WriteMenu {};
struct SetDocument {
  enum class Kind { kOpen, kClose, kSwitch };
  Kind kind = Kind::kClose;
  std::string name;  ///< UTF-8; empty for kClose
};
struct SetViewport {
  int number = 0;
};
/// A new value in the module's settings file, from the next LoadAgain on.
struct ChangeSetting {
  std::string key;
  std::string value;
};
/// The module is unloaded and loaded again.
struct LoadAgain {};

using DeviceAction = std::variant<AdvancedSettings, DeviceEvent, DevicePower>;
using UserAction = std::variant<Select, Command, SetVariable, SetProjection, MovePointer, WriteMenu,
                                SetDocument, SetViewport, ChangeSetting, LoadAgain>;

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

/// A line of the session, for those who read it.
struct SessionEvent {
  std::int64_t timeMs = 0;
  std::size_t line = 0;
  std::string text;  ///< without the time and the comment, UTF-8
};

struct Session {
  std::string file;              ///< for messages
  std::filesystem::path folder;  ///< absolute, since a run has a working folder of its own
  std::vector<TimedDeviceAction> device;
  std::vector<TimedUserAction> user;
  std::vector<SessionEvent> events;
  std::int64_t endMs = 0;  ///< the time of `end`, or of the last event
};

/// A name that a session uses for a value.
template <typename Value>
struct Named {
  const char* name;
  Value value;
};

constexpr std::array<Named<PointerTarget>, 6> kPointerTargets = {{{"canvas", PointerTarget::kCanvas},
                                                                  {"tree", PointerTarget::kTree},
                                                                  {"list", PointerTarget::kList},
                                                                  {"edit", PointerTarget::kEdit},
                                                                  {"qt", PointerTarget::kQt},
                                                                  {"none", PointerTarget::kNone}}};

/// A verb of the session language and the form of its arguments, as docs/sessions.md gives them.
struct SessionVerb {
  std::string_view name;
  std::string_view arguments;
};

/// Every verb, in the order in which messages list them.
std::vector<SessionVerb> sessionVerbs();

/// Latest time of an event: a week, so that no sum of times overflows and a typing error is found.
constexpr std::int64_t kLatestEventMs = 7LL * 24 * 3600 * 1000;

/// The session of `text`. Throws InputError with `file` and the line of the first thing wrong.
Session parseSession(std::string_view text, const std::string& file);

/// The session of a file. Throws InputError.
Session readSession(const std::filesystem::path& file);

}  // namespace workbench

#endif
