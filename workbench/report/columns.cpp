#include "workbench/report/columns.h"

#include <algorithm>
#include <cstdint>

namespace workbench {

std::string base64(const void* bytes, std::size_t size) {
  static constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const auto* const from = static_cast<const unsigned char*>(bytes);
  std::string text;
  text.reserve((size + 2) / 3 * 4);
  for (std::size_t i = 0; i < size; i += 3) {
    const std::size_t count = std::min<std::size_t>(3, size - i);
    std::uint32_t block = 0;
    // The first byte is the highest of the block, whatever the machine's byte order.
    for (std::size_t k = 0; k < 3; ++k) block = block << 8 | (k < count ? from[i + k] : 0U);
    for (std::size_t k = 0; k < 4; ++k) text += k <= count ? kDigits[block >> (18 - 6 * k) & 63U] : '=';
  }
  return text;
}

}  // namespace workbench
