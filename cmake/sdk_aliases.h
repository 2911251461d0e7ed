/// Included before every source of a build with the ObjectARX SDK, whose headers use this name of a library
/// older than C++11.
#ifndef LM_SDK_ALIASES_H
#define LM_SDK_ALIASES_H

#ifdef __cplusplus
#include <type_traits>

namespace std {
namespace tr1 {
using std::is_pod;
}
}  // namespace std
#endif

#endif
