// What another process does between two steps of a rotation.
#include "LM_Daemon/src/rotating_log_file.h"
#include "tests/logging/log_fixture.h"

namespace {

using Rotation = RotatingLogFile::Rotation;

/// How many looks at the name find it unchanged; negative for all.
int unchangedLooks = -1;

class FileReplacedInBetween : public LogFile {
 public:
  bool open(const std::string& path) override { return mFileP->open(path); }
  void close() override { mFileP->close(); }
  void write(std::string_view text) override { mFileP->write(text); }
  std::int64_t position(bool isExact) override { return mFileP->position(isExact); }
  bool hasItsName() override { return unchangedLooks < 0 || unchangedLooks-- > 0; }
  bool isNamed(const std::string& path) override { return mFileP->isNamed(path); }

  static std::unique_ptr<LogFile> make() { return std::make_unique<FileReplacedInBetween>(); }

 private:
  std::unique_ptr<LogFile> mFileP = makeLogFile();
};

TEST(LogRace, RotationBeforeTheClaimIsNotMadeTwice) {
  const TempFolder folder;
  RotatingLogFile log(FileReplacedInBetween::make);
  log.open(folder.path("a.log"), "a.log", 1000);
  log.write("text\n");
  unchangedLooks = 1;
  EXPECT_EQ(log.rotate(), Rotation::kNone);
  unchangedLooks = -1;
  EXPECT_FALSE(folder.has("a.bak")) << "the other process has just made it";
}

}  // namespace
