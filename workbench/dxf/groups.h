/// The lowest layer of a DXF file (ASCII): pairs of lines, a group code and its value, and records, which are
/// the groups from one group 0 to the next.
#ifndef WORKBENCH_DXF_GROUPS_H
#define WORKBENCH_DXF_GROUPS_H

#include "workbench/dxf/group.h"
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

/// Splits the text into groups up to and including `0 EOF`; comments (group 999) are left out. LF and CR LF
/// ends. `text` must outlive the groups. Throws InputError for a broken group code, for a file that ends
/// before `0 EOF`, and for what is not text (a binary DXF, an image).
std::vector<DxfGroup> parseGroups(std::string_view text, const std::string& file);

/// What the records of a file have in common.
struct DxfSource {
  std::string file;  ///< for messages
  int codePage = 0;  ///< of its texts; 0: UTF-8 or not known
};

/// One record: group 0 with the type, then its groups. Accessors throw InputError at the group that is not
/// what they expect, or at the record when a group that must be there is missing.
class DxfRecord {
 public:
  /// The source must outlive the record.
  DxfRecord(const DxfSource& source, const DxfGroup* first, const DxfGroup* last)
      : mSourceP(&source), mFirst(first), mLast(last) {}

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

  /// Not beyond +-1e15: no view can show more. What is nearer to 0 than 1e-50 is 0.
  double realOf(const DxfGroup& group) const;
  std::uint64_t handleOf(const DxfGroup& group) const;  ///< above 0 and below 2^60

  InputError error(const DxfGroup& group, const std::string& expected) const;
  InputError error(const std::string& expected,
                   const std::string& found) const;  ///< at the record's first line

 private:
  const DxfGroup& require(int code) const;

  const DxfSource* mSourceP;
  const DxfGroup* mFirst;
  const DxfGroup* mLast;
};

/// The value as a handle, none when it is not one (hexadecimal, above 0, below 2^60: the drawing has no
/// larger).
std::optional<std::uint64_t> parseHandle(std::string_view value);

}  // namespace workbench

#endif
