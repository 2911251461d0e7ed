/// The command line of the workbench.
///
///   workbench replay --drawing FILE.dxf --session FILE.session --out DIR
///                    [--profile DIR] [--menu FILE.mnu or FILE.cuix] [--frame-ms N] [--realtime] [--frames N]
///                    [--quiet]
///                    [--date D] [--module FILE]
///   workbench live --drawing FILE.dxf ... [--menu FILE.mnu] [--profile DIR] [--port N] [--out DIR]
///                  [--no-browser] [--module FILE]
///   workbench compare RUN_A RUN_B --out DIR
///   workbench --help | --version
#ifndef WORKBENCH_OPTIONS_H
#define WORKBENCH_OPTIONS_H

#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace workbench {

struct ReplayOptions {
  std::filesystem::path drawing;
  std::filesystem::path session;
  std::filesystem::path out;
  std::optional<std::filesystem::path> profile;
  std::optional<std::filesystem::path> menu;
  std::filesystem::path module;  ///< for trials with another module than the one built beside the program
  std::uint32_t frameMs = 16;
  std::size_t frames = 60;
  std::optional<std::int64_t> day;  ///< on which the run takes place, in days since 1970-01-01
  bool isRealTime = false;
  bool isQuiet = false;
};

/// Two folders that `replay` has written, and where the comparison goes.
struct CompareOptions {
  std::filesystem::path runA;
  std::filesystem::path runB;
  std::filesystem::path out;
};

struct LiveOptions {
  std::vector<std::filesystem::path> drawings;  ///< at least one; the first is shown
  std::optional<std::filesystem::path> menu;
  std::optional<std::filesystem::path> profile;
  std::filesystem::path out;  ///< where sessions and reports are left
  std::filesystem::path module;
  std::uint16_t port = 0;  ///< 0: any that is free
  bool isBrowserOpened = true;
};

/// One type for each subcommand.
using Options = std::variant<ReplayOptions, CompareOptions, LiveOptions>;

/// Thrown for --help and --version: the text to print.
struct HelpWanted {
  std::string text;
};

/// Invalid arguments; the message is one line.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The subcommand of the arguments (without the program's name) and its options. Throws UsageError, and
/// HelpWanted for --help and --version. Does not access any file, but for looking for the default module.
Options parseOptions(std::vector<std::string> arguments);

/// The module that is built, or shipped, with this program.
std::filesystem::path defaultModule();

/// Throws InputError at the first file or folder of the options that is not what it must be.
void checkFiles(const ReplayOptions& options);
void checkFiles(const CompareOptions& options);

}  // namespace workbench

#endif
