#include "config/cnfg.h"
#include "util/native_file.h"

namespace {

/// Number of blanks to keep before the value. A value of blanks only keeps the first one: the others are room
/// for the new value.
std::size_t blanksBeforeValue(std::string_view value) {
  const std::string_view trimmed = CnfgLine::trimmed(value);
  // trimmed() cuts a NUL at the end too, and a value of one NUL has no blank to keep.
  if (trimmed.empty()) return value.empty() || value.front() == '\0' ? 0 : 1;
  return static_cast<std::size_t>(trimmed.data() - value.data());
}

/// A line with its value replaced. The comment moves only when the new value needs its room.
std::string rebuilt(const CnfgLine& line, std::string_view newValue) {
  const std::size_t blanksBefore = blanksBeforeValue(line.value);
  std::string text(line.leading);
  text.append(line.key).append(line.keyBlanks);
  // A key without a separator gets one, or the new value would become part of the key.
  text.append(line.separator.empty() ? std::string_view("=") : line.separator);
  text.append(line.value.substr(0, blanksBefore)).append(newValue);
  if (line.trailing.empty()) return text;
  const std::size_t oldSize = line.value.size() - blanksBefore;
  // The comment keeps its column while the new value fits, and has at least one blank before it.
  const std::size_t padding = newValue.size() < oldSize ? oldSize - newValue.size() : 1;
  return text.append(padding, ' ').append(line.trailing);
}

}  // namespace

std::int32_t Cnfg::loadForEditing() {
  mReader.rewind();
  mHeldLines.clear();
  while (!mReader.isAtEnd()) mHeldLines.emplace_back(mReader.next());
  mIsEditing = true;
  // The line reader reports an empty line after the last line end.
  while (!mHeldLines.empty() && mHeldLines.back().empty()) mHeldLines.pop_back();
  return result(kOk);
}

/// Index of the line after the header of `section`; npos when there is no such header.
std::size_t Cnfg::heldSectionStart(std::string_view section) const {
  if (section.empty()) return 0;
  for (std::size_t i = 0; i < mHeldLines.size(); ++i)
    if (CnfgLine::sectionOf(mHeldLines[i]) == section) return i + 1;
  return std::string::npos;
}

std::int32_t Cnfg::setParameter(std::string_view key, std::string_view newValue, std::string_view section) {
  mParameter = key;
  mSection = section;
  // What follows would be read back as a comment or as another line.
  newValue = newValue.substr(0, newValue.find_first_of("#\r\n"));
  const std::size_t start = heldSectionStart(section);
  if (start == std::string::npos) return result(kSectionNotFound);
  for (std::size_t i = start; i < mHeldLines.size(); ++i) {
    const CnfgLine line = CnfgLine::split(mHeldLines[i]);
    // Unlike reading, editing passes over blank lines: only the next header ends a section here.
    if (!section.empty() && line.kind == CnfgLine::Kind::kHeader) break;
    if (line.kind != CnfgLine::Kind::kParameter || line.key != key) continue;
    mHeldLines[i] = rebuilt(line, newValue);
    return result(kOk);
  }
  return result(kParameterNotFound);
}

std::int32_t Cnfg::save() {
  if (!mIsEditing) return result(kOk);
  // The position of the reader means nothing in the new text.
  mReader.close();
  std::string text;
  for (const std::string& line : mHeldLines) text.append(line).append("\n");
  // Overwritten in place and not truncated: a shorter text leaves the end of the old one, as the header says.
  NativeFile file;
  const bool isWritten = file.openForOverwriting(mFileName) && file.write(text);
  file.close();
  // Opened again even after a failed write, so that the object can still read.
  const bool isOpen = mReader.open(mFileName);
  return result(isWritten && isOpen ? kOk : kFileNotFound);
}
