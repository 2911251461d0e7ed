/// What is wrong with a file or an argument that the user gave: one line that names the file, the line, what
/// was expected there and what was found.
#ifndef WORKBENCH_INPUT_ERROR_H
#define WORKBENCH_INPUT_ERROR_H

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace workbench {

/// A place in a file, for messages. Line 0 means the file as a whole.
struct FilePlace {
  std::string_view file;
  std::size_t line = 0;
};

/// `what()` is "FILE:LINE: expected EXPECTED, found FOUND", without ":LINE" when the place is the whole file.
class InputError : public std::runtime_error {
 public:
  InputError(const FilePlace& place, const std::string& expected, const std::string& found);

  const std::string& file() const { return mFile; }
  std::size_t line() const { return mLine; }
  const std::string& expected() const { return mExpected; }

 private:
  std::string mFile;
  std::size_t mLine;
  std::string mExpected;
};

/// The text in double quotes, fit for one line of a terminal: bytes that are not printable ASCII as \xNN, cut
/// after 40 bytes with "...".
std::string inQuotes(std::string_view text);

}  // namespace workbench

#endif
