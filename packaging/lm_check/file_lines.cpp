#include "packaging/lm_check/file_lines.h"

#include "util/native_file.h"

#include <array>
#include <set>
#include <string_view>

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
// Little-endian only, which is what Windows editors write.
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

std::optional<std::string> readFile(const std::string& path) {
  NativeFile file;
  if (!file.openForReading(path)) return std::nullopt;
  std::string text;
  // Read whole and not by the line reader, because its encoding decides how to split it.
  std::array<char, 4096> piece{};
  while (const std::size_t count = file.read(piece.data(), piece.size())) text.append(piece.data(), count);
  return text;
}

/// The low bytes of little-endian 16-bit characters; '?' for what has no 8-bit character.
std::string narrowed(std::string_view bytes) {
  std::string text;
  // An odd last byte is half a character and is left out.
  for (std::size_t i = kUtf16Mark.size(); i + 1 < bytes.size(); i += 2)
    text.push_back(bytes[i + 1] == 0 ? bytes[i] : '?');
  return text;
}

Encoding encodingOf(std::string_view bytes) {
  if (bytes.substr(0, kUtf16Mark.size()) == kUtf16Mark) return Encoding::kUtf16;
  return bytes.substr(0, kUtf8Mark.size()) == kUtf8Mark ? Encoding::kUtf8Mark : Encoding::kBytes;
}

/// As the reader does: a carriage return before a line feed belongs to the line's end.
std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (true) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (end != std::string_view::npos && !line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.push_back(line);
    // The last line has no end; after a final line feed it is empty, as for the reader.
    if (end == std::string_view::npos) return lines;
    text.remove_prefix(end + 1);
  }
}

/// Follows the reader through the file: which section it is in, and whether it still takes parameters there.
class Walk {
 public:
  FileLine step(std::size_t number, std::string_view text) {
    // Split by the code that the module uses, so that both see the same pieces.
    const CnfgLine pieces = CnfgLine::split(text);
    FileLine line;
    line.number = number;
    line.kind = pieces.kind;
    line.text = text;
    // Before the section is noted: a header belongs to the section that it begins.
    if (pieces.kind == CnfgLine::Kind::kHeader) enter(std::string(pieces.section));
    line.section = mSection;
    line.key = pieces.key;
    line.value = CnfgLine::trimmed(pieces.value);
    line.hasSeparator = !pieces.separator.empty();
    // A comment in the first column is passed over; a line without a key ends the parameters, whatever it is.
    const bool isPassedOver = !text.empty() && (text.front() == CnfgLine::kComment || text.front() == '\r');
    const bool isHeader = pieces.kind == CnfgLine::Kind::kHeader;
    line.endsParameters = mIsTaken && !isHeader && !isPassedOver && pieces.key.empty();
    line.isRead = mIsTaken && !isPassedOver && !pieces.key.empty();
    if (line.endsParameters) mIsTaken = false;
    return line;
  }

 private:
  void enter(const std::string& section) {
    mSection = section;
    // The first of two sections of one name counts.
    mIsTaken = mSeen.insert(section).second;
  }

  std::set<std::string> mSeen;
  std::string mSection;
  bool mIsTaken = false;
};

}  // namespace

std::optional<FileText> readFileText(const std::string& path) {
  std::optional<std::string> bytes = readFile(path);
  if (!bytes) return std::nullopt;
  FileText result;
  result.encoding = encodingOf(*bytes);
  if (result.encoding == Encoding::kUtf16) *bytes = narrowed(*bytes);
  Walk walk;
  std::size_t number = 0;
  for (const std::string_view line : linesOf(*bytes)) result.lines.push_back(walk.step(++number, line));
  return result;
}
