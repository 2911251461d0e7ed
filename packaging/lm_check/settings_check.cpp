#include "packaging/lm_check/settings_check.h"

#include "config/cnfg.h"
#include "packaging/lm_check/file_lines.h"
#include "util/util.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace {

constexpr std::string_view kLogSection = "LOGGING";
// What the device reports of a cap that is pushed as far as it goes.
constexpr std::int32_t kFullDeflection = 350;

struct Section {
  std::string_view name;
  const Setting* beginP;
  const Setting* endP;
};
constexpr std::array<Section, 2> kSections = {
    {{kProgramSection, std::begin(kProgramSettings), std::end(kProgramSettings)},
     {kLogSection, std::begin(kLogSettings), std::end(kLogSettings)}}};

/// Between quotes, on one line whatever it holds.
std::string quoted(std::string_view text) {
  std::string result(CnfgLine::trimmed(text));
  std::replace_if(
      result.begin(), result.end(), [](unsigned char c) { return std::iscntrl(c) != 0; }, ' ');
  return "'" + result + "'";
}

std::string lowered(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return result;
}

const Section* sectionNamed(std::string_view name) {
  const auto* const foundP = std::find_if(kSections.begin(), kSections.end(),
                                          [name](const Section& section) { return section.name == name; });
  return foundP == kSections.end() ? nullptr : foundP;
}

const Setting* settingNamed(const Section& section, std::string_view key) {
  const auto* const foundP = std::find_if(section.beginP, section.endP,
                                          [key](const Setting& setting) { return setting.key == key; });
  return foundP == section.endP ? nullptr : foundP;
}

/// The setting that the key was meant to be: the same but for capitals.
std::string meantKey(const Section& section, std::string_view key) {
  for (const Setting* settingP = section.beginP; settingP != section.endP; ++settingP)
    if (lowered(settingP->key) == lowered(key)) return std::string(settingP->key);
  return {};
}

/// One run over a settings file.
class Check {
 public:
  Check(const Profile& profile, FileText text) : mProfile(profile), mText(std::move(text)) {}

  Findings run() {
    checkEncoding();
    // The module reads nothing from a file of 16-bit characters, so findings about its lines would mislead.
    if (mText.encoding != Encoding::kUtf16) {
      for (const FileLine& line : mText.lines) checkLine(line);
      for (const Section& section : kSections) checkSection(section);
    }
    checkReset();
    return std::move(mFindings);
  }

 private:
  void add(const char* idP, const std::string& text) {
    mFindings.push_back({std::string("settings.") + idP, "Settings: " + text});
  }
  static std::string at(const FileLine& line) { return "line " + std::to_string(line.number) + ": "; }

  void checkEncoding() {
    if (mText.encoding == Encoding::kUtf16)
      add("utf-16",
          "the file is stored as Unicode (UTF-16), of which the module can read nothing; store it as ANSI.");
    if (mText.encoding == Encoding::kUtf8Mark)
      add("utf-8-mark",
          "line 1: the file begins with an invisible byte order mark, with which the module cannot "
          "read that line; store it as ANSI.");
  }

  void checkLine(const FileLine& line) {
    switch (line.kind) {
      case CnfgLine::Kind::kBlank:
      case CnfgLine::Kind::kComment:
        break;
      case CnfgLine::Kind::kBrokenHeader:
        add("broken-header", at(line) + quoted(line.text) +
                                 " has no ']', so that the module sees no section "
                                 "there; close the bracket.");
        break;
      case CnfgLine::Kind::kHeader:
        checkHeader(line);
        break;
      case CnfgLine::Kind::kParameter:
        checkParameter(line);
        break;
    }
    // For every kind: whatever is not a parameter may end the section.
    checkBreak(line);
  }

  void checkHeader(const FileLine& line) {
    const bool isFirst = std::none_of(mText.lines.begin(), mText.lines.end(), [&line](const FileLine& other) {
      return other.kind == CnfgLine::Kind::kHeader && other.number < line.number &&
             other.section == line.section;
    });
    if (sectionNamed(line.section) == nullptr)
      add("unknown-section",
          at(line) + "the section " + quoted("[" + line.section + "]") +
              " is none that the module knows; it reads [PROGRAM] and [LOGGING], written exactly "
              "so.");
    else if (!isFirst)
      add("second-section", at(line) + "the section " + quoted("[" + line.section + "]") +
                                " is there before; the module reads the first one only. Put both together.");
  }

