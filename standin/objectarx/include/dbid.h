/// Identity of a database object.
#ifndef STANDIN_DBID_H
#define STANDIN_DBID_H

#include <cstdint>

class AcDbObjectId {
 public:
  constexpr AcDbObjectId() = default;
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
