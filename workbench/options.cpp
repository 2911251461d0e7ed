#include "workbench/options.h"

#include "workbench/input_error.h"
#include "workbench/platform/module_loader.h"
#include "workbench/text_input.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace workbench {
namespace {

namespace fs = std::filesystem;

// Ten seconds for one drawing call is beyond any slow host; the limit finds a value in the wrong unit.
constexpr long long kLongestFrameMs = 10000;
// Each moment adds its camera and changed shapes to the page; more would make it too large to open.
constexpr long long kMostMoments = 10000;
constexpr long long kHighestPort = 65535;
constexpr const char* kModuleName = "LMTRAutoCAD2013.arx";

/// As given on the command line. Numbers are parsed here, not by the library, so that every mistake gets the
/// same form of message.
struct RawOptions {
  std::string drawing, session, out, profile, menu, module, runA, runB;
  std::string frameMs = "16", frames = "60", date, port;
  std::vector<std::string> drawings;
};

long long number(const std::string& name, const std::string& text, long long highest) {
  const auto value = parseInteger(text);
  if (!value || *value < 1 || *value > highest)
    throw UsageError(name + ": expected a whole number, 1 to " + std::to_string(highest) + ", found " +
                     inQuotes(text));
  return *value;
}

/// Days from 1970-01-01 to a day of the Gregorian calendar: years begin in March, so leap days end them.
std::int64_t daysSince1970(long long year, long long month, long long day) {
  const long long years = month > 2 ? year : year - 1;
  const long long era = years / 400;
  const long long yearOfEra = years - era * 400;
  // 153 days are in five months from March on; the integer division yields the 30s and 31s in order.
  const long long dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  // 146097 days are in 400 years; 719468 are from 0000-03-01 to 1970-01-01.
  return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

long long daysOfMonth(long long year, long long month) {
  const long long next = month == 12 ? daysSince1970(year + 1, 1, 1) : daysSince1970(year, month + 1, 1);
  return next - daysSince1970(year, month, 1);
}

std::optional<std::int64_t> dayOf(const std::string& text) {
  if (text.empty()) return std::nullopt;
  const auto part = [&text](std::size_t at, std::size_t size) {
    // -1 is outside every range below, so a part that is no number gets the same message.
    return parseInteger(text.substr(at, size)).value_or(-1);
  };
  const bool isForm = text.size() == 10 && text[4] == '-' && text[7] == '-';
  const long long year = isForm ? part(0, 4) : 0, month = isForm ? part(5, 2) : 0,
                  day = isForm ? part(8, 2) : 0;
  if (year < 1970 || year > 2999 || month < 1 || month > 12 || day < 1 || day > daysOfMonth(year, month))
    throw UsageError("--date: expected a day, 1970-01-01 to 2999-12-31, found " + inQuotes(text));
  return daysSince1970(year, month, day);
}

std::optional<fs::path> optionalPath(const std::string& text) {
  // An empty path would mean the current folder, which nobody intends with --profile "".
  if (text.empty()) return std::nullopt;
  return fs::path(text);
}

std::string firstLine(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

ReplayOptions finishReplay(const RawOptions& raw, ReplayOptions options) {
  options.drawing = raw.drawing;
  options.session = raw.session;
  options.out = raw.out;
  options.profile = optionalPath(raw.profile);
  options.menu = optionalPath(raw.menu);
  options.module = raw.module.empty() ? defaultModule() : fs::path(raw.module);
  options.frameMs = static_cast<std::uint32_t>(number("--frame-ms", raw.frameMs, kLongestFrameMs));
  options.frames = static_cast<std::size_t>(number("--frames", raw.frames, kMostMoments));
  options.day = dayOf(raw.date);
  return options;
}

void addReplayOptions(CLI::App& replay, RawOptions& raw, ReplayOptions& options) {
  replay.add_option("--drawing", raw.drawing, "the drawing (DXF text file)")->required();
  replay.add_option("--session", raw.session, "what the device and the user do")->required();
  replay.add_option("--out", raw.out, "folder for the results, made when it is missing")->required();
  replay.add_option("--profile", raw.profile,
                    "the user's profile folder, kept from run to run [OUT/profile, new]");
  replay.add_option(
      "--menu", raw.menu,
      "menu file, copied into the profile, or the host's menus (FILE.cuix), exported by the exporter");
  replay.add_option("--frame-ms", raw.frameMs, "time that a drawing call takes [16]");
  replay.add_option("--frames", raw.frames, "moments that the report shows [60]");
  replay.add_option("--date", raw.date,
                    "day on which the run takes place, except in real time [that on which the drawing was "
                    "made, or 2013-01-01]");
  replay.add_option("--module", raw.module, "the module to load [the one built beside this program]");
  replay.add_flag("--realtime", options.isRealTime, "let time pass as it does, instead of at once");
  replay.add_flag("--quiet", options.isQuiet, "print the report's path only");
}

LiveOptions finishLive(const RawOptions& raw, LiveOptions options) {
  options.drawings.assign(raw.drawings.begin(), raw.drawings.end());
  options.menu = optionalPath(raw.menu);
  options.profile = optionalPath(raw.profile);
  options.out = raw.out.empty() ? fs::path("out") / "live" : fs::path(raw.out);
  options.module = raw.module.empty() ? defaultModule() : fs::path(raw.module);
  // Without the option the system chooses one.
  if (!raw.port.empty()) options.port = static_cast<std::uint16_t>(number("--port", raw.port, kHighestPort));
  return options;
}

void addLiveOptions(CLI::App& live, RawOptions& raw, LiveOptions& options) {
  live.add_option("--drawing", raw.drawings, "drawings (DXF text files), of which the first is shown")
      ->required();
  live.add_option("--menu", raw.menu, "menu file, copied into the profile");
  live.add_option("--profile", raw.profile, "the user's profile folder, kept from run to run [new]");
  live.add_option("--port", raw.port, "port of the page on this machine [any that is free]");
  live.add_option("--out", raw.out, "folder for sessions and reports, made when it is missing [out/live]");
  live.add_option("--module", raw.module, "the module to load [the one built beside this program]");
  live.add_flag("!--no-browser", options.isBrowserOpened, "print the address and open no browser");
}

void addCompareOptions(CLI::App& compare, RawOptions& raw) {
  compare.add_option("RUN_A", raw.runA, "folder that a replay has written")->required();
  compare.add_option("RUN_B", raw.runB, "another one, which is compared with it")->required();
  compare.add_option("--out", raw.out, "folder for the comparison, made when it is missing")->required();
}

bool isSubcommand(const CLI::App& app, const std::string& name) {
  const auto all = app.get_subcommands(nullptr);
  return std::any_of(all.begin(), all.end(),
                     [&name](const CLI::App* subcommand) { return subcommand->get_name() == name; });
}

/// The subcommands that there are, in a message for who has named none of them.
UsageError noSubcommand(const CLI::App& app, const std::string& found) {
  std::string names;
  for (const CLI::App* const subcommand : app.get_subcommands(nullptr)) names += " " + subcommand->get_name();
  return UsageError("command line: expected a subcommand, one of" + names + ", found " + found +
                    "; \"workbench --help\" describes them");
}

void parse(CLI::App& app, std::vector<std::string> arguments) {
  // The library would report the first argument that no option takes, whatever was meant as the subcommand.
  if (arguments.empty()) throw noSubcommand(app, "none");
  const std::string& first = arguments.front();
  if (first.substr(0, 1) != "-" && !isSubcommand(app, first)) throw noSubcommand(app, inQuotes(first));
  // The library takes a vector from its end.
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(arguments);
    // Thrown as ParseErrors, too, so they have to be caught first.
  } catch (const CLI::CallForVersion& version) {
    throw HelpWanted{version.what() + std::string("\n")};
  } catch (const CLI::CallForHelp&) {
    const auto parsed = app.get_subcommands();
    throw HelpWanted{parsed.empty() ? app.help() : parsed.front()->help()};
  } catch (const CLI::ParseError& error) {
    const auto parsed = app.get_subcommands();
    // Only options before the subcommand, which is missing.
    if (parsed.empty() && dynamic_cast<const CLI::RequiredError*>(&error) != nullptr)
      throw noSubcommand(app, "none");
    const std::string name = parsed.empty() ? "" : parsed.front()->get_name() + " ";
    // The library appends lines of help, but a message is one line.
    throw UsageError("command line: " + firstLine(error.what()) + "; \"workbench " + name +
                     "--help\" lists the options");
  }
}

}  // namespace

/// Beside the program, as it is shipped, or in the build folder's own place for it.
fs::path defaultModule() {
  fs::path beside = executableFolder() / kModuleName;
  if (fs::exists(beside)) return beside;
  // Not checked for existence: the loader's message then names the path that was expected.
  return (executableFolder() / ".." / "host" / kModuleName).lexically_normal();
}

Options parseOptions(std::vector<std::string> arguments) {
  RawOptions raw;
  ReplayOptions options;
  CLI::App app("Runs the AutoCAD module against a drawing and a recorded session.", "workbench");
  app.set_version_flag("--version", "workbench " WORKBENCH_VERSION);
  addReplayOptions(*app.add_subcommand("replay", "replay a session and write a report"), raw, options);
  CLI::App* const compare = app.add_subcommand("compare", "list the differences of two replays");
  addCompareOptions(*compare, raw);
  CLI::App* const live =
      app.add_subcommand("live", "take the cap in your hand: the module in real time, in the browser");
  LiveOptions liveOptions;
  addLiveOptions(*live, raw, liveOptions);
  app.require_subcommand(1);
  parse(app, std::move(arguments));
  if (compare->parsed()) return CompareOptions{raw.runA, raw.runB, raw.out};
  if (live->parsed()) return finishLive(raw, liveOptions);
  return finishReplay(raw, options);
}

void checkFiles(const ReplayOptions& options) {
  // Checked before anything is read or written: a run must not fail after minutes over a path that was wrong
  // from the start.
  const auto requireFile = [](const fs::path& file, const char* expected) {
    if (!fs::exists(file)) throw InputError({file.string()}, expected, "no such file");
    if (!fs::is_regular_file(file))
      throw InputError({file.string()}, expected,
                       fs::is_directory(file) ? "a folder" : "something other than a file");
  };
  requireFile(options.drawing, "a drawing (DXF text file)");
  requireFile(options.session, "a session");
  if (options.menu) requireFile(*options.menu, "a menu file");
  if (fs::exists(options.out) && !fs::is_directory(options.out))
    throw InputError({options.out.string()}, "a folder for the results", "a file");
  if (options.profile && fs::exists(*options.profile) && !fs::is_directory(*options.profile))
    throw InputError({options.profile->string()}, "a folder for the user's profile", "a file");
}

void checkFiles(const CompareOptions& options) {
  for (const fs::path& run : {options.runA, options.runB}) {
    const auto found = [&run] { return fs::exists(run) ? "a file" : "no such folder"; };
    if (!fs::is_directory(run))
      throw InputError({run.string()}, "a folder that a replay has written", found());
    // Its report would be replaced by the comparison's.
    if (fs::exists(options.out) && fs::equivalent(run, options.out))
      throw InputError({options.out.string()}, "another folder for the comparison", "that of a run");
  }
  if (fs::exists(options.out) && !fs::is_directory(options.out))
    throw InputError({options.out.string()}, "a folder for the comparison", "a file");
}

}  // namespace workbench
