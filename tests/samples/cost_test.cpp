/// What a run costs the machine: memory in proportion to its inputs, as docs/sessions.md says, and no work
/// while nothing happens.
#include "tests/support/workbench_process.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;

// docs/sessions.md, "Drawings".
constexpr double kBase = 60e6;
constexpr double kPerDrawingByte = 50;
constexpr double kPerPoint = 300;

/// A drawing, and how many points it is drawn with.
struct Drawn {
  std::string text;
  std::size_t points = 0;
};

/// Most bytes that a child of this process has had in memory.
double peakOfChildren() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  return static_cast<double>(usage.ru_maxrss) * 1024;
}

/// Few bytes and many points each: a circle is drawn as 64 chords.
Drawn circles(std::size_t count) {
  std::string text = "0\nSECTION\n2\nENTITIES\n";
  for (std::size_t i = 0; i < count; ++i)
    text += "0\nCIRCLE\n10\n" + std::to_string(i % 997) + "\n20\n" + std::to_string(i % 991) + "\n40\n2\n";
  return {text + "0\nENDSEC\n0\nEOF\n", count * 65};
}

/// Next to no bytes: arrays of 10,000 copies of a block of nine points.
Drawn unfolding(std::size_t arrays) {
  std::string text = "0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n2\nB\n10\n0\n20\n0\n";
  for (int i = 0; i < 9; ++i) text += "0\nPOINT\n10\n" + std::to_string(i) + "\n20\n0\n";
  text += "0\nENDBLK\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n";
  for (std::size_t i = 0; i < arrays; ++i)
    text += "0\nINSERT\n2\nB\n10\n0\n20\n0\n70\n100\n71\n100\n44\n1\n45\n1\n";
  return {text + "0\nENDSEC\n0\nEOF\n", arrays * 90000};
}

void expectBounded(const Drawn& drawing) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "a sanitizer has memory of its own";
#endif
  const WorkbenchProcess process;
  process.write("a.dxf", drawing.text);
  process.write("a.session", "9 end\n");
  const auto outcome = process.run("replay --quiet --drawing a.dxf --session a.session --out out");
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_LT(peakOfChildren(), kBase + kPerDrawingByte * static_cast<double>(drawing.text.size()) +
                                  kPerPoint * static_cast<double>(drawing.points));
}

TEST(Memory, OfARunIsBoundedByItsDrawing) {
  expectBounded(circles(3000));
}

TEST(Memory, OfASmallDrawingThatUnfoldsIsBounded) {
  expectBounded(unfolding(1));
}

TEST(Idleness, OfAnHourWakesNoThreadInVain) {
  const WorkbenchProcess process;
  process.write("a.dxf", "0\nEOF\n");
  process.write("a.session", "3600000 end\n");
  ASSERT_EQ(process.run("replay --quiet --drawing a.dxf --session a.session --out out").status, 0);
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  // The watch thread looks every two seconds, which is 1,800 times and two switches each. A device that is
  // read every 50 ms would make 144,000.
  EXPECT_LT(usage.ru_nvcsw, 30000);
}

}  // namespace
