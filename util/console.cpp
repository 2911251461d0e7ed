#include "util/console.h"

#include <cstdio>
#include <string>

namespace {

void writeLine(std::FILE* streamP, std::string_view text) noexcept try {
  // One buffer and one write: lines of several threads stay whole.
  std::string line(text);
  line += '\n';
  std::fwrite(line.data(), 1, line.size(), streamP);
  // Flushed at once, because the process may be ended before the stream is closed.
  std::fflush(streamP);
} catch (...) {
  // A line that finds no memory is dropped like one that finds no room.
}

}  // namespace

void printLine(std::string_view text) noexcept {
  writeLine(stdout, text);
}

void printErrorLine(std::string_view text) noexcept {
  writeLine(stderr, text);
}