  /// A line that hides parameters.
  void checkBreak(const FileLine& line) {
    // Outside the two sections the module reads nothing, so nothing can be hidden.
    if (!line.endsParameters || sectionNamed(line.section) == nullptr) return;
    // It has its own finding.
    if (line.kind == CnfgLine::Kind::kBrokenHeader) return;
    std::string hidden;
    for (const FileLine& later : mText.lines) {
      if (later.number <= line.number) continue;
      if (later.kind == CnfgLine::Kind::kHeader || later.kind == CnfgLine::Kind::kBrokenHeader) break;
      if (later.kind == CnfgLine::Kind::kParameter && !later.key.empty())
        hidden += (hidden.empty() ? "" : ", ") + later.key;
    }
    // A break with nothing after it is harmless: most files have one between their sections.
    if (hidden.empty()) return;
    const char* whatP = line.kind == CnfgLine::Kind::kBlank ? "an empty line"
                        : line.kind == CnfgLine::Kind::kComment
                            ? "a comment that does not begin in the first column"
                            : "a line without a key";
    add("hidden-keys", at(line) + whatP + " ends the section " + quoted("[" + line.section + "]") +
                           " for the module, which does not read what follows in it (" + hidden +
                           "); remove the line.");
  }

  void checkParameter(const FileLine& line) {
    if (line.key.empty()) {
      add("no-key", at(line) + quoted(line.text) + " has no key before the '='; remove the line.");
      return;
    }
    const Section* const sectionP = sectionNamed(line.section);
    if (line.section.empty()) {
      // The mark makes the first line a parameter, which has its own finding.
      if (mText.encoding != Encoding::kUtf8Mark || line.number > 1)
        add("no-section", at(line) + quoted(line.key) +
                              " is in no section, so that the module does not read it; "
                              "move it below its section's header.");
      return;
    }
    // The header of an unknown section has its own finding.
    if (sectionP == nullptr) return;
    if (settingNamed(*sectionP, line.key) != nullptr)
      checkRepetition(line);
    else
      checkUnknownKey(*sectionP, line);
  }

  void checkRepetition(const FileLine& line) {
    for (const FileLine& other : mText.lines)
      if (other.number < line.number && other.section == line.section && other.key == line.key &&
          line.isRead) {
        add("second-key", at(line) + quoted(line.key) + " is there before, in line " +
                              std::to_string(other.number) +
                              "; the module reads the first one only. Remove one of them.");
        return;
      }
  }

  void checkUnknownKey(const Section& section, const FileLine& line) {
    // Without a separator the whole line is the key, and no spelling of it could match.
    if (!line.hasSeparator) {
      add("no-separator", at(line) + quoted(line.text) + " has no '='; write a key, '=' and a value.");
      return;
    }
    const std::string meant = meantKey(section, line.key);
    const std::string what =
        at(line) + "the key " + quoted(line.key) + " is unknown in " + quoted("[" + line.section + "]");
    // The spelling is named only when capitals are the one difference; a guess would mislead.
    if (!meant.empty())
      add("unknown-key", what + "; write it " + quoted(meant) + ".");
    else
      add("unknown-key",
          what +
              "; the module passes it over, and loses it when it writes the file. Remove it, or "
              "correct its spelling.");
  }

  void checkSection(const Section& section) {
    for (const Setting* settingP = section.beginP; settingP != section.endP; ++settingP) {
      // The module's own reader: what it does not find is missing, whatever the lines show.
      Cnfg reader;
      std::string text;
      if (reader.open(mProfile.settingsFile) == Cnfg::kOk &&
          reader.readParameter(settingP->key, text, section.name) == Cnfg::kOk)
        checkValue(section, *settingP, text);
      else
        addMissing(section, *settingP);
    }
  }

  void addMissing(const Section& section, const Setting& setting) {
    mIsReset = true;
    add("missing-key", "the key " + quoted(setting.key) + " of the section " +
                           quoted("[" + std::string(section.name) + "]") +
                           " is missing, or the module cannot reach it; "
                           "its default is " +
                           quoted(defaultText(setting)) + ".");
  }

  /// Of the line that the value comes from.
  std::string place(const Section& section, const Setting& setting) const {
    for (const FileLine& line : mText.lines)
      if (line.isRead && line.section == section.name && line.key == setting.key) return at(line);
    return {};
  }

  void checkValue(const Section& section, const Setting& setting, const std::string& text) {
    const std::string what = place(section, setting) + quoted(std::string(setting.key) + " = " + text);
    if (std::holds_alternative<std::int32_t>(setting.defaultValue))
      checkNumber(setting, text, what);
    else if (std::holds_alternative<bool>(setting.defaultValue))
      checkSwitch(setting, text, what);
    else if (setting.key == "logFile" && text.empty())
      add("log-file",
          what + " names no file; the log goes to forgot_to_name_this_file_log.txt. Write a name.");
  }

