/// Identity of a database object.
#ifndef STANDIN_DBID_H
#define STANDIN_DBID_H

#include <cstdint>

class AcDbObjectId {
 public:
  // Microsoft's ABI returns an object with a constructor written by hand through a hidden pointer, and passes
  // one whose copy constructor is implicit in a register: both must stay as they are.
  // NOLINTNEXTLINE(modernize-use-equals-default)
  constexpr AcDbObjectId() {}
  constexpr explicit AcDbObjectId(std::uint64_t value) : mValue(value) {}

  bool isNull() const { return mValue == 0; }
  bool operator==(const AcDbObjectId& other) const { return mValue == other.mValue; }
  bool operator!=(const AcDbObjectId& other) const { return mValue != other.mValue; }

  /// The stand-in's own key of the object.
  std::uint64_t value() const { return mValue; }

 private:
  std::uint64_t mValue = 0;
};

#endif
