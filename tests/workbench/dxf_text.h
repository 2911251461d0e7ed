/// DXF texts for tests, written short: "0 LINE|8 0|10 1.5" is three groups.
#ifndef TESTS_WORKBENCH_DXF_TEXT_H
#define TESTS_WORKBENCH_DXF_TEXT_H

#include "workbench/dxf/reader.h"
#include "workbench/input_error.h"

#include <string>
#include <string_view>

namespace workbench {

/// Each "CODE VALUE" between bars as two lines.
inline std::string dxfGroups(std::string_view groups) {
  std::string text;
  while (!groups.empty()) {
    const std::string_view group = groups.substr(0, groups.find('|'));
    groups.remove_prefix(group.size() == groups.size() ? group.size() : group.size() + 1);
    const std::size_t space = group.find(' ');
    text += std::string(group.substr(0, space)) + "\n" + std::string(group.substr(space + 1)) + "\n";
  }
  return text;
}

inline std::string dxfSection(std::string_view name, std::string_view groups) {
  return "0\nSECTION\n2\n" + std::string(name) + "\n" + dxfGroups(groups) + "0\nENDSEC\n";
}

inline std::string dxfFile(const std::string& sections) {
  return sections + "0\nEOF\n";
}

/// A file with these entities in model space; the first group's code is on line 5.
inline std::string dxfEntities(std::string_view groups) {
  return dxfFile(dxfSection("ENTITIES", groups));
}

/// The message for a file that is refused.
inline std::string errorOf(const std::string& file) {
  try {
    parseDrawing(file, "a.dxf");
  } catch (const InputError& error) {
    return error.what();
  }
  return "no error";
}

}  // namespace workbench

#endif
