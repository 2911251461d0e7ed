/// The host's basic types.
#ifndef STANDIN_ADESK_H
#define STANDIN_ADESK_H

#include <cstddef>
#include <cstdint>

typedef wchar_t ACHAR;
/// Makes a wide literal of a narrow one.
#define ACRX_T(x) L##x

namespace Adesk {
typedef int Boolean;
// 32 bits everywhere; on Windows they are `long`, which the names of the host's functions tell from `int`.
#if defined(_WIN32)
typedef long Int32;
typedef unsigned long UInt32;
#else
typedef std::int32_t Int32;
typedef std::uint32_t UInt32;
#endif
typedef std::int64_t Int64;
enum : Boolean { kFalse = 0, kTrue = 1 };
}  // namespace Adesk

#endif
