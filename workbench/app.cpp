#include "workbench/app.h"

#include "workbench/comparing/compare.h"
#include "workbench/dxf/reader.h"
#include "workbench/input_error.h"
#include "workbench/live/run_live.h"
#include "workbench/options.h"
#include "workbench/platform/desktop.h"
#include "workbench/platform/interruption.h"
#include "workbench/platform/managed_host.h"
#include "workbench/platform/module_loader.h"
#include "workbench/platform/run_place.h"
#include "workbench/progress_line.h"
#include "workbench/report/report.h"
#include "workbench/report/run_report.h"
#include "workbench/running/module_log.h"
#include "workbench/running/outputs.h"
#include "workbench/running/profile.h"
#include "workbench/running/replay.h"
#include "workbench/running/result_folder.h"
#include "workbench/running/summary.h"
#include "workbench/sessions/session_limits.h"
#include "workbench/text_input.h"
#include "workbench/text_output.h"

#include <exception>
#include <memory>
#include <optional>
#include <utility>

namespace workbench {
namespace {

namespace fs = std::filesystem;

/// What a run reads. All of it is read before anything is written: the user may keep these files in the
/// folders that the run writes to.
struct Inputs {
  Session session;
  std::unique_ptr<standin::Drawing> drawing;
  std::optional<std::string> menu;  ///< bytes of the menu file
  bool isMenuLate = false;          ///< the session writes it
  /// In place of a menu file: what the host shows in its menus, for the exporter to write one of. Absolute.
  std::optional<fs::path> hostMenus;
};

/// Whether the session writes the menu file itself; `line` is then the place for messages.
bool hasMenuEvent(const Session& session, std::size_t& line) {
  for (const TimedUserAction& event : session.user)
    if (std::holds_alternative<WriteMenu>(event.action)) {
      line = event.line;
      return true;
    }
  return false;
}

bool isCustomizationFile(const fs::path& menu) {
  return menu.extension() == ".cuix";
}

/// The name of a file for the progress line.
std::string shortName(const fs::path& file) {
  return file.filename().string();
}

Inputs readInputs(const ReplayOptions& options, ProgressLine& line) {
  line.show("replay: reading " + shortName(options.session));
  Inputs inputs;
  inputs.session = readSession(options.session);
  checkMotion(inputs.session, options.frameMs);
  std::size_t menuLine = 0;
  inputs.isMenuLate = hasMenuEvent(inputs.session, menuLine);
  if (options.menu && isCustomizationFile(*options.menu)) inputs.hostMenus = fs::absolute(*options.menu);
  // The event needs a menu file to write. A customization file is exported when the assembly is loaded, at a
  // time of its own.
  if (inputs.isMenuLate && (!options.menu || inputs.hostMenus))
    throw InputError({inputs.session.file, menuLine}, "the option --menu beside the event \"menu\"",
                     inputs.hostMenus ? "a customization file" : "none");
  if (options.menu && !inputs.hostMenus) inputs.menu = readBytes(*options.menu, "a menu file");
  line.show("replay: reading " + shortName(options.drawing));
  // Last, because it takes longest: a mistake in a small file is reported at once.
  inputs.drawing = readDrawing(options.drawing);
  return inputs;
}

const std::vector<fs::path> kTables = {"trajectory.csv", "entities.csv", "commandline.log", "summary.json",
                                       "index.html"};

void writeResults(const fs::path& out, RunResult& result, const RunNames& names, const Session& session,
                  const RunTexts& texts, ProgressLine& line) {
  const auto write = [&out, &line](const char* name, const auto& makeText) {
    line.show(std::string("replay: writing ") + name);
    writeFile(out / name, makeText());
  };
  // The summary first: it is small, and says how the run ended when the disk is too full for the rest.
  write("summary.json", [&] { return summaryJson(result, names); });
  write("trajectory.csv", [&] { return trajectoryCsv(result.recording.rows); });
  write("entities.csv", [&] { return entitiesCsv(result.entities); });
  write("commandline.log", [&] { return commandLineLog(result.recording.commandLine); });
  // Last: the report takes what it needs out of the result.
  write("index.html", [&] { return reportPage(gatherReport(result, names, session, texts)); });
}

void printSummary(const RunResult& result, std::ostream& out) {
  for (const auto& [what, howMuch] : summaryRows(result)) out << what << ": " << howMuch << "\n";
}

/// A menu file that the user keeps in the profile of the results comes along when that is replaced.
void keepMenuFile(const ReplayOptions& options, const Inputs& inputs, const ResultFolder& results) {
  if (!inputs.menu || options.profile) return;
  // The user's path may contain links or "..", so names alone cannot be compared.
  const fs::path place = fs::weakly_canonical(*options.menu).lexically_relative(results.folder());
  if (place.begin() == place.end() || *place.begin() != "profile") return;
  const fs::path copy = results.partial() / place;
  // The run may have written a menu file of the same name, which is the newer one.
  if (!fs::exists(copy)) writeFile(copy, *inputs.menu);
}

/// UTC that belongs to time 0 of a replay, in ms since 1970.
std::int64_t dateMsOf(const ReplayOptions& options, const standin::Drawing& drawing) {
  constexpr std::int64_t kMsPerDay = 24 * 3600 * 1000;
  constexpr std::int64_t kStandardDay = 15706;  // 2013-01-01
  return options.day.value_or(drawing.mDay.value_or(kStandardDay)) * kMsPerDay;
}

RunResult play(const ReplayOptions& options, Inputs& inputs, const Profile& profile, ResultFolder& results,
               ModuleLog& log, ProgressLine& line) {
  const auto clock = options.isRealTime ? standin::clock::Kind::kReal : standin::clock::Kind::kReplay;
  // The module writes its log's first entry while it is loaded.
  standin::clock::start(clock, options.frameMs);
  const std::int64_t dateMs = dateMsOf(options, *inputs.drawing);
  standin::clock::setDate(dateMs);
  const RunPlace place(results.partial(), profile.folder(), options.module);
  // Loaded after RunPlace has set the profile folder, which the module reads while it is loaded.
  Module module(options.module, place.module());
  // From here on the module may have written its log, which helps to find out why a run failed.
  results.keepPartial();
  ReplayRequest request;
  request.session = inputs.session;
  request.drawing = std::move(inputs.drawing);
  request.clock = clock;
  request.frameMs = options.frameMs;
  request.dateMs = dateMs;
  request.moments = options.frames;
  request.settings = profile.settingsFile();
  if (inputs.isMenuLate)
    request.writeMenu = [&] { profile.writeMenu(*inputs.menu); };
  else if (inputs.menu)
    profile.writeMenu(*inputs.menu);
  if (inputs.hostMenus)
    request.runAssembly = [&](const fs::path& assembly) { return runAssembly(assembly, *inputs.hostMenus); };
  line.show("replay: playing " + shortName(options.session));
  request.progress = [&line, &log](std::int64_t nowMs, std::int64_t endMs) {
    if (line.isDue()) line.show("replay: " + std::to_string(nowMs) + " of " + std::to_string(endMs) + " ms");
    log.step();
  };
  return replay(std::move(request), module);
}

int runReplay(const ReplayOptions& options, std::ostream& out, std::ostream& err) {
  checkFiles(options);
  // Locks the folder before the inputs are read, so that two runs cannot both replace the results.
  ResultFolder results(options.out);
  ProgressLine line(err, !options.isQuiet && isErrorTerminal());
  Inputs inputs = readInputs(options, line);
  const InterruptionGuard guard;
  // Only now is anything removed: an input may be in the folder that begin() empties.
  results.begin();
  const Profile profile(options.profile.value_or(results.partial() / "profile"));
  profile.make();
  // Before the module is loaded, to know which entries are older than the run.
  ModuleLog log(profile.settings());
  RunResult result = play(options, inputs, profile, results, log, line);
  const RunNames names{options.drawing.filename().string(), options.session.filename().string()};
  const auto [logText, logNote] = log.finish();
  try {
    // A full disk must not hide how the run ended: on failure the summary is tried once more, with the
    // failure as its ending.
    writeResults(results.partial(), result, names, inputs.session, {logText, logNote, profile.menu()}, line);
  } catch (const InputError& error) {
    result.ending = error.what();
    writeFile(results.partial() / "summary.json", summaryJson(result, names));
    throw;
  }
  // After the results have been written to `partial`: they show how far the run came. Earlier results stay in
  // place.
  if (result.failure) std::rethrow_exception(result.failure);
  keepMenuFile(options, inputs, results);
  std::vector<fs::path> finished = kTables;
  // A profile that the user named is elsewhere and is not replaced.
  if (!options.profile) finished.emplace_back("profile/Lumetrapad");
  results.putInPlace(finished);
  line.erase();

  // The path is printed last and on a line of its own, also with --quiet, so that scripts can take it.
  if (!options.isQuiet) printSummary(result, out);
  for (const std::string& problem : result.problems) err << "workbench: problem: " << problem << "\n";
  out << (options.out / "index.html").generic_string() << "\n";
  flushOutput(out);
  return result.isClean() ? kExitClean : kExitUnclean;
}

int printHelp(const HelpWanted& help, std::ostream& out, std::ostream& err) {
  try {
    out << help.text;
    flushOutput(out);
    return kExitClean;
  } catch (const InputError& error) {
    err << "workbench: " << error.what() << "\n";
    return kExitBadInput;
  }
}

}  // namespace

int runWorkbench(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  try {
    const Options options = parseOptions(arguments);
    if (const auto* const compareP = std::get_if<CompareOptions>(&options))
      return runCompare(*compareP, out, err);
    if (const auto* const liveP = std::get_if<LiveOptions>(&options)) return runLive(*liveP, out, err);
    return runReplay(std::get<ReplayOptions>(options), out, err);
  } catch (const HelpWanted& help) {
    return printHelp(help, out, err);
    // Not bad input: a run that the user ended has an exit status other than that of a usage error.
  } catch (const Interrupted& interrupted) {
    err << "workbench: " << interrupted.what() << "\n";
    return kExitUnclean;
  } catch (const std::exception& error) {
    err << "workbench: " << error.what() << "\n";
    return kExitBadInput;
  }
}

}  // namespace workbench
