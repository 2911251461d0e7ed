// Writes the sample reports into a folder, for the browser to open.

#include "sample_data.h"

#include <cstdio>
#include <exception>
#include <filesystem>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: workbench_report_sample FOLDER\n", stderr);
    return 2;
  }
  try {
    const std::filesystem::path folder = argv[1];
    workbench::writeReport(report_sample::bundle(), folder / "bundle.html");
    workbench::writeReport(report_sample::emptyRun(), folder / "empty.html");
    workbench::writeReport(report_sample::hostileRun(), folder / "hostile.html");
    workbench::writeReport(report_sample::largeRun(10000, 60), folder / "large.html");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
