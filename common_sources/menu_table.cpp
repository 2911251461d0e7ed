#include "common_sources/menu_table.h"

#include "config/cnfg.h"

namespace {

/// Calls `take` with key and value of every parameter of the section.
template <typename Take>
void readSection(Cnfg& file, std::string_view section, Take take) {
  if (file.findSection(section) != Cnfg::kOk) return;
  std::string key, value;
  while (file.readNextParameter(key, value) == Cnfg::kOk) take(key, value);
}

}  // namespace

std::optional<std::string_view> menuMacro(std::string_view value) {
  const std::size_t labelEnd = value.find('}');
  // Such an item takes no number, so the numbers of all later items depend on this rule.
  if (labelEnd == std::string_view::npos || labelEnd + 1 == value.size()) return std::nullopt;
  value.remove_prefix(labelEnd + 1);
  return value.substr(0, value.find('|'));
}

std::optional<MenuTable> readMenuFile(const std::string& path) {
  Cnfg file;
  if (file.open(path) != Cnfg::kOk) return std::nullopt;
  MenuTable table;
  // Only the keys count. Their order in the file gives the modes' numbers.
  readSection(file, "Modes", [&](const std::string& key, const std::string&) { table.modes.push_back(key); });
  readSection(file, "MenuBar", [&](const std::string&, const std::string& value) {
    if (const auto macro = menuMacro(value)) table.macros.emplace_back(*macro);
  });
  return table;
}
