/// Ids of database objects. A module may keep one of a document that has been closed, so an id is
/// never reused: the upper bits are the drawing's serial number, the lower ones the object's number in the
/// drawing. Any thread.
#ifndef STANDIN_OBJECT_ID_H
#define STANDIN_OBJECT_ID_H

#include <cassert>
#include <cstdint>

namespace standin::host {

constexpr int kNumberBits = 40;
/// Serial numbers begin anew after these, so that an id is never below 0 where the host's C interface holds
/// it.
constexpr std::uint64_t kLargestSerial = (std::uint64_t{1} << 23) - 1;
/// Numbers from here on are those of viewports; entities count from 1.
constexpr std::uint64_t kFirstViewport = std::uint64_t{1} << (kNumberBits - 1);

constexpr std::uint64_t objectId(std::uint64_t drawing, std::uint64_t number) {
  assert(drawing <= kLargestSerial && number >> kNumberBits == 0 && "either part of an id fits its bits");
  return drawing << kNumberBits | number;
}
constexpr std::uint64_t drawingOf(std::uint64_t id) {
  return id >> kNumberBits;
}
constexpr std::uint64_t numberOf(std::uint64_t id) {
  return id & ((std::uint64_t{1} << kNumberBits) - 1);
}

}  // namespace standin::host

#endif
