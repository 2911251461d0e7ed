/// The lowest layer of a DXF file (ASCII): pairs of lines, a group code and its value, and records, which are
/// the groups from one group 0 to the next.
#ifndef WORKBENCH_DXF_GROUPS_H
#define WORKBENCH_DXF_GROUPS_H

#include "workbench/input_error.h"

// clang-format off
#include "gepnt3d.h"
#include "gevec3d.h"
// clang-format on

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

struct DxfGroup {
  int code = 0;
  std::size_t line = 0;    ///< of the value, from 1
  std::string_view value;  ///< into the file's text, without the line end
};

/// Splits the text into groups up to and including `0 EOF`; comments (group 999) are left out. LF and CR LF
/// ends. `text` must outlive the groups. Throws InputError for a broken group code, for a file that ends
/// before `0 EOF`, and for what is not text (a binary DXF, an image).
std::vector<DxfGroup> parseGroups(std::string_view text, const std::string& file);

/// One record: group 0 with the type, then its groups. Accessors throw InputError at the group that is not
/// what they expect, or at the record when a group that must be there is missing.
class DxfRecord {
 public:
  DxfRecord(const std::string& file, const DxfGroup* first, const DxfGroup* last)
      : mFile(&file), mFirst(first), mLast(last) {}

  std::string_view type() const;
  const DxfGroup* begin() const { return mFirst; }
  const DxfGroup* end() const { return mLast; }

  /// The first group of that code, null when there is none.
  const DxfGroup* find(int code) const;

  std::string text(int code) const;  ///< UTF-8; must be there
  double real(int code) const;       ///< must be there
  double real(int code, double fallback) const;
  long long integer(int code, long long fallback, long long lowest, long long highest) const;

  /// Groups `code`, `code` + 10 and `code` + 20; the last may be missing and is 0 then.
  AcGePoint3d point(int code) const;
  /// The same as a unit vector, `fallback` when group `code` is missing. Not of length 0.
  AcGeVector3d direction(int code, const AcGeVector3d& fallback) const;

  double realOf(const DxfGroup& group) const;
  std::uint64_t handleOf(const DxfGroup& group) const;  ///< above 0 and below 2^63

  InputError error(const DxfGroup& group, const std::string& expected) const;
  InputError error(const std::string& expected,
                   const std::string& found) const;  ///< at the record's first line

 private:
  const DxfGroup& require(int code) const;

  const std::string* mFile;
  const DxfGroup* mFirst;
  const DxfGroup* mLast;
};

/// The value as a handle, none when it is not one (hexadecimal, above 0, below 2^63).
std::optional<std::uint64_t> parseHandle(std::string_view value);

}  // namespace workbench

#endif
