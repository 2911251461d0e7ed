#include "sample_data.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace workbench {
namespace {

namespace fs = std::filesystem;

/// A folder of the test's own, gone with it.
class ReportFile : public ::testing::Test {
 protected:
  ReportFile()
      : mFolder(fs::temp_directory_path() /
                (std::string("report_") + ::testing::UnitTest::GetInstance()->current_test_info()->name() +
                 "_" + std::to_string(::testing::UnitTest::GetInstance()->start_timestamp()))) {
    fs::create_directories(mFolder);
  }
  ~ReportFile() override {
    std::error_code ignored;
    fs::remove_all(mFolder, ignored);
  }
  const fs::path mFolder;
};

TEST_F(ReportFile, HoldsThePage) {
  const fs::path file = mFolder / "index.html";
  writeReport(report_sample::bundle(), file);
  std::ifstream stream(file, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  EXPECT_EQ(text, reportPage(report_sample::bundle()));
}

TEST_F(ReportFile, ReplacesAnOlderOne) {
  const fs::path file = mFolder / "index.html";
  writeReport(report_sample::bundle(), file);
  writeReport(report_sample::emptyRun(), file);
  EXPECT_EQ(fs::file_size(file), reportPage(report_sample::emptyRun()).size());
}

TEST_F(ReportFile, ThatCannotBeWrittenIsNamedWithTheReason) {
  const fs::path file = mFolder / "missing" / "index.html";
  try {
    writeReport(report_sample::emptyRun(), file);
    FAIL() << "nothing was thrown";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(error.what(), file.string() + ": the report cannot be written: No such file or directory");
  }
}

}  // namespace
}  // namespace workbench
