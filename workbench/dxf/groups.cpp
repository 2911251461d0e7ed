#include "workbench/dxf/groups.h"

#include "workbench/dxf/encoding.h"
#include "workbench/text_input.h"

#include <cmath>

namespace workbench {
namespace {

constexpr int kCommentCode = 999;
// Negative codes occur in application data only. A value outside this range means that the file is out of
// step.
constexpr long long kLowestCode = -5;
constexpr long long kHighestCode = 1071;
// A short code and a short value, with line ends. A wrong guess only costs a reallocation or some memory.
constexpr std::size_t kBytesPerGroupGuess = 12;
constexpr int kHandleBits = 60;
/// Squares and cubes of what is between these are still numbers, with room for a view to zoom.
constexpr double kLargestReal = 1e15;
constexpr double kSmallestReal = 1e-50;
// A binary file begins with this text, so the message can name the cause instead of a bad group code.
constexpr std::string_view kBinaryMark = "AutoCAD Binary DXF";
// So do drawings in the host's own format, from release 13 on.
constexpr std::string_view kDwgMark = "AC10";

class LineSource {
 public:
  explicit LineSource(std::string_view text) : mRest(text) {}

  std::optional<std::string_view> next() {
    if (mRest.empty()) return std::nullopt;
    ++mLine;
    const std::size_t length = mRest.find('\n');
    std::string_view line = mRest.substr(0, length);
    mRest.remove_prefix(length == std::string_view::npos ? mRest.size() : length + 1);
    // Windows ends lines with CR LF, and the ends may be mixed in one file that two programs have edited.
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line;
  }

  std::size_t line() const { return mLine; }

 private:
  std::string_view mRest;
  std::size_t mLine = 0;
};

int parseCode(std::string_view line, const FilePlace& place) {
  // Codes are padded with blanks to three columns; values are not trimmed here, because blanks matter in
  // texts.
  const auto code = parseInteger(trimmed(line));
  if (!code || *code < kLowestCode || *code > kHighestCode)
    throw InputError(place, "a group code of a DXF text file", inQuotes(line));
  return static_cast<int>(*code);
}

}  // namespace

std::vector<DxfGroup> parseGroups(std::string_view text, const std::string& file) {
  if (text.substr(0, kBinaryMark.size()) == kBinaryMark)
    throw InputError({file, 1}, "a DXF text file", "a binary DXF file; save the drawing as DXF in text form");
  if (text.substr(0, kDwgMark.size()) == kDwgMark)
    throw InputError({file, 1}, "a DXF text file", "a DWG file; save the drawing as DXF in text form");
  std::vector<DxfGroup> groups;
  groups.reserve(text.size() / kBytesPerGroupGuess);
  LineSource lines(text);
  while (const auto codeLine = lines.next()) {
    const int code = parseCode(*codeLine, {file, lines.line()});
    const auto value = lines.next();
    if (!value)
      // The line that is missing is the one after the last.
      throw InputError({file, lines.line() + 1}, "the value of group " + std::to_string(code),
                       "the end of the file");
    // A comment may come between any two groups, so it is dropped here and no reader has to expect one.
    if (code == kCommentCode) continue;
    groups.push_back({code, lines.line(), *value});
    // What follows EOF is not read: some programs pad the file after it.
    if (code == 0 && trimmed(*value) == "EOF") return groups;
  }
  // A file without EOF has been cut off. Showing the part that arrived would hide that.
  throw InputError({file, lines.line() + 1}, "a group code, up to 0 EOF", "the end of the file");
}

std::optional<std::uint64_t> parseHandle(std::string_view value) {
  const auto handle = parseHex(trimmed(value));
  // Handle 0 means "none" in references and cannot be that of an entity.
  if (!handle || *handle == 0 || *handle >> kHandleBits != 0) return std::nullopt;
  return *handle;
}

std::string_view DxfRecord::type() const {
  return trimmed(mFirst->value);
}

const DxfGroup* DxfRecord::find(int code) const {
  // A record has a few groups; a search is faster than an index for each record.
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
  // A value beyond the range is an error and not clamped: the drawing would be another one.
  if (std::abs(*value) > kLargestReal)
    throw error(group, "a number from -1e15 to 1e15 in group " + std::to_string(group.code));
  // Such values are left-overs of rounding; their squares and cubes would underflow later, where nobody
  // expects it.
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
  // The codes of y and z are 10 and 20 above that of x. Two-dimensional files leave z out.
  return {real(code), real(code + 10), real(code + 20, 0)};
}

AcGeVector3d DxfRecord::direction(int code, const AcGeVector3d& fallback) const {
  const DxfGroup* const group = find(code);
  if (group == nullptr) return fallback;
  const AcGePoint3d tip = point(code);
  // hypot does not overflow or underflow where a sum of squares would.
  const double length = std::hypot(tip.x, tip.y, tip.z);
  // Written as a negation, so that it also catches a length that is not a number.
  if (!(length > 0) || !std::isfinite(length))
    throw error(*group, "a direction of some length in groups " + std::to_string(code) + " to " +
                            std::to_string(code + 20));
  return {tip.x / length, tip.y / length, tip.z / length};
}

InputError DxfRecord::error(const DxfGroup& group, const std::string& expected) const {
  return InputError({mSourceP->file, group.line}, expected, inQuotes(trimmed(group.value)));
}

InputError DxfRecord::error(const std::string& expected, const std::string& found) const {
  // A missing group has no line of its own, so the message names the record's.
  return InputError({mSourceP->file, mFirst->line}, expected, found);
}

}  // namespace workbench
