/// A group of a DXF file: its code and its value.
#ifndef WORKBENCH_DXF_GROUP_H
#define WORKBENCH_DXF_GROUP_H

#include <cstddef>
#include <string_view>

namespace workbench {

struct DxfGroup {
  int code = 0;
  std::size_t line = 0;    ///< of the value, from 1
  std::string_view value;  ///< into the file's text, without the line end
};

}  // namespace workbench

#endif