  void checkNumber(const Setting& setting, const std::string& text, const std::string& what) {
    std::int32_t number = 0;
    readSetting(number, text);
    // What reads back differently was cut, limited or not a number; a plus sign is harmless.
    if (settingText(number) != text && "+" + settingText(number) != text)
      add("no-number", what + " is not a whole number that the module can hold; it takes " +
                           settingText(number) + ". Write a number such as " + defaultText(setting) + ".");
    if (!isUsable(setting.usableNumbers, number)) {
      const bool isSize = setting.usableNumbers == UsableNumbers::kPositive;
      add("out-of-range", what +
                              (isSize ? std::string(": with such a size every entry begins a new log file")
                                      : " cannot be used; the module takes " + defaultText(setting)) +
                              ". Write " +
                              (setting.usableNumbers == UsableNumbers::kNotZero       ? "any number but 0"
                               : setting.usableNumbers == UsableNumbers::kNotNegative ? "0 or more"
                                                                                      : "1 or more") +
                              ".");
      return;
    }
    checkEffect(setting, number, what);
  }

  /// Numbers that are allowed and keep the cap from moving anything.
  void checkEffect(const Setting& setting, std::int32_t number, const std::string& what) {
    // The loop of passes does not run at all with 0, so keys are not served either.
    if (setting.key == "maxContMoveTime" && number == 0)
      add("cap-off", what + " switches cap and keys off; write " + defaultText(setting) + ".");
    if (setting.key == "minThreshold" && number >= kFullDeflection)
      add("cap-off",
          what + " takes every movement of the cap for none: pushed as far as it goes it reports about " +
              std::to_string(kFullDeflection) + ". Write " + defaultText(setting) + ".");
    // Allowed, so it may be on purpose: the finding says what comes of it.
    if (number < 0 && setting.usableNumbers == UsableNumbers::kNotZero)
      add("reversed", what + " turns the directions of the cap round; write " + settingText(-number) +
                          " unless that is wanted.");
  }

  void checkSwitch(const Setting& setting, const std::string& text, const std::string& what) {
    bool isOn = false;
    readSetting(isOn, text);
    if (settingText(isOn) != text)
      add("no-switch", what + " is neither 'on' nor 'off' in small letters; the module takes it for " +
                           quoted(settingText(isOn)) + ". Write one of them.");
    if (setting.key == "useInt3dIntrfce" && isOn)
      add("cap-off", what +
                         " leaves the cap to another plug-in, so that this one serves the keys only; write "
                         "'off' unless that is wanted.");
  }

  void checkReset() {
    // No key can be read from such a file, and its lines were not checked.
    if (mText.encoding == Encoding::kUtf16) mIsReset = true;
    if (mIsReset)
      add("reset",
          "the module would take none of the values of this file, work with its defaults and overwrite it "
          "with them when AutoCAD starts; put a repaired file in its place first (lm_check --fix writes "
          "one).");
  }

  const Profile& mProfile;
  FileText mText;
  Findings mFindings;
  bool mIsReset = false;
};

}  // namespace

EffectiveSettings::EffectiveSettings(const std::string& path) {
  Cnfg reader;
  const bool isThere = reader.open(path) == Cnfg::kOk;
  for (const Section& section : kSections)
    for (const Setting* settingP = section.beginP; settingP != section.endP; ++settingP) {
      std::string text;
      if (isThere && reader.readParameter(settingP->key, text, section.name) != Cnfg::kOk) mIsReset = true;
      // Without a file the module begins with its defaults, and nothing is lost by that.
      mTexts[std::string(settingP->key)] = isThere ? text : defaultText(*settingP);
    }
  // One missing key resets every value, so the values read before count no more.
  if (!mIsReset) return;
  for (const Section& section : kSections)
    for (const Setting* settingP = section.beginP; settingP != section.endP; ++settingP)
      mTexts[std::string(settingP->key)] = defaultText(*settingP);
}

bool EffectiveSettings::isOn(std::string_view key) const {
  bool isOn = false;
  readSetting(isOn, text(key));
  return isOn;
}

std::int32_t EffectiveSettings::number(std::string_view key) const {
  std::int32_t number = 0;
  readSetting(number, text(key));
  return number;
}

Findings checkSettings(const Profile& profile) {
  std::optional<FileText> text = readFileText(profile.settingsFile);
  if (text) return Check(profile, std::move(*text)).run();
  // Something of that name is there, and the module would not get at it either.
  if (Util::folderExists(profile.settingsFile) || Util::isFileLocked(profile.settingsFile))
    return {{"settings.unreadable",
             "Settings: '" + profile.settingsFile +
                 "' cannot be opened, so that the module works with its defaults; give the user "
                 "the right to read and write it."}};
  return {{"settings.missing",
           "Settings: there is no file '" + profile.settingsFile +
               "', which the module writes when it is loaded for the first time. Start AutoCAD; if "
               "the file is still missing then, the module is not loaded."}};
}
