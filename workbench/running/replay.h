/// One run of a session: opens the drawing, sends the module the host's messages, plays the session, unloads
/// the module and checks that it left nothing registered, open or running. Main thread only.
#ifndef WORKBENCH_REPLAY_H
#define WORKBENCH_REPLAY_H

#include "standin/objectarx/drawing.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"
#include "workbench/platform/module_loader.h"
#include "workbench/report/report.h"
#include "workbench/running/drawing_state.h"
#include "workbench/running/host_loop.h"
#include "workbench/running/recording.h"
#include "workbench/sessions/session.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace workbench {

struct ReplayRequest {
  std::unique_ptr<standin::Drawing> drawing;
  Session session;
  standin::clock::Kind clock = standin::clock::Kind::kReplay;
  std::uint32_t frameMs = 16;
  std::int64_t dateMs = 0;          ///< UTC that belongs to time 0 of a replay, in ms since 1970
  std::size_t moments = 60;         ///< of the report
  std::function<void()> writeMenu;  ///< for the session's event `menu`
  std::filesystem::path settings;   ///< the module's settings file, for the session's event `setting`
  Recorder::AssemblyRunner runAssembly;
  Progress progress;
};

struct RunResult {
  Recording recording;
  standin::host::Counts host;         ///< after the unload, with the drawing open still
  std::uint64_t eventsDelivered = 0;  ///< fetched by the module
  std::uint64_t eventsNotFetched = 0;
  std::int64_t endMs = 0;             ///< of the session
  std::vector<EntityState> entities;  ///< at the end of the run
  std::map<std::string, std::size_t> notUnderstood;
  std::vector<ReportShape> shapes;  ///< at the beginning of the run
  std::vector<ReportMoment> moments;
  std::vector<ReportToggles> toggles;  ///< of every load of the module
  std::size_t momentsLeftOut = 0;      ///< that do not show what has changed in the drawing
  std::vector<std::string> problems;   ///< what makes the run unclean, one line each
  std::exception_ptr failure;          ///< what ended the run before its session: InputError or Interrupted
  std::string ending = "the end of the session";  ///< what ended the run, in words

  bool isReplay = false;  ///< on the replay clock

  bool isClean() const { return problems.empty(); }
};

/// Runs the session with the module, which is unloaded at the end, also when the session names what the host
/// does not have and when the user ends the run.
RunResult replay(ReplayRequest request, Module& module);

}  // namespace workbench

#endif
