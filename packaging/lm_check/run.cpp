#include "packaging/lm_check/run.h"

#include "packaging/lm_check/log_check.h"
#include "packaging/lm_check/menu_check.h"
#include "packaging/lm_check/platform.h"
#include "packaging/lm_check/profile.h"
#include "packaging/lm_check/settings_check.h"
#include "packaging/lm_check/settings_repair.h"
#include "packaging/version.h"
#include "util/native_file.h"
#include "util/util.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <ostream>

namespace {

constexpr const char* kUsage =
    "usage: lm_check [--profile FOLDER] [--json] [--fix]\n"
    "Says what would keep the cap from working in AutoCAD, one finding a line, and what to do.\n"
    "  --profile FOLDER  another profile (a copy of what %USERPROFILE% has) instead of this machine\n"
    "  --json            for programs\n"
    "  --fix             writes a repaired settings file beside the old one: autocad_addin.repaired.ini\n"
    "Exit status: 0 nothing found, 1 findings, 2 could not check.\n";

struct Options {
  std::optional<std::string> profile;
  bool isJson = false;
  bool isFix = false;
  bool isHelp = false;
};

/// None for an unknown argument, or for "--profile" without a folder.
std::optional<Options> optionsOf(const std::vector<std::string>& arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] == "--json")
      options.isJson = true;
    else if (arguments[i] == "--fix")
      options.isFix = true;
    else if (arguments[i] == "--help")
      options.isHelp = true;
    else if (arguments[i] == "--profile" && i + 1 < arguments.size())
      options.profile = arguments[++i];
    else
      return std::nullopt;
  }
  return options;
}

struct Report {
  Findings findings;
  std::string repairedFile;  ///< empty when none was written
  std::vector<std::string> changes;
  std::string problem;  ///< why something could not be done; empty when all could
};

void add(Findings& findings, const Findings& more) {
  findings.insert(findings.end(), more.begin(), more.end());
}

Findings checkProfile(const Profile& profile, ProfileKind kind) {
  if (!Util::folderExists(profile.applicationsFolder))
    return {{"driver.folder",
             "Driver: its folder '" + profile.applicationsFolder +
                 "' is missing, and the module can keep neither settings nor menu file; start the "
                 "driver once as this user."}};
  Findings findings = checkSettings(profile);
  // By the values in force and not those of the file: a defective file is reset by the module.
  add(findings, checkLog(profile, EffectiveSettings(profile.settingsFile), kind));
  add(findings, checkMenu(profile.menuFile));
  return findings;
}

void repair(const Profile& profile, Report& report) {
  const std::optional<RepairedSettings> repaired = repairSettings(profile.settingsFile);
  if (!repaired) return;
  // Beside the original, which AutoCAD overwrites when it ends.
  if (!replaceFile(profile.repairedFile, repaired->text)) {
    report.problem = "'" + profile.repairedFile + "' could not be written";
    return;
  }
  report.repairedFile = profile.repairedFile;
  report.changes = repaired->changes;
}

void printText(const Report& report, std::ostream& output) {
  for (const Finding& finding : report.findings) output << finding.text << "\n";
  if (report.findings.empty()) output << "Nothing found.\n";
  if (report.repairedFile.empty()) return;
  for (const std::string& change : report.changes) output << "Repair: " << change << "\n";
  output << "Repair: written to '" << report.repairedFile
         << "'; close AutoCAD and put it in the place of autocad_addin.ini.\n";
}

void printJson(const Report& report, std::ostream& output) {
  // Ordered, so that the version comes first.
  nlohmann::ordered_json json;
  json["version"] = kPackageVersion;
  json["findings"] = nlohmann::ordered_json::array();
  for (const Finding& finding : report.findings)
    json["findings"].push_back({{"id", finding.id}, {"text", toUtf8(finding.text)}});
  if (!report.repairedFile.empty()) {
    json["repaired"] = toUtf8(report.repairedFile);
    json["changes"] = nlohmann::ordered_json::array();
    for (const std::string& change : report.changes) json["changes"].push_back(toUtf8(change));
  }
  // A copy of a profile may hold letters of another code page.
  output << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
}

int check(const Options& options, std::ostream& output, std::ostream& errors) {
  const ProfileKind kind = options.profile ? ProfileKind::kCopy : ProfileKind::kOwn;
  const std::string folder = options.profile.value_or(Util::getUserProfileDir());
  if (folder.empty()) {
    errors << "lm_check: the environment has no USERPROFILE, without which the module finds nothing either; "
              "name the "
              "profile with --profile\n";
    return kCouldNotCheck;
  }
  if (!Util::folderExists(folder)) {
    errors << "lm_check: " << folder << ": expected a user's profile folder, found no folder\n";
    return kCouldNotCheck;
  }
  const Profile profile(folder);
  Report report;
  // A copy of a profile may come from another machine, of which this one shows nothing.
  if (kind == ProfileKind::kOwn) report.findings = machineFindings();
  add(report.findings, checkProfile(profile, kind));
  // After the check, so that the findings are those of the file as it was.
  if (options.isFix) repair(profile, report);
  options.isJson ? printJson(report, output) : printText(report, output);
  // A failed repair counts more than the findings: a script must not take it for done.
  if (!report.problem.empty()) {
    errors << "lm_check: " << report.problem << "\n";
    return kCouldNotCheck;
  }
  return report.findings.empty() ? kNothingFound : kFindings;
}

}  // namespace

int runCheck(const std::vector<std::string>& arguments, std::ostream& output, std::ostream& errors) {
  const std::optional<Options> options = optionsOf(arguments);
  if (options && options->isHelp) {
    output << kUsage;
    return kNothingFound;
  }
  if (options) return check(*options, output, errors);
  errors << kUsage;
  return kCouldNotCheck;
}
