#include "workbench/app.h"

#include <iostream>

int main(int argc, char** argv) {
  return workbench::runWorkbench(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr);
}
