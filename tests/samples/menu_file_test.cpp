/// When the module takes up a menu file, and what its functions do then.
#include "tests/support/workbench_process.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

constexpr const char* kModes = "[Modes]\nSheet = a\nModel = b\n\n";

class MenuFile : public testing::Test {
 protected:
  void play(const std::string& session, const std::string& menu) {
    const auto samples = std::filesystem::path(LM_SAMPLES);
    const auto outcome = mProcess.replay({samples / "bracket.dxf", mProcess.write("a.session", session),
                                          mProcess.write("a.mnu", menu), "out"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
  }

  /// What the module sent for the keys, with its times; the text that loads the exporter is left out.
  std::string sent() const {
    std::string text;
    std::istringstream lines(mProcess.read("out/commandline.log"));
    for (std::string line; std::getline(lines, line);)
      if (line.find(" send") != std::string::npos && line.find("netload") == std::string::npos)
        text += line + "\n";
    return text;
  }

  std::size_t logged(const std::string& text) const {
    const std::string log = mProcess.read("out/profile/Lumetrapad/autocad_addin_log.txt");
    std::size_t count = 0;
    for (std::size_t at = log.find(text); at != std::string::npos; at = log.find(text, at + 1)) ++count;
    return count;
  }

 private:
  WorkbenchProcess mProcess;
};

TEST_F(MenuFile, LateFileServesFromThenOn) {
  play("1000 function 0\n3000 menu\n3500 function 0\n4000 end\n",
       std::string(kModes) + "[MenuBar]\na = {A}_ZOOM;_ALL\n");
  EXPECT_EQ(logged("keyEvent (0') too big (max. is -1)!"), 1u);
  EXPECT_EQ(logged("autocad.mnu' with 1 entries loaded."), 1u)
      << "once it has names of modes it is not read again";
  const std::string texts = sent();
  EXPECT_EQ(texts.substr(0, 2), "35") << texts;
  EXPECT_NE(texts.find(" send-activate \"_ZOOM\\n\"\n"), std::string::npos) << texts;
}

TEST_F(MenuFile, FileWithoutModesIsReadAtEveryTickAndServes) {
  play("500 function 0\n2000 end\n", "[MenuBar]\na = {A}_ZOOM;_ALL\n");
  // A tick each 100 ms, from 100 to 2000.
  EXPECT_GE(logged("autocad.mnu' with 1 entries loaded."), 18u);
  EXPECT_LE(logged("autocad.mnu' with 1 entries loaded."), 20u);
  EXPECT_NE(sent().find("\"_ALL\\n\""), std::string::npos);
}

TEST_F(MenuFile, TwentyThousandEntriesAreReadOnce) {
  std::string menu = std::string(kModes) + "[MenuBar]\n";
  for (int i = 0; i < 20000; ++i)
    menu += "Item." + std::to_string(i) + " = {Item " + std::to_string(i) + "}OFFICE_" + std::to_string(i) +
            "|Help\n";
  play("1000 function 19999\n1500 function 20000\n2000 end\n", menu);
  EXPECT_EQ(logged("autocad.mnu' with 20000 entries loaded."), 1u);
  EXPECT_EQ(logged("keyEvent (20000') too big (max. is 19999)!"), 1u);
  EXPECT_NE(sent().find("\"OFFICE_19999\\n\""), std::string::npos);
}

}  // namespace
