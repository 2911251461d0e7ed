/// The menu file as its exporter writes it: names of application modes, and menu items whose macros the
/// application functions execute by number.
#ifndef COMMON_SOURCES_MENU_TABLE_H
#define COMMON_SOURCES_MENU_TABLE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct MenuTable {
  std::vector<std::string> modes;
  std::vector<std::string> macros;  ///< entry N is application function N
};

/// The macro in a menu item's value "{label}macro|further text". None when the value has no "}" or nothing
/// after it, and then the item takes no number; "{label}|further text" has an empty macro and takes one.
std::optional<std::string_view> menuMacro(std::string_view value);

/// Reads the sections "Modes" and "MenuBar" of the file; none when it cannot be opened. A missing section is
/// empty.
std::optional<MenuTable> readMenuFile(const std::string& path);

#endif
