/// A program that runs beside the test.
#ifndef TESTS_SUPPORT_PROGRAM_H
#define TESTS_SUPPORT_PROGRAM_H

#include <cstdint>
#include <string>
#include <vector>

namespace tests {

class Program {
 public:
  /// Starts `file` with this process's environment. Throws std::runtime_error when that fails.
  Program(const std::string& file, const std::vector<std::string>& arguments);
  /// Waits for its end.
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// Waits for its end and returns its exit status, -1 when it has none.
  int wait();

 private:
  std::intptr_t mProcess;
  bool mHasEnded = false;
  int mStatus = -1;
};

}  // namespace tests

#endif
