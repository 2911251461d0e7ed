#include "workbench/app.h"

#include "workbench/dxf/reader.h"
#include "workbench/input_error.h"
#include "workbench/options.h"
#include "workbench/platform/desktop.h"
#include "workbench/platform/module_loader.h"
#include "workbench/report/run_report.h"
#include "workbench/running/outputs.h"
#include "workbench/running/profile.h"
#include "workbench/running/replay.h"
#include "workbench/running/summary.h"

#include <chrono>
#include <exception>
#include <optional>
#include <utility>

namespace workbench {
namespace {

namespace fs = std::filesystem;

/// A progress line, rewritten in place; only on a terminal.
class ProgressLine {
 public:
  ProgressLine(std::ostream& err, bool isShown) : mErr(err), mIsShown(isShown) {}
  ~ProgressLine() {
    if (mIsDrawn) mErr << "\r\033[K" << std::flush;
  }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void show(std::int64_t nowMs, std::int64_t endMs) {
    const auto now = std::chrono::steady_clock::now();
    if (!mIsShown || now < mNext) return;
    mNext = now + std::chrono::milliseconds(100);
    mIsDrawn = true;
    mErr << "\rreplay: " << nowMs << " of " << endMs << " ms\033[K" << std::flush;
  }

 private:
  std::ostream& mErr;
  bool mIsShown;
  bool mIsDrawn = false;
  std::chrono::steady_clock::time_point mNext;
};

void writeResults(const fs::path& out, RunResult& result, const RunNames& names, const Session& session,
                  const Profile& profile) {
  writeFile(out / "trajectory.csv", trajectoryCsv(result.recording.rows));
  writeFile(out / "entities.csv", entitiesCsv(result.entities));
  writeFile(out / "commandline.log", commandLineLog(result.recording.commandLine));
  writeFile(out / "summary.json", summaryJson(result, names));
  writeReport(gatherReport(result, names, session, {profile.log(), profile.menu()}), out / "index.html");
}

void printSummary(const RunResult& result, std::ostream& out) {
  for (const auto& [what, howMuch] : summaryRows(result)) out << what << ": " << howMuch << "\n";
}

/// Line of the first event that writes the menu file.
std::optional<std::size_t> lineOfMenuEvent(const Session& session) {
  for (const TimedUserAction& event : session.user)
    if (std::holds_alternative<WriteMenu>(event.action)) return event.line;
  return std::nullopt;
}

int runReplay(const Options& options, std::ostream& out, std::ostream& err) {
  checkFiles(options);
  ReplayRequest request;
  const Session session = readSession(options.session);
  request.session = session;
  request.drawing = readDrawing(options.drawing);
  const auto menuLine = lineOfMenuEvent(session);
  if (menuLine && !options.menu)
    throw InputError({session.file, *menuLine}, "the option --menu beside the event \"menu\"", "none");
  request.clock = options.isRealTime ? standin::clock::Kind::kReal : standin::clock::Kind::kReplay;
  request.frameMs = options.frameMs;
  request.moments = options.frames;
  Module module(options.module);

  const Profile profile(options.profile.value_or(options.out / "profile"));
  if (!options.profile) profile.clear();
  profile.make();
  if (menuLine)
    request.writeMenu = [&] { profile.copyMenu(*options.menu); };
  else if (options.menu)
    profile.copyMenu(*options.menu);
  setUserProfile(profile.folder());

  RunResult result;
  {
    ProgressLine line(err, !options.isQuiet && isErrorTerminal());
    request.progress = [&line](std::int64_t nowMs, std::int64_t endMs) { line.show(nowMs, endMs); };
    result = replay(std::move(request), module);
  }
  const RunNames names{options.drawing.filename().string(), options.session.filename().string()};
  writeResults(options.out, result, names, session, profile);
  if (!options.isQuiet) printSummary(result, out);
  for (const std::string& problem : result.problems) err << "workbench: problem: " << problem << "\n";
  out << (options.out / "index.html").generic_string() << "\n";
  return result.isClean() ? kExitClean : kExitUnclean;
}

}  // namespace

int runWorkbench(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  try {
    return runReplay(parseOptions(arguments), out, err);
  } catch (const HelpWanted& help) {
    out << help.text;
    return kExitClean;
  } catch (const std::exception& error) {
    err << "workbench: " << error.what() << "\n";
    return kExitBadInput;
  }
}

}  // namespace workbench
