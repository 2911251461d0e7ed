#include "sample_data.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace workbench {
namespace {

namespace fs = std::filesystem;

class ReportFile : public ::testing::Test {
 protected:
  const TempFolder mFolder;
};

TEST_F(ReportFile, HoldsThePage) {
  const fs::path file = mFolder / "index.html";
  writeReport(report_sample::bundle(), file);
  EXPECT_EQ(mFolder.bytes("index.html"), reportPage(report_sample::bundle()));
}

TEST_F(ReportFile, ReplacesAnOlderOne) {
  const fs::path file = mFolder / "index.html";
  writeReport(report_sample::bundle(), file);
  writeReport(report_sample::emptyRun(), file);
  EXPECT_EQ(fs::file_size(file), reportPage(report_sample::emptyRun()).size());
}

TEST_F(ReportFile, FailedWriteNamesFileAndReason) {
  const fs::path file = mFolder / "missing/index.html";
  try {
    writeReport(report_sample::emptyRun(), file);
    FAIL() << "nothing was thrown";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(error.what(), file.string() + ": the report cannot be written: No such file or directory");
  }
}

}  // namespace
}  // namespace workbench
