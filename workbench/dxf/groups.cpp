#include "workbench/dxf/groups.h"

#include "workbench/dxf/encoding.h"
#include "workbench/text_input.h"

#include <cmath>

namespace workbench {
namespace {

constexpr int kCommentCode = 999;
constexpr long long kLowestCode = -5;
constexpr long long kHighestCode = 1071;
constexpr std::size_t kBytesPerGroupGuess = 12;
constexpr int kHandleBits = 60;
/// Squares and cubes of what is between these are still numbers, with room for a view to zoom.
constexpr double kLargestReal = 1e15;
constexpr double kSmallestReal = 1e-50;
constexpr std::string_view kBinaryMark = "AutoCAD Binary DXF";

class LineSource {
 public:
  explicit LineSource(std::string_view text) : mRest(text) {}

  std::optional<std::string_view> next() {
    if (mRest.empty()) return std::nullopt;
    ++mLine;
    const std::size_t length = mRest.find('\n');
    std::string_view line = mRest.substr(0, length);
    mRest.remove_prefix(length == std::string_view::npos ? mRest.size() : length + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line;
  }

  std::size_t line() const { return mLine; }

 private:
  std::string_view mRest;
  std::size_t mLine = 0;
};

int parseCode(std::string_view line, const FilePlace& place) {
  const auto code = parseInteger(trimmed(line));
  if (!code || *code < kLowestCode || *code > kHighestCode)
    throw InputError(place, "a group code of a DXF text file", inQuotes(line));
  return static_cast<int>(*code);
}

}  // namespace

std::vector<DxfGroup> parseGroups(std::string_view text, const std::string& file) {
  if (text.substr(0, kBinaryMark.size()) == kBinaryMark)
    throw InputError({file, 1}, "a DXF text file", "a binary DXF file");
  std::vector<DxfGroup> groups;
  groups.reserve(text.size() / kBytesPerGroupGuess);
  LineSource lines(text);
  while (const auto codeLine = lines.next()) {
    const int code = parseCode(*codeLine, {file, lines.line()});
    const auto value = lines.next();
    if (!value)
      throw InputError({file, lines.line() + 1}, "the value of group " + std::to_string(code),
                       "the end of the file");
    if (code == kCommentCode) continue;
    groups.push_back({code, lines.line(), *value});
    if (code == 0 && trimmed(*value) == "EOF") return groups;
  }
  throw InputError({file, lines.line() + 1}, "a group code, up to 0 EOF", "the end of the file");
}

std::optional<std::uint64_t> parseHandle(std::string_view value) {
  const auto handle = parseHex(trimmed(value));
  if (!handle || *handle == 0 || *handle >> kHandleBits != 0) return std::nullopt;
  return *handle;
}

std::string_view DxfRecord::type() const {
  return trimmed(mFirst->value);
}

const DxfGroup* DxfRecord::find(int code) const {
  for (const DxfGroup& group : *this)
    if (group.code == code) return &group;
  return nullptr;
}

const DxfGroup& DxfRecord::require(int code) const {
  const DxfGroup* const group = find(code);
  if (group == nullptr)
    throw error("group " + std::to_string(code) + " in " + std::string(type()), "none up to the next record");
  return *group;
}

std::string DxfRecord::text(int code) const {
  return decodeDxfText(require(code).value, mSourceP->codePage);
}

double DxfRecord::realOf(const DxfGroup& group) const {
  const auto value = parseReal(trimmed(group.value));
  if (!value) throw error(group, "a number in group " + std::to_string(group.code));
  if (std::abs(*value) > kLargestReal)
    throw error(group, "a number from -1e15 to 1e15 in group " + std::to_string(group.code));
  return std::abs(*value) < kSmallestReal ? 0 : *value;
}

std::uint64_t DxfRecord::handleOf(const DxfGroup& group) const {
  const auto handle = parseHandle(group.value);
  if (!handle)
    throw error(group, "a handle (hexadecimal, at most 60 bits) in group " + std::to_string(group.code));
  return *handle;
}

double DxfRecord::real(int code) const {
  return realOf(require(code));
}

double DxfRecord::real(int code, double fallback) const {
  const DxfGroup* const group = find(code);
  return group == nullptr ? fallback : realOf(*group);
}

long long DxfRecord::integer(int code, long long fallback, long long lowest, long long highest) const {
  const DxfGroup* const group = find(code);
  if (group == nullptr) return fallback;
  const auto value = parseInteger(trimmed(group->value));
  if (!value || *value < lowest || *value > highest)
    throw error(*group, "a whole number, " + std::to_string(lowest) + " to " + std::to_string(highest) +
                            ", in group " + std::to_string(code));
  return *value;
}

AcGePoint3d DxfRecord::point(int code) const {
  return {real(code), real(code + 10), real(code + 20, 0)};
}

AcGeVector3d DxfRecord::direction(int code, const AcGeVector3d& fallback) const {
  const DxfGroup* const group = find(code);
  if (group == nullptr) return fallback;
  const AcGePoint3d tip = point(code);
  const double length = std::hypot(tip.x, tip.y, tip.z);
  if (!(length > 0) || !std::isfinite(length))
    throw error(*group, "a direction of some length in groups " + std::to_string(code) + " to " +
                            std::to_string(code + 20));
  return {tip.x / length, tip.y / length, tip.z / length};
}

InputError DxfRecord::error(const DxfGroup& group, const std::string& expected) const {
  return InputError({mSourceP->file, group.line}, expected, inQuotes(trimmed(group.value)));
}

InputError DxfRecord::error(const std::string& expected, const std::string& found) const {
  return InputError({mSourceP->file, mFirst->line}, expected, found);
}

}  // namespace workbench
