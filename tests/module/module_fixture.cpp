#include "tests/module/module_fixture.h"

#include "standin_clock.h"
#include "standin_process.h"

#include "dbxEntryPoint.h"

#include <algorithm>
#include <fstream>
#include <sstream>

HINSTANCE _hdllInstance = nullptr;

namespace clock_ = standin::clock;
namespace host = standin::host;
namespace controller = standin::controller;

namespace {

/// Whether the padded column ends in the method's name.
bool isOfMethod(const std::string& column, const std::string& method) {
  const std::string name = column.substr(0, column.find_last_not_of(' ') + 1);
  const std::string ending = "::" + method;
  return method.empty() || (name.size() >= ending.size() &&
                            name.compare(name.size() - ending.size(), ending.size(), ending) == 0);
}

std::unique_ptr<standin::Drawing> smallDrawing() {
  auto drawing = std::make_unique<standin::Drawing>();
  drawing->add(standin::makeLine({0x10, "0", 256}, {1, 1, 0}, {1, 1, 5}));
  drawing->add(standin::makeLine({0x11, "0", 256}, {-5, -5, 0}, {5, 5, 0}));
  drawing->add(standin::makeCircle({0x12, "0", 256}, {9, 0, 0}, {0, 0, 1}, 2));
  return drawing;
}

}  // namespace

ModuleTest::ModuleTest() {
  installModule();
  writeSettings();
  restart();
}

void ModuleTest::restart(std::uint32_t frameMs) {
  mProfile.removeLog();
  clock_::start(clock_::Kind::kReplay, frameMs);
  controller::reset();
  host::start([] { clock_::drawn(); });
  host::openDocument(smallDrawing());
  host::setListener(&mHost);
}

void ModuleTest::installModule() {
  const std::filesystem::path folder = mProfile / "plug-in";
  std::filesystem::create_directory(folder);
  std::ofstream(folder / "MenuScribe2015.dll") << "exporter";
  std::wstring path = (folder / "LMTRAutoCAD2013.arx").wstring();
  std::replace(path.begin(), path.end(), L'/', L'\\');
  standin::windows::setModulePath(_hdllInstance, path);
}

ModuleTest::~ModuleTest() {
  if (mCoreP) unload();
  host::setListener(nullptr);
  host::closeDocument();
  clock_::stop();
}

void ModuleTest::writeSettings(const tests::SettingsChanges& changes) {
  tests::SettingsChanges values = tests::everyLogLevel("on");
  for (const auto& [key, value] : changes) values[key] = value;
  mProfile.writeSettings(tests::settingsText(values));
}

void ModuleTest::load() {
  mCoreP = std::make_unique<LmAutoCad>();
  ASSERT_TRUE(clock_::settle());
}

void ModuleTest::unload() {
  mCoreP.reset();
  EXPECT_EQ(clock_::otherThreads(), 0u);
  EXPECT_EQ(clock_::timerCount(), 0u);
}

void ModuleTest::idle(std::int64_t ms) {
  const std::int64_t end = clock_::nowMs() + ms;
  while (clock_::nowMs() < end) {
    const std::int64_t due = clock_::nextDue().value_or(end);
    clock_::advanceTo(std::min(std::max(due, clock_::nowMs()), end));
    while (clock_::runDueTimer()) {
    }
  }
}

void ModuleTest::deflect(std::array<std::int16_t, 6> axes) {
  clock_::schedule(clock_::nowMs(), [axes] { controller::deliver({-1, axes, 0, 0}); });
  clock_::advanceTo(clock_::nowMs());
}

void ModuleTest::deviceEvent(std::int32_t code) {
  clock_::schedule(clock_::nowMs(), [code] { controller::deliver({code, {}, 0, 0}); });
  clock_::advanceTo(clock_::nowMs());
}

std::vector<ModuleTest::LogLine> ModuleTest::logLines() const {
  std::istringstream file(mProfile.log());
  std::vector<LogLine> lines;
  for (std::string line; std::getline(file, line);) {
    std::vector<std::string> columns;
    std::istringstream stream(line);
    for (std::string column; columns.size() < 6 && std::getline(stream, column, '|');)
      columns.push_back(column);
    std::string text;
    if (columns.size() < 6 || columns[0].find(':') == std::string::npos || !std::getline(stream, text))
      continue;
    lines.push_back({columns[1], columns[5], text.substr(1)});
  }
  return lines;
}

std::vector<std::string> ModuleTest::logTexts(const std::string& type, const std::string& method) const {
  std::vector<std::string> texts;
  for (const LogLine& line : logLines())
    if ((type.empty() || line.type == type) && isOfMethod(line.method, method)) texts.push_back(line.text);
  return texts;
}

bool ModuleTest::hasLogged(const std::string& text) const {
  return countLogged(text) != 0;
}

std::size_t ModuleTest::countLogged(const std::string& text) const {
  const std::vector<std::string> texts = logTexts();
  return static_cast<std::size_t>(std::count(texts.begin(), texts.end(), text));
}
