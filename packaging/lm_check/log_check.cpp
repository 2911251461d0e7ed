#include "packaging/lm_check/log_check.h"

#include "config/line_reader.h"
#include "packaging/lm_check/settings_check.h"
#include "util/native_file.h"
#include "util/util.h"

#include <map>
#include <string_view>
#include <utility>

namespace {

/// What an error of the log means to a user. The first row whose text occurs in the error counts, so special
/// texts come before general ones: "Error " is the last row. The parts are those of the module's fixed texts.
struct Explanation {
  std::string_view part;
  std::string_view meaning;
};
constexpr Explanation kExplanations[] = {
    {"Error in lmConnect()!", "the driver was not running, or refused the connection; start the driver"},
    {"Error in lmGetDevNum()!", "the driver stopped answering; start it again"},
    {"Error in lmGetDevInfo()!", "the driver did not describe its device; plug the device in again"},
    {"Error in lmGetAdvancedSettings()!",
     "the driver did not give its advanced settings, so that the default rotation mode was taken; restart "
     "the driver"},
    {"Error in lmDis", "the connection was lost before it was closed; nothing is to be done"},
    {"Error creating reading thread!",
     "the module could not start a thread and does not connect anew; restart AutoCAD"},
    {"Error reading settings file!",
     "the settings file was incomplete, and the module put its defaults in place; set your values again"},
    {"Writing default settings file",
     "the settings file could not be written; give the user the right to write in the folder Applications"},
    {"Section '", "this section was missing in the settings file, which the module then overwrote"},
    {"Parameter '", "this key was missing in the settings file, which the module then overwrote"},
    {"Setting '", "the value cannot be used; correct it in the settings file"},
    {"USERPROFILE", "the environment has no USERPROFILE, so that the module found neither settings nor menu"},
    {"MenuScriber does not exist",
     "the menu exporter is not beside the module, so that no menu file is written; repair the installation"},
    {"Error: Invalid path", "the module's own path has no folder, so that the menu exporter was not found"},
    {"keyEvent (", "a key is set to a menu item that the menu file does not have; choose its item anew"},
    {"Unknown special command",
     "the driver sent a function that this version does not know; update the plug-in"},
    {"couldn't be removed!", "the old backup of the log could not be deleted; close what shows it"},
    {"Opening of stream of",
     "the log could not be opened again after its backup; look at the rights in its folder"},
    {"Error SetTimer()",
     "Windows gave the module no timer, without which the cap does nothing; restart AutoCAD"},
    {"could not be retrieved!", "AutoCAD did not give the module its view; try another viewport or drawing"},
    {"Error ",
     "an operation failed in AutoCAD and was passed over; send the log to support if it happens often"},
};
constexpr std::string_view kOther = "no explanation is known; send the log to support";
// Fixed parts of the log's format: the header that each opening writes, and the columns of a line.
constexpr std::string_view kHeader = "Lumetra logfile '";
constexpr std::string_view kErrorLevel = "|ERR|";
constexpr std::size_t kLevelColumn = 12;
constexpr std::size_t kColumns = 6;

std::string_view meaningOf(std::string_view error) {
  for (const Explanation& explanation : kExplanations)
    if (error.find(explanation.part) != std::string_view::npos) return explanation.meaning;
  return kOther;
}

/// The text of an error's line, after its columns; empty for any other line.
std::string_view errorIn(std::string_view line) {
  if (line.size() <= kLevelColumn || line.substr(kLevelColumn, kErrorLevel.size()) != kErrorLevel) return {};
  std::size_t start = 0;
  for (std::size_t column = 0; column < kColumns; ++column) {
    // By bars and not by columns: a long thread id or line number moves what follows.
    const std::size_t bar = line.find('|', start);
    if (bar == std::string_view::npos) return {};
    start = bar + 1;
  }
  line.remove_prefix(start);
  // The log writes one blank before the text; more belong to the text.
  return line.empty() || line.front() != ' ' ? line : line.substr(1);
}

/// Each error since the log was opened last, with how often it is there, in the order of its first line.
std::vector<std::pair<std::string, int>> lastErrors(const std::string& path) {
  std::vector<std::pair<std::string, int>> errors;
  LineReader reader;
  if (!reader.open(path)) return errors;
  while (!reader.isAtEnd()) {
    const std::string_view line = reader.next();
    // Only the errors since the last opening count: the causes of older ones may be gone.
    if (line.substr(0, kHeader.size()) == kHeader) errors.clear();
    const std::string_view error = errorIn(line);
    if (error.empty()) continue;
    // A linear search keeps the order of the log; few errors differ.
    auto known = errors.begin();
    while (known != errors.end() && known->first != error) ++known;
    if (known == errors.end())
      errors.emplace_back(error, 1);
    else
      ++known->second;
  }
  return errors;
}

std::string times(int count) {
  return count == 1 ? "once" : std::to_string(count) + " times";
}

/// The log's full path, and whether its settings name it so.
struct Place {
  std::string folder;
  std::string path;
  bool isFull = false;
};

Place placeOf(const Profile& profile, const std::string& name, ProfileKind kind) {
  // The name that the log itself takes for an empty one.
  const std::string file = name.empty() ? "forgot_to_name_this_file_log.txt" : name;
  const std::size_t bar = file.rfind('\\');
  // Any backslash makes it a path, by the same rule as in the log.
  if (bar == std::string::npos) return {profile.settingsFolder, profile.settingsFolder + "\\" + file, false};
  // A copy of a profile has the log beside the rest, if it has it.
  if (kind == ProfileKind::kCopy) return {"", profile.settingsFolder + file.substr(bar), true};
  return {file.substr(0, bar), file, true};
}

/// Opens the file as the log does, and removes it again if it did not exist before.
bool isWritable(const std::string& path) {
  const bool wasThere = Util::fileExists(path);
  NativeFile file;
  const bool isOpen = file.openForAppending(path);
  file.close();
  if (isOpen && !wasThere) removeFile(path);
  return isOpen;
}

void checkSwitches(const EffectiveSettings& settings, Findings& findings) {
  const std::string& only = settings.text("fileToLog");
  if (!only.empty())
    findings.push_back({"log.one-file", "Log: 'fileToLog = " + only +
                                            "' keeps all entries out but those of that source "
                                            "file, errors too; leave its value empty."});
  // The levels do not matter while no file is written.
  if (!settings.isOn("logToFile")) {
    findings.push_back({"log.off", "Log: 'logToFile' is off, so that no error is recorded; write 'on'."});
    return;
  }
  // The levels that write lines in every movement of the cap.
  for (const char* const levelP : {"trace", "debug", "tmp"})
    if (settings.isOn(levelP))
      findings.push_back(
          {"log.fills", std::string("Log: '") + levelP +
                            "' is on and writes lines at every movement of the cap, so that older "
                            "entries are soon lost; switch it off unless support asked for it."});
}

void checkPlace(const Place& place, ProfileKind kind, Findings& findings) {
  // The full path is one of the machine that the copy comes from.
  if (kind == ProfileKind::kCopy && place.isFull) return;
  if (!Util::folderExists(place.folder))
    findings.push_back(
        {"log.folder", "Log: its folder '" + place.folder +
                           "' is missing, and the module does not make it; make it, or write another "
                           "'logFile'."});
  // A copy is not written to, not even for a test.
  else if (kind == ProfileKind::kOwn && !isWritable(place.path))
    findings.push_back({"log.not-writable", "Log: '" + place.path +
                                                "' cannot be written, so that nothing is recorded; "
                                                "give the user the right to write there."});
}

}  // namespace

Findings checkLog(const Profile& profile, const EffectiveSettings& settings, ProfileKind kind) {
  Findings findings;
  checkSwitches(settings, findings);
  const Place place = placeOf(profile, settings.text("logFile"), kind);
  if (settings.isOn("logToFile")) checkPlace(place, kind, findings);
  // Also when the log is off now: an older file may explain what the user has seen.
  for (const auto& [error, count] : lastErrors(place.path))
    findings.push_back({"log.error", "Log: '" + error + "' " + times(count) + " since it was opened last: " +
                                         std::string(meaningOf(error)) + "."});
  return findings;
}
