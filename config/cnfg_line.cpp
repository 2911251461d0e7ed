#include "config/cnfg_line.h"

#include <cstddef>
#include <cstring>

namespace {

constexpr std::size_t kNone = std::string_view::npos;

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}
bool isSeparator(char c) {
  return c == '=' || c == '\t';
}

/// Index of the first character from `start` on for which `isEnd` holds; the size of the text if none does.
template <typename IsEnd>
std::size_t scan(std::string_view text, std::size_t start, IsEnd isEnd) {
  while (start < text.size() && !isEnd(text[start])) ++start;
  return start;
}

std::size_t skipBlanks(std::string_view line) {
  // Blanks and TABs only: a CR is a character like any other and begins a parameter.
  return scan(line, 0, [](char c) { return !isBlank(c); });
}

/// Cuts `text` before the first `end`.
std::string_view before(std::string_view text, char end) {
  return text.substr(0, text.find(end));
}

std::string_view headerSection(std::string_view fromBracket) {
  const std::size_t end = fromBracket.find(']');
  // No trimming: "[ A ]" has the name " A ".
  return end == kNone ? std::string_view() : fromBracket.substr(1, end - 1);
}

CnfgLine splitHeader(std::string_view leading, std::string_view rest) {
  CnfgLine result;
  const std::size_t end = rest.find(']');
  // Without a "]" the line is neither a header nor a parameter, so it ends the parameters of its section.
  result.kind = end == kNone ? CnfgLine::Kind::kBrokenHeader : CnfgLine::Kind::kHeader;
  if (end == kNone) return result;
  result.leading = leading;
  result.section = headerSection(rest);
  // Text after the "]" is ignored, with or without a "#".
  result.trailing = rest.substr(end + 1);
  return result;
}

CnfgLine splitParameter(std::string_view leading, std::string_view rest) {
  CnfgLine result;
  result.kind = CnfgLine::Kind::kParameter;
  result.leading = leading;
  const std::size_t keyEnd = scan(rest, 0, isSeparator);
  std::size_t keySize = keyEnd;
  // Only blanks: a TAB before the '=' is the separator already.
  while (keySize > 0 && rest[keySize - 1] == ' ') --keySize;
  result.key = rest.substr(0, keySize);
  result.keyBlanks = rest.substr(keySize, keyEnd - keySize);
  const std::size_t valueStart = scan(rest, keyEnd, [](char c) { return !isSeparator(c); });
  result.separator = rest.substr(keyEnd, valueStart - keyEnd);
  // Only the first run of '=' and TAB is the separator: "a = = b" has the value "= b".
  const std::string_view tail = rest.substr(valueStart);
  result.value = before(before(before(tail, CnfgLine::kComment), '\r'), '\n');
  result.trailing = tail.substr(result.value.size());
  return result;
}

}  // namespace

CnfgLine CnfgLine::split(std::string_view line) {
  const std::size_t start = skipBlanks(line);
  if (start == line.size()) return {};
  const std::string_view leading = line.substr(0, start);
  const std::string_view rest = line.substr(start);
  if (rest.front() == '[') return splitHeader(leading, rest);
  if (rest.front() != kComment) return splitParameter(leading, rest);
  CnfgLine result;
  result.kind = Kind::kComment;
  result.leading = leading;
  result.trailing = rest;
  return result;
}

std::string_view CnfgLine::sectionOf(std::string_view line) {
  const std::size_t start = skipBlanks(line);
  if (start == line.size() || line[start] != '[') return {};
  return headerSection(line.substr(start));
}

std::string_view CnfgLine::trimmed(std::string_view value) {
  // First the NUL: it may follow the blanks.
  if (!value.empty() && value.back() == '\0') value.remove_suffix(1);
  while (!value.empty() && isBlank(value.front())) value.remove_prefix(1);
  while (!value.empty() && isBlank(value.back())) value.remove_suffix(1);
  return value;
}
