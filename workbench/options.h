/// The command line of the workbench.
///
///   workbench replay --drawing FILE.dxf --session FILE.session --out DIR
///                    [--profile DIR] [--menu FILE.mnu or FILE.cuix] [--frame-ms N] [--realtime] [--frames N]
///                    [--quiet]
///                    [--module FILE]
#ifndef WORKBENCH_OPTIONS_H
#define WORKBENCH_OPTIONS_H

#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace workbench {

struct Options {
  std::filesystem::path drawing;
  std::filesystem::path session;
  std::filesystem::path out;
  std::optional<std::filesystem::path> profile;
  std::optional<std::filesystem::path> menu;
  std::filesystem::path module;  ///< for trials with another module than the one built beside the program
  std::uint32_t frameMs = 16;
  std::size_t frames = 60;
  std::int64_t dateMs = 0;  ///< UTC that belongs to time 0, in ms since 1970
  bool isRealTime = false;
  bool isQuiet = false;
};

/// Thrown for --help: the text to print.
struct HelpWanted {
  std::string text;
};

/// Invalid arguments; the message is one line.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The options of the arguments (without the program's name). Throws UsageError, and HelpWanted for --help.
/// Does not access any file.
Options parseOptions(std::vector<std::string> arguments);

/// Throws InputError at the first file or folder of the options that is not what it must be.
void checkFiles(const Options& options);

}  // namespace workbench

#endif
