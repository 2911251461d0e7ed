#include "workbench/app.h"

#include <iostream>

// Arguments are UTF-8 on the POSIX systems that matter here, so they are passed on unchanged.
int main(int argc, char** argv) {
  return workbench::runWorkbench(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr);
}
