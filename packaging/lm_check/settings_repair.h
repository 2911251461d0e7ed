/// Builds a new settings file from what can be read in a defective one.
#ifndef PACKAGING_LM_CHECK_SETTINGS_REPAIR_H
#define PACKAGING_LM_CHECK_SETTINGS_REPAIR_H

#include <optional>
#include <string>
#include <vector>

struct RepairedSettings {
  std::string text;  ///< the whole file, lines ended by "\n"
  /// One line for each value that is not taken unchanged from the file.
  std::vector<std::string> changes;
};

/// Takes each value from where the module reads it, or else from wherever its key is in the file, and
/// keeps what the module can use; the rest becomes the default. None when the file cannot be opened.
std::optional<RepairedSettings> repairSettings(const std::string& path);

#endif
