#include "workbench/text_output.h"

#include "workbench/input_error.h"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace workbench {

void writeFile(const std::filesystem::path& file, std::string_view text) {
  errno = 0;
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream.write(text.data(), static_cast<std::streamsize>(text.size()));
  stream.close();
  if (stream) return;
  const int reason = errno != 0 ? errno : EIO;
  throw InputError({file.string()}, "a file that can be written", std::generic_category().message(reason));
}

}  // namespace workbench
