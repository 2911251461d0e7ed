// Writes the sample reports into a folder, for the browser to open.

#include "sample_data.h"
#include "workbench/text_output.h"

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
    workbench::writeFile(folder / "bundle.html", workbench::reportPage(report_sample::bundle()));
    workbench::writeFile(folder / "empty.html", workbench::reportPage(report_sample::emptyRun()));
    workbench::writeFile(folder / "hostile.html", workbench::reportPage(report_sample::hostileRun()));
    workbench::writeFile(folder / "long.html", workbench::reportPage(report_sample::longRun()));
    workbench::writeFile(folder / "compared.html", report_sample::comparedPage());
    workbench::writeFile(folder / "large.html", workbench::reportPage(report_sample::largeRun(10000, 60)));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
