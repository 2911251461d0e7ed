#include "workbench/comparing/compare_parts.h"
#include "workbench/input_error.h"
#include "workbench/running/outputs.h"
#include "workbench/text_input.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <tuple>

namespace workbench {
namespace {

struct Line {
  std::size_t number = 0;
  std::string_view text;
};

bool isBefore(const Line& a, const Line& b) {
  // By number among equal texts, so that the last ones of them are those that the other run has not.
  return a.text < b.text;
}

bool isKind(std::string_view text) {
  return std::any_of(std::begin(kLineKinds), std::end(kLineKinds),
                     [text](LineKind kind) { return text == kindName(kind); });
}

/// TIME_MS KIND "TEXT"
bool isEntry(std::string_view line) {
  const std::size_t kind = line.find(' ');
  const std::size_t text = kind == std::string_view::npos ? kind : line.find(' ', kind + 1);
  if (text == std::string_view::npos || !parseInteger(line.substr(0, kind))) return false;
  const std::string_view json = line.substr(text + 1);
  return isKind(line.substr(kind + 1, text - kind - 1)) && json.substr(0, 1) == "\"" &&
         nlohmann::json::accept(json);
}

std::vector<Line> linesOf(std::string_view text, const std::string& file) {
  std::vector<Line> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const Line line{lines.size() + 1, text.substr(0, end)};
    // The last line has an end, too; a line without one has been cut off.
    if (end == std::string_view::npos || !isEntry(line.text))
      throw InputError({file, line.number}, "TIME_MS KIND \"TEXT\" and a line end", inQuotes(line.text));
    lines.push_back(line);
    text.remove_prefix(end + 1);
  }
  return lines;
}

/// Lines of `a` that `b` has not, or not as often, in the order of `a`. Both are sorted.
std::vector<TextLine> onlyIn(const std::vector<Line>& a, const std::vector<Line>& b) {
  std::vector<Line> only;
  std::set_difference(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(only), isBefore);
  std::sort(only.begin(), only.end(), [](const Line& p, const Line& q) { return p.number < q.number; });
  std::vector<TextLine> texts;
  for (const Line& line : only) texts.push_back({line.number, std::string(line.text)});
  return texts;
}

}  // namespace

TextComparison compareTexts(const std::filesystem::path& a, const std::filesystem::path& b) {
  const std::string textA = readFile(a, "the command line of a run");
  const std::string textB = readFile(b, "the command line of a run");
  std::vector<Line> linesA = linesOf(textA, a.string());
  std::vector<Line> linesB = linesOf(textB, b.string());
  TextComparison result;
  result.lines = {linesA.size(), linesB.size()};
  const auto moved = std::mismatch(linesA.begin(), linesA.end(), linesB.begin(), linesB.end(),
                                   [](const Line& p, const Line& q) { return p.text == q.text; });
  const bool isSame = moved.first == linesA.end() && moved.second == linesB.end();
  if (isSame) return result;
  const auto first = moved.first == linesA.end() ? *moved.second : *moved.first;
  // The time is a part of each line and the lines are in order of time, so a comparison as sets finds what a
  // comparison as sequences would.
  std::stable_sort(linesA.begin(), linesA.end(), isBefore);
  std::stable_sort(linesB.begin(), linesB.end(), isBefore);
  result.only = {onlyIn(linesA, linesB), onlyIn(linesB, linesA)};
  if (result.only[0].empty() && result.only[1].empty())
    result.firstMoved = TextLine{first.number, std::string(first.text)};
  return result;
}

}  // namespace workbench
