#include "config/cnfg.h"

std::int32_t Cnfg::open(const std::string& fileName) {
  mIsEditing = false;
  // Kept also when the file cannot be opened: the error text names it.
  mFileName = fileName;
  return result(mReader.open(fileName) ? kOk : kFileNotFound);
}

std::int32_t Cnfg::findSection(std::string_view section) {
  mSection = section;
  return result(isSectionFound(section) ? kOk : kSectionNotFound);
}

bool Cnfg::isSectionFound(std::string_view section) {
  // Always from the start: sections may be read in any order, and of two with one name the first counts.
  mReader.rewind();
  while (!mReader.isAtEnd())
    if (CnfgLine::sectionOf(mReader.next()) == section) return true;
  return false;
}

/// The next line that isn't passed over. At the end of the file that is an empty one.
CnfgLine Cnfg::nextLine() {
  std::string_view line;
  // Only a '#' in the first column is skipped: an indented comment ends the section's parameters. So is a
  // line that begins with a CR, which is what a line end of CR CR LF leaves of an empty line.
  do {
    line = mReader.next();
  } while (!line.empty() && (line.front() == CnfgLine::kComment || line.front() == '\r'));
  return CnfgLine::split(line);
}

bool Cnfg::nextParameter(CnfgLine& line) {
  if (mReader.isAtEnd()) return false;
  line = nextLine();
  return !line.key.empty();
}

void Cnfg::copyValue(const CnfgLine& line, std::string& value, Trim trim) {
  value = trim == Trim::kYes ? CnfgLine::trimmed(line.value) : line.value;
}

std::int32_t Cnfg::readNextParameter(std::string& key, std::string& value, Trim trim) {
  CnfgLine line;
  if (!nextParameter(line)) return result(kNoFurtherParameter);
  key = line.key;
  copyValue(line, value, trim);
  return result(kOk);
}

std::int32_t Cnfg::readParameter(std::string_view key, std::string& value, std::string_view section,
                                 Trim trim) {
  mParameter = key;
  // Without a section the search continues where the last operation ended.
  if (!section.empty() && findSection(section) != kOk) return mErrorCode;
  CnfgLine line;
  do {
    // The first line that is no parameter ends the section, whatever follows it.
    if (!nextParameter(line)) return result(kParameterNotFound);
  } while (line.key != key);
  copyValue(line, value, trim);
  return result(kOk);
}

std::int32_t Cnfg::readParameterByIndex(std::string& key, std::string& value, std::string_view section,
                                        std::size_t index, Trim trim) {
  // An empty section does not mean "from the current line" here, as it does in readParameter().
  if (findSection(section) != kOk) return mErrorCode;
  CnfgLine line;
  for (std::size_t i = 0; i <= index; ++i)
    if (!nextParameter(line)) return result(kParameterNotFound);
  key = line.key;
  copyValue(line, value, trim);
  return result(kOk);
}

std::string Cnfg::errorText(std::int32_t code) const {
  switch (code) {
    case kOk:
      return "OK";
    case kFileNotFound:
      return "File '" + mFileName + "' not found!";
    case kSectionNotFound:
      return "Section '" + mSection + "' not found!";
    case kParameterNotFound:
      return "Parameter '" + mParameter + "' in section '" + mSection + "' not found! (" + mFileName + ")";
    case kNoFurtherParameter:
      return "No further parameter in section '" + mSection + "'!";
    default:
      return "Unknown error in class Cnfg!";
  }
}
