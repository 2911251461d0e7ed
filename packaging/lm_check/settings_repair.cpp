#include "packaging/lm_check/settings_repair.h"

#include "common_sources/settings_list.h"
#include "packaging/lm_check/file_lines.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace {

bool isSameButForCapitals(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

bool isSpace(char c) {
  // A colon, too: users who know other formats write "key: value".
  return c == ' ' || c == '\t' || c == ':';
}

/// A parameter without '=': the first word is the key, what follows the value, up to a comment.
FileLine splitAtBlank(FileLine line) {
  const auto keyEnd = std::find_if(line.key.begin(), line.key.end(), isSpace);
  const auto valueBegin = std::find_if_not(keyEnd, line.key.end(), isSpace);
  // The reader has found no separator and taken the comment for a part of the key.
  line.value.assign(valueBegin, std::find(valueBegin, line.key.end(), CnfgLine::kComment));
  line.value = CnfgLine::trimmed(line.value);
  line.key.erase(keyEnd, line.key.end());
  return line;
}

std::vector<FileLine> parametersOf(const FileText& text) {
  std::vector<FileLine> parameters;
  for (const FileLine& line : text.lines)
    if (line.kind == CnfgLine::Kind::kParameter)
      parameters.push_back(line.hasSeparator ? line : splitAtBlank(line));
  return parameters;
}

/// The line to take the setting's value from: the first of the best with its key. What the module reads is
/// the first in its section, too.
const FileLine* lineOf(const std::vector<FileLine>& lines, std::string_view section, std::string_view key) {
  const auto rank = [&](const FileLine& line) {
    if (!isSameButForCapitals(line.key, key)) return 0;
    if (line.key != key) return 1;
    // The exact key in another section is better than one with other capitals in the right section.
    return line.section == section ? 3 : 2;
  };
  const FileLine* bestP = nullptr;
  for (const FileLine& line : lines)
    // Greater and not equal: the first line of a rank stays.
    if (rank(line) > (bestP == nullptr ? 0 : rank(*bestP))) bestP = &line;
  return bestP;
}

/// A switch in other words; none for a text that says neither.
std::optional<bool> switchMeant(std::string_view text) {
  for (const std::string_view on : {"on", "true", "yes", "1"})
    if (isSameButForCapitals(text, on)) return true;
  for (const std::string_view off : {"off", "false", "no", "0"})
    if (isSameButForCapitals(text, off)) return false;
  return std::nullopt;
}

bool beginsWithNumber(const std::string& text) {
  char* endP = nullptr;
  std::strtoll(text.c_str(), &endP, 10);
  return endP != text.c_str();
}

/// The value as the repaired file has it; none when the text gives none that the module can use.
std::optional<std::string> usableText(const Setting& setting, const std::string& text) {
  if (std::holds_alternative<const char*>(setting.defaultValue)) {
    // Without a name the log would go to a file that nobody looks for.
    if (setting.key == "logFile" && text.empty()) return std::nullopt;
    return text;
  }
  if (std::holds_alternative<bool>(setting.defaultValue)) {
    bool isOn = false;
    readSetting(isOn, text);
    // An empty switch would read as "off", which nobody has chosen.
    if (text.empty()) return std::nullopt;
    return settingText(switchMeant(text).value_or(isOn));
  }
  std::int32_t number = 0;
  readSetting(number, text);
  if (!beginsWithNumber(text) || !isUsable(setting.usableNumbers, number)) return std::nullopt;
  return settingText(number);
}

class Repair {
 public:
  explicit Repair(const FileText& text) : mLines(parametersOf(text)) {}

  RepairedSettings run() {
    // The layout is that of Settings::fileText(): the module must find every key again.
    mResult.text = std::string(kSettingsFileTitle) + "\n\n";
    addSection(kProgramSection, std::begin(kProgramSettings), std::end(kProgramSettings));
    mResult.text += "\n";
    addSection("LOGGING", std::begin(kLogSettings), std::end(kLogSettings));
    return std::move(mResult);
  }

 private:
  void addSection(std::string_view name, const Setting* beginP, const Setting* endP) {
    mResult.text.append("[").append(name).append("]\n");
    for (const Setting* settingP = beginP; settingP != endP; ++settingP)
      mResult.text += settingLine(*settingP, valueOf(name, *settingP));
  }

  std::string valueOf(std::string_view section, const Setting& setting) {
    const FileLine* const lineP = lineOf(mLines, section, setting.key);
    const std::string key(setting.key);
    if (lineP == nullptr) {
      mResult.changes.push_back("'" + key + "' was missing and is now '" + defaultText(setting) + "'.");
      return defaultText(setting);
    }
    const std::string value = usableText(setting, lineP->value).value_or(defaultText(setting));
    // Each change is listed, because the user has to judge it.
    if (value != lineP->value)
      mResult.changes.push_back("'" + key + "' was '" + lineP->value + "' in line " +
                                std::to_string(lineP->number) + " and is now '" + value + "'.");
    return value;
  }

  std::vector<FileLine> mLines;
  RepairedSettings mResult;
};

}  // namespace

std::optional<RepairedSettings> repairSettings(const std::string& path) {
  const std::optional<FileText> text = readFileText(path);
  if (!text) return std::nullopt;
  return Repair(*text).run();
}
