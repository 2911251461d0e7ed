/// Names of entities and selection sets: an id or number, and a mark of its kind.
#ifndef STANDIN_NAMES_H
#define STANDIN_NAMES_H

#include "adsdef.h"

#include <cstdint>

namespace standin::host {

constexpr std::int64_t kEntityMark = 0x454E54;
constexpr std::int64_t kSelectionSetMark = 0x535345;

inline void nameEntity(ads_name name, std::uint64_t id) {
  name[0] = static_cast<std::int64_t>(id);
  name[1] = kEntityMark;
}
inline bool isEntityName(const ads_name name) {
  return name != nullptr && name[1] == kEntityMark;
}
inline std::uint64_t idOf(const ads_name name) {
  return static_cast<std::uint64_t>(name[0]);
}

}  // namespace standin::host

#endif
