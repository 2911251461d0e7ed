#include "workbench/session_player.h"

#include <algorithm>
#include <cstdio>

#include "device/lmt_ctrlr.h"
#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"
#include "workbench/desktop.h"
#include "workbench/input_error.h"
#include "workbench/text_input.h"

namespace workbench {
namespace {

namespace controller = standin::controller;
namespace host = standin::host;

std::string handleText(std::uint64_t handle) {
  char text[20];
  std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(handle));
  return text;
}

std::string handleList(const std::vector<std::uint64_t>& handles) {
  std::string text;
  for (const std::uint64_t handle : handles) text += (text.empty() ? "" : " ") + handleText(handle);
  return text;
}

InputError unknownEntity(const FilePlace& place, const std::string& handles) {
  return InputError(place, "handles of entities in the drawing", inQuotes(handles));
}

/// Does one action of the user's; the place is the session's line.
struct UserPerformer {
  FilePlace place;

  void operator()(const Select& select) const {
    switch (select.kind) {
      case Select::Kind::kAll:
        return host::selectAll();
      case Select::Kind::kNone:
        return host::selectNone();
      case Select::Kind::kHandles:
        if (!host::select(select.handles)) throw unknownEntity(place, handleList(select.handles));
    }
  }

  void operator()(const Command& command) const { host::type(toWide(command.text)); }

  void operator()(const SetVariable& set) const {
    if (!host::setVariable(toWide(set.name), toWide(set.value)))
      throw InputError(place, "a system variable and one of its values",
                       inQuotes(set.name + " " + set.value));
  }

  void operator()(const SetProjection& projection) const { host::setPerspective(projection.isPerspective); }

  void operator()(const MovePointer& move) const { movePointer(move.target); }
};

struct DevicePerformer {
  void operator()(const RotationMode& mode) const {
    controller::setAdvancedSettings(mode.code, mode.isZoomAfterView ? 1 : 0);
    controller::Event announcement;
    announcement.code = LM_SETTINGS_CHANGED;
    controller::deliver(announcement);
  }

  void operator()(const DeviceEvent& event) const {
    controller::Event sent;
    sent.code = event.code;
    sent.axes = event.axes;
    controller::deliver(sent);
  }

  void operator()(const DevicePower& power) const { controller::setDown(power.isDown); }
};

}  // namespace

void checkSelections(const Session& session, const standin::Drawing& drawing) {
  for (const TimedUserAction& event : session.user) {
    if (std::holds_alternative<Command>(event.action)) return;
    const auto* const select = std::get_if<Select>(&event.action);
    if (select == nullptr) continue;
    for (const std::uint64_t handle : select->handles)
      if (drawing.find(handle) == nullptr)
        throw unknownEntity({session.file, event.line}, handleText(handle));
  }
}

void perform(const TimedUserAction& event, const Session& session) {
  std::visit(UserPerformer{{session.file, event.line}}, event.action);
}

void perform(const DeviceAction& action) {
  std::visit(DevicePerformer{}, action);
}

DeviceSchedule::DeviceSchedule(const Session& session) : mLeft(session.device.size()) {
  for (const TimedDeviceAction& event : session.device)
    standin::clock::schedule(event.timeMs, [this, &event] {
      perform(event.action);
      --mLeft;
    });
}

}  // namespace workbench
