#include "workbench/sessions/session_player.h"

#include "device/lmt_ctrlr.h"
#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"
#include "workbench/input_error.h"
#include "workbench/platform/desktop.h"
#include "workbench/text_input.h"

#include <cstdint>
#include <vector>

namespace workbench {
namespace {

namespace controller = standin::controller;
namespace host = standin::host;

bool isInDrawing(std::uint64_t handle) {
  const standin::Drawing* const drawing = host::drawing();
  return drawing != nullptr && drawing->find(handle) != nullptr && !drawing->isErased(handle);
}

/// Performs one action of the user; the place is the session's line.
struct UserPerformer {
  FilePlace place;
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

  void operator()(const Command& command) const { host::type(toWide(command.text)); }

  void operator()(const SetVariable& set) const {
    if (!host::setVariable(toWide(set.name), toWide(set.value)))
      throw InputError(place, "a system variable and one of its values",
                       inQuotes(set.name + " " + set.value));
  }

  void operator()(const SetProjection& projection) const { host::setPerspective(projection.isPerspective); }

  void operator()(const MovePointer& move) const { movePointer(move.target); }

  void operator()(const WriteMenu&) const { surroundings.writeMenu(); }

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
    controller::setAdvancedSettings(settings.rotationMode, settings.isZoomAfterView ? 1 : 0);
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

void perform(const TimedUserAction& event, const Session& session, const Surroundings& surroundings) {
  std::visit(UserPerformer{{session.file, event.line}, surroundings}, event.action);
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
