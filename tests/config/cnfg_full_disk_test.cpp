// A limit of the size of files stands for the full disk.
#include "config/cnfg.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace {

TEST(CnfgFullDisk, ASaveThatIsNotWrittenIsReported) {
  const TempFolder folder;
  folder.write("a.ini", "k=1\n");
  Cnfg cnfg;
  ASSERT_EQ(cnfg.open(folder.path("a.ini")), Cnfg::kOk);
  cnfg.loadForEditing();
  cnfg.setParameter("k", "2");
  rlimit before = {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const auto ignoreBefore = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit none = {0, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &none), 0);
  const std::int32_t saved = cnfg.save();
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, ignoreBefore);
  EXPECT_EQ(saved, Cnfg::kFileNotFound);
  // Not truncated, and the object reads on.
  EXPECT_EQ(folder.read("a.ini"), "k=1\n");
  std::string value;
  EXPECT_EQ(cnfg.readParameter("k", value, ""), Cnfg::kOk);
}

}  // namespace
