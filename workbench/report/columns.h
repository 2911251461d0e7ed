/// Columns of numbers as the page reads them: their bytes, little-endian, in base64. A number takes four
/// thirds of its bytes so, exactly, and about 18 characters as a decimal. Any thread.
#ifndef WORKBENCH_REPORT_COLUMNS_H
#define WORKBENCH_REPORT_COLUMNS_H

#include <cstddef>
#include <string>
#include <vector>

namespace workbench {

std::string base64(const void* bytes, std::size_t size);

template <typename Number>
std::string column(const std::vector<Number>& values) {
  // In the byte order of this machine, which is little-endian as are the machines of browsers.
  return base64(values.data(), values.size() * sizeof(Number));
}

}  // namespace workbench

#endif
