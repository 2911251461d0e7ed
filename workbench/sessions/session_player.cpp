#include "workbench/sessions/session_player.h"

#include "device/lmt_ctrlr.h"
#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"
#include "workbench/dxf/reader.h"
#include "workbench/input_error.h"
#include "workbench/platform/desktop.h"
#include "workbench/text_input.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace workbench {
namespace {

namespace controller = standin::controller;
namespace host = standin::host;

bool isInDrawing(std::uint64_t handle) {
  const standin::Drawing* const drawing = host::drawing();
  // An erased entity is still in the drawing, but nobody can select it.
  return drawing != nullptr && drawing->find(handle) != nullptr && !drawing->isErased(handle);
}

/// Whatever the case of its letters: files from Windows are often named in capitals.
bool isDrawingName(std::string_view name) {
  constexpr std::string_view kEnd = ".dxf";
  if (name.size() <= kEnd.size()) return false;
  return std::equal(kEnd.begin(), kEnd.end(), name.end() - static_cast<std::ptrdiff_t>(kEnd.size()),
                    [](char lower, char c) { return lower == (c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c); });
}

/// Performs one action of the user; the place is the session's line.
struct UserPerformer {
  FilePlace place;
  const std::filesystem::path& sessionFolder;
  const Surroundings& surroundings;

  void operator()(const Select& select) const {
    switch (select.kind) {
      case Select::Kind::kAll:
        return host::selectAll();
      case Select::Kind::kNone:
        return host::selectNone();
      case Select::Kind::kHandles:
        return selectHandles(select.handles);
    }
  }

  // The text is typed, so it goes through the command line and can be the input that a running command waits
  // for.
  void operator()(const Command& command) const { host::type(toWide(command.text)); }

  void operator()(const SetVariable& set) const {
    if (!host::setVariable(toWide(set.name), toWide(set.value)))
      throw InputError(place,
                       "one of the system variables TILEMODE, CVPORT and PERSPECTIVE and a value it can have",
                       inQuotes(set.name + " " + set.value));
  }

  void operator()(const SetProjection& projection) const { host::setPerspective(projection.isPerspective); }

  void operator()(const MovePointer& move) const { movePointer(move.target); }

  void operator()(const WriteMenu&) const { surroundings.writeMenu(); }

  void operator()(const SetDocument& document) const {
    switch (document.kind) {
      case SetDocument::Kind::kOpen:
        return openDocument(document.name);
      case SetDocument::Kind::kClose:
        if (host::drawing() == nullptr) throw InputError(place, "an open document to close", "none");
        // The current document only. The session has no way to name another one to close, as the user has
        // none.
        return host::closeDocument();
      case SetDocument::Kind::kSwitch:
        if (!host::switchDocument(toWide(document.name)))
          throw InputError(place, "the name of an open document", inQuotes(document.name));
        return;
    }
  }

  void operator()(const SetViewport& viewport) const {
    const std::string number = std::to_string(viewport.number);
    // Through the system variable, as a user would who types CVPORT.
    if (!host::setVariable(L"CVPORT", toWide(number)))
      throw InputError(place, "a viewport of the current tab", inQuotes(number));
  }

  void operator()(const ChangeSetting& change) const { surroundings.reloading.change(change); }

  void operator()(const LoadAgain&) const { surroundings.reloading.load(); }

  /// A name that ends in .dxf is that of a drawing in the session's folder; any other is a new drawing.
  void openDocument(const std::string& name) const {
    // Session files are UTF-8; the path's own constructor would take the ANSI code page on Windows.
    const std::filesystem::path file = std::filesystem::u8path(name);
    auto drawing =
        isDrawingName(name) ? readDrawing(sessionFolder / file) : std::make_unique<standin::Drawing>();
    if (!host::openDocument(std::move(drawing), toWide(name)))
      throw InputError(place, "the name of a document that is not open", inQuotes(name));
  }

  /// A session can be played on any drawing, so a handle that this one lacks is reported and left out.
  void selectHandles(const std::vector<std::uint64_t>& handles) const {
    std::vector<std::uint64_t> found;
    for (const std::uint64_t handle : handles)
      if (isInDrawing(handle))
        found.push_back(handle);
      else
        surroundings.recorder.noteHandleNotFound(handle);
    host::select(found);
  }
};

struct DevicePerformer {
  void operator()(const AdvancedSettings& settings) const {
    // The settings are changed before the event that announces them: the module reads them when it gets the
    // event.
    controller::setAdvancedSettings(settings.rotationMode, settings.isZoomAfterView ? 1 : 0);
    controller::Event announcement;
    announcement.code = LM_SETTINGS_CHANGED;
    controller::deliver(announcement);
  }

  void operator()(const DeviceEvent& event) const {
    controller::Event sent;
    sent.code = event.code;
    sent.axes = event.axes;
    // The stand-in queues the event; the module's reading thread fetches it when the clock lets it run.
    controller::deliver(sent);
  }

  void operator()(const DevicePower& power) const { controller::setDown(power.isDown); }
};

}  // namespace

void perform(const TimedUserAction& event, const Session& session, const Surroundings& surroundings) {
  std::visit(UserPerformer{{session.file, event.line}, session.folder, surroundings}, event.action);
}

void perform(const DeviceAction& action) {
  std::visit(DevicePerformer{}, action);
}

// Scheduled on the clock and not performed by the host loop: the device sends events while the host draws or
// waits, too.
DeviceSchedule::DeviceSchedule(const Session& session) : mLeft(session.device.size()) {
  for (const TimedDeviceAction& event : session.device)
    standin::clock::schedule(event.timeMs, [this, &event] {
      perform(event.action);
      // Counted down after the event, so isDone() is not true while one is being delivered.
      --mLeft;
    });
}

}  // namespace workbench
