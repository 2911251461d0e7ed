/// Random menus through the exporter and the two readers of its file, the module's and the report's.
#include "common_sources/menu_table.h"
#include "tests/exporter/made_menus.h"
#include "workbench/report/menu_functions.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

namespace {

constexpr int kMenus = 1000;

struct Expected {
  std::vector<std::string> labels;
  std::vector<std::string> macros;
};

Expected expectedOf(const std::filesystem::path& folder) {
  Expected expected;
  for (const std::string& line : MadeMenus::lines(MadeMenus::read(folder / "expected"))) {
    const std::size_t end = line.find('\t');
    expected.labels.push_back(line.substr(0, end));
    expected.macros.push_back(line.substr(end + 1));
  }
  return expected;
}

void expectReportAgrees(const std::filesystem::path& folder, const Expected& expected) {
  const auto functions = workbench::menuFunctions(MadeMenus::read(folder / "autocad.mnu"));
  ASSERT_EQ(functions.size(), expected.labels.size());
  for (std::size_t i = 0; i < functions.size(); ++i) {
    EXPECT_NE(functions[i].label.find(expected.labels[i]), std::string::npos)
        << functions[i].label << " is not " << expected.labels[i];
    EXPECT_EQ(functions[i].macro, expected.macros[i]);
  }
}

TEST(RandomMenus, RandomMenusAreReadEntryForEntryAsTheyWereWritten) {
  const MadeMenus made("random " + std::to_string(kMenus) + " 1");
  std::size_t entries = 0;
  for (int i = 0; i < kMenus && !HasFailure(); ++i) {
    const std::filesystem::path folder = made.folder() / std::to_string(i);
    SCOPED_TRACE(folder.string());
    const auto table = readMenuFile(folder.string() + "\\autocad.mnu");
    ASSERT_TRUE(table);
    const Expected expected = expectedOf(folder);
    EXPECT_THAT(table->modes, ElementsAre("Unknown", "2D", "3D"));
    EXPECT_THAT(table->macros, ElementsAreArray(expected.macros));
    expectReportAgrees(folder, expected);
    entries += expected.macros.size();
  }
  EXPECT_GT(entries, 10u * kMenus) << "menus with too little in them";
}

}  // namespace
