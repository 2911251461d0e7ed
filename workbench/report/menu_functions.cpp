#include "workbench/report/menu_functions.h"

#include <optional>
#include <string>

namespace workbench {
namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Takes a line off the text, without its LF or CR LF.
std::string_view takeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

/// The text after the key and its separators.
std::string_view valueOf(std::string_view line) {
  line = trimmed(line);
  // The module accepts "=" and TAB, also several in a row, and ends a value at "#".
  const std::size_t separator = line.find_first_of("=\t");
  if (separator == std::string_view::npos) return {};
  const std::size_t value = line.find_first_not_of("=\t", separator);
  if (value == std::string_view::npos) return {};
  return trimmed(line.substr(value, line.find_first_of("#\r", value) - value));
}

std::optional<ReportFunction> functionOf(std::string_view value) {
  const std::size_t end = value.find('}');
  // An entry without a macro gets no number: those after it move up.
  if (end == std::string_view::npos || end + 1 == value.size()) return std::nullopt;
  const std::string_view label = value.substr(0, end);
  const std::string_view macro = value.substr(end + 1);
  return ReportFunction{std::string(label.substr(label.find('{') + 1)),
                        // The help text after "|" is no part of the macro.
                        std::string(macro.substr(0, macro.find('|')))};
}

bool isHeader(std::string_view line, std::string_view section) {
  line = trimmed(line);
  const std::size_t end = line.find(']');
  return line.substr(0, 1) == "[" && end != std::string_view::npos && line.substr(1, end - 1) == section;
}

/// A blank line, a header, an indented comment and a line without a key end a section's parameters.
bool isParameter(std::string_view line) {
  line = trimmed(line);
  return !line.empty() && line.find_first_of("[#=") != 0;
}

}  // namespace

std::vector<ReportFunction> menuFunctions(std::string_view menuFile) {
  // Only the first section of this name counts.
  while (!menuFile.empty() && !isHeader(takeLine(menuFile), "MenuBar")) continue;
  std::vector<ReportFunction> functions;
  while (!menuFile.empty()) {
    const std::string_view line = takeLine(menuFile);
    if (line.substr(0, 1) == "#") continue;
    if (!isParameter(line)) break;
    if (auto function = functionOf(valueOf(line))) functions.push_back(std::move(*function));
  }
  return functions;
}

}  // namespace workbench
