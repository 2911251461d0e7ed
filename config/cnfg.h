/// Reader of configuration files: lines that are section headers, `[name]`, or parameters, `key = value`;
/// what follows a '#' is a comment. The parameters of a section are those that follow its header without a
/// break: an empty or blank line, the next header and an indented comment end them, a comment in the first
/// column does not. Names are compared exactly. Of two sections, and of two parameters in one, with the same
/// name the first counts.
///
/// Every operation returns one of the codes below and keeps it in the object. A malformed file never throws.
/// One thread at a time. The file stays open, shared with other processes, until the object is destroyed.
#ifndef CONFIG_CNFG_H
#define CONFIG_CNFG_H

#include "config/cnfg_line.h"
#include "config/line_reader.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class Cnfg {
 public:
  static constexpr std::int32_t kOk = 0;
  static constexpr std::int32_t kFileNotFound = 1;
  static constexpr std::int32_t kSectionNotFound = 2;
  static constexpr std::int32_t kParameterNotFound = 3;
  static constexpr std::int32_t kNoFurtherParameter = 4;

  /// Whether blanks and TABs around a value are cut off.
  enum class Trim { kNo, kYes };

  Cnfg() = default;
  Cnfg(const Cnfg&) = delete;
  Cnfg& operator=(const Cnfg&) = delete;

  /// Opens a file (Windows syntax) and leaves editing mode. kOk or kFileNotFound.
  std::int32_t open(const std::string& fileName);

  /// From the start of the file, finds the header of `section`; the next line read is the one after it.
  /// kOk or kSectionNotFound.
  std::int32_t findSection(std::string_view section);

  /// The parameter in the next line, comments in the first column left out. A line that isn't a parameter is
  /// consumed. kOk or kNoFurtherParameter, which leaves `key` and `value` as they are.
  std::int32_t readNextParameter(std::string& key, std::string& value, Trim trim = Trim::kYes);

  /// The value of `key` in `section`; with an empty section the search continues from the current line.
  /// kOk, kSectionNotFound or kParameterNotFound, which leave `value` as it is.
  std::int32_t readParameter(std::string_view key, std::string& value, std::string_view section,
                             Trim trim = Trim::kYes);

  /// The parameter at position `index` (from 0) of `section`. kOk, kSectionNotFound, or kParameterNotFound
  /// when the section has fewer.
  std::int32_t readParameterByIndex(std::string& key, std::string& value, std::string_view section,
                                    std::size_t index, Trim trim = Trim::kYes);

  /// Editing mode: reads the whole file into memory, without the empty lines at its end. kOk.
  std::int32_t loadForEditing();

  /// Gives `key` another value in memory: in `section`, or with an empty section its first occurrence.
  /// The line keeps what was around the value, and its comment keeps its column as far as the new value lets
  /// it. A '#', CR or LF ends a value, so `newValue` is cut before it. kOk,
  /// kSectionNotFound or kParameterNotFound.
  std::int32_t setParameter(std::string_view key, std::string_view newValue, std::string_view section = {});

  /// Writes the lines in memory over the start of the file; nothing is done unless in editing mode. The file
  /// is not truncated: a shorter text leaves the tail of a longer one. kOk or kFileNotFound.
  std::int32_t save();

  /// The last code as a text for the log.
  std::string getErrorText() const { return errorText(mErrorCode); }
  /// The text of any code, with the names of the last search.
  std::string errorText(std::int32_t code) const;

 private:
  std::int32_t result(std::int32_t code) { return mErrorCode = code; }
  bool isSectionFound(std::string_view section);
  CnfgLine nextLine();
  bool nextParameter(CnfgLine& line);
  static void copyValue(const CnfgLine& line, std::string& value, Trim trim);
  std::size_t heldSectionStart(std::string_view section) const;

  std::string mFileName;
  std::string mSection;
  std::string mParameter;
  LineReader mReader;
  bool mIsEditing = false;
  std::int32_t mErrorCode = kOk;
  std::vector<std::string> mHeldLines;
};

#endif
