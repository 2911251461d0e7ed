#include "workbench/text_output.h"

#include "workbench/input_error.h"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace workbench {
namespace {

/// Streams report no reason; errno of the failed system call is the best there is, and EIO where a library
/// left it at 0.
std::string lastReason() {
  return std::generic_category().message(errno != 0 ? errno : EIO);
}

}  // namespace

void writeFile(const std::filesystem::path& file, std::string_view text) {
  errno = 0;
  // Binary: outputs have LF line ends on every platform, so that runs can be compared byte by byte.
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream.write(text.data(), static_cast<std::streamsize>(text.size()));
  // A full disk may only show when the buffer is written out, so the file is closed before the check.
  stream.close();
  if (stream) return;
  throw InputError({file.string()}, "a file that can be written", lastReason());
}

void flushOutput(std::ostream& out) {
  errno = 0;
  out.flush();
  if (!out) throw InputError({"standard output"}, "an output that can be written", lastReason());
}

}  // namespace workbench
