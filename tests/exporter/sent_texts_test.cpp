/// The table of macros: through the exporter, its file and the module as the host loads it, to the command
/// line.
#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"
#include "tests/exporter/made_menus.h"
#include "tests/module_life/loaded_module.h"
#include "tests/support/system.h"
#include "workbench/report/menu_functions.h"

#include "rxdefs.h"

#include <gmock/gmock.h>

namespace clock_ = standin::clock;
namespace controller = standin::controller;
namespace host = standin::host;
using ::testing::ElementsAreArray;

namespace {

constexpr std::int32_t kFirstFunction = 0x20020;
constexpr const char* kEnter = "\u23ce";
constexpr std::size_t kFewestMacros = 60;

struct Row {
  int number = 0;
  std::string macro;
  std::vector<std::wstring> texts;  ///< none when no key can have the macro
};

/// Of characters up to U+FFFF.
std::wstring wide(const std::string& utf8) {
  std::wstring text;
  for (const char byte : utf8) {
    const auto bits = static_cast<unsigned char>(byte);
    if ((bits & 0xC0) == 0x80)
      text.back() = static_cast<wchar_t>(text.back() << 6 | (bits & 0x3F));
    else
      text += static_cast<wchar_t>(bits < 0x80 ? bits : bits < 0xE0 ? bits & 0x1F : bits & 0x0F);
  }
  return text;
}

std::vector<std::wstring> textsOf(std::string expected) {
  std::vector<std::wstring> texts{L"\x1b\x1b"};
  for (std::size_t end; (end = expected.find(kEnter)) != std::string::npos;) {
    texts.push_back(wide(expected.substr(0, end)) + L"\n");
    expected.erase(0, end + std::string(kEnter).size());
  }
  return texts;
}

std::vector<Row> readTable() {
  std::vector<Row> rows;
  for (const std::string& line : MadeMenus::lines(MadeMenus::read(LM_MACRO_TABLE))) {
    if (line.front() == '#') continue;
    const std::size_t end = line.find('\t');
    Row row{static_cast<int>(rows.size()), line.substr(0, end), {}};
    if (line.substr(end + 1) != "-") row.texts = textsOf(line.substr(end + 1));
    rows.push_back(row);
  }
  return rows;
}

class Sent : public host::Listener {
 public:
  void textSent(const std::wstring& text, bool) override { mTexts.push_back(text); }
  std::vector<std::wstring> mTexts;
};

class SentTexts : public ::testing::Test {
 protected:
  SentTexts() : mProfile(tests::makeTempFolder()) {
    std::filesystem::create_directories(mProfile / "Lumetrapad" / "Applications");
    tests::setEnvironment("USERPROFILE", mProfile.string());
    std::filesystem::copy(mMade.folder() / "autocad.mnu", menuFile());
    clock_::start(clock_::Kind::kReplay, 16);
    controller::reset();
    host::start([] { clock_::drawn(); });
    host::openDocument(std::make_unique<standin::Drawing>());
    host::setListener(&mSent);
  }
  ~SentTexts() override {
    host::setListener(nullptr);
    host::closeDocument();
    clock_::stop();
    std::filesystem::remove_all(mProfile);
  }
  std::filesystem::path menuFile() const { return mProfile / "Lumetrapad" / "Applications" / "autocad.mnu"; }

  /// Presses the key of a function and lets the host be idle until the module has looked.
  std::vector<std::wstring> press(int function) {
    mSent.mTexts.clear();
    clock_::schedule(clock_::nowMs(), [function] {
      controller::deliver({kFirstFunction + function, {}, 0, 0});
    });
    clock_::advanceTo(clock_::nowMs());
    for (int tick = 0; tick < 2; ++tick) {
      clock_::advanceTo(clock_::nextTimer().value_or(clock_::nowMs()));
      clock_::runDueTimer();
    }
    return mSent.mTexts;
  }

  MadeMenus mMade{"table '" LM_MACRO_TABLE "'"};
  std::filesystem::path mProfile;
  Sent mSent;
};

TEST_F(SentTexts, SentTextsOfEveryMacroAreWhatAutoCadWouldHaveRead) {
  const std::vector<Row> rows = readTable();
  ASSERT_GE(rows.size(), kFewestMacros);
  const auto functions = workbench::menuFunctions(MadeMenus::read(menuFile()));
  const LoadedModule module(LM_MODULE_FILE);
  ASSERT_EQ(module.send(AcRx::kInitAppMsg), AcRx::kRetOK);
  ASSERT_TRUE(clock_::settle());
  press(0);
  std::size_t function = 0;
  for (const Row& row : rows) {
    if (row.texts.empty()) continue;
    SCOPED_TRACE("row " + std::to_string(row.number) + ": " + row.macro);
    ASSERT_LT(function, functions.size());
    EXPECT_EQ(functions[function].label, "Other commands > Row " + std::to_string(row.number));
    EXPECT_THAT(press(static_cast<int>(function)), ElementsAreArray(row.texts));
    ++function;
  }
  EXPECT_EQ(function, functions.size()) << "entries for macros that no key can have";
  module.send(AcRx::kUnloadAppMsg);
}

}  // namespace
