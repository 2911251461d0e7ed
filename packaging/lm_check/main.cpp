#include "packaging/lm_check/run.h"

#include <cstdlib>
#include <exception>
#include <iostream>

namespace {

int run(int argc, char** argv) try {
  return runCheck(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr);
} catch (const std::exception& error) {
  std::cerr << "lm_check: " << error.what() << "\n";
  return kCouldNotCheck;
}

}  // namespace

int main(int argc, char** argv) {
  const int status = run(argc, argv);
  std::cout.flush();
  // A driver that hangs keeps a thread of ours in its library: nothing is unloaded, and nothing waited for.
  std::_Exit(status);
}
