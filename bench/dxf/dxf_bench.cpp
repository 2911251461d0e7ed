/// Reading a drawing: the workbench's reader, which builds the drawing with its geometry, beside dxflib,
/// which calls back for each entity and keeps nothing. Both read the same file.
///   dxf_bench [benchmark's options]
#include "workbench/dxf/reader.h"

#include <benchmark/benchmark.h>
#include <dl_creationadapter.h>
#include <dl_dxf.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLines = 2000000;

/// Writes entities of the usual kinds, in the order in which they come in plans: mostly lines and polylines.
class Plan {
 public:
  void write(const fs::path& file) {
    text("0\nSECTION\n2\nENTITIES\n");
    while (mLines < kLines) addEntity(mEntities++);
    text("0\nENDSEC\n0\nEOF\n");
    std::ofstream(file, std::ios::binary) << mText;
  }

 private:
  void text(const std::string& groups) {
    for (const char c : groups) mLines += c == '\n' ? 1 : 0;
    mText += groups;
  }
  void real(int code, double value) {
    char group[60];
    std::snprintf(group, sizeof group, "%3d\n%.10f\n", code, value);
    text(group);
  }
  /// A place that follows from a number, spread over a square of 1000 units.
  static double place(std::size_t number, double step) {
    const double at = static_cast<double>(number) * step;
    return at - 1000 * static_cast<double>(static_cast<long long>(at / 1000));
  }
  void point(int code, std::size_t number) {
    real(code, place(number, 61.803398875));
    real(code + 10, place(number, 17.320508076));
  }
  void begin(const char* type, const char* subclass) {
    char head[200];
    std::snprintf(head, sizeof head, "  0\n%s\n  5\n%zX\n330\n1F\n100\nAcDbEntity\n  8\nLayer_%zu\n100\n%s\n",
                  type, mEntities + 0x100, mEntities % 20, subclass);
    text(head);
  }

  void addEntity(std::size_t number) {
    switch (number % 8) {
      case 0:
        return addCircle(number);
      case 1:
        return addArc(number);
      case 2:
      case 3:
        return addPolyline(number);
      default:
        return addLine(number);
    }
  }
  void addLine(std::size_t number) {
    begin("LINE", "AcDbLine");
    point(10, number);
    real(30, 0);
    point(11, number + 1);
    real(31, 0);
  }
  void addCircle(std::size_t number) {
    begin("CIRCLE", "AcDbCircle");
    point(10, number);
    real(30, 0);
    real(40, 2.5);
  }
  void addArc(std::size_t number) {
    addCircle(number);
    // The record of the circle goes on: an arc has its groups and two angles.
    mText.replace(mText.rfind("CIRCLE"), 6, "ARC");
    text("100\nAcDbArc\n");
    real(50, 30);
    real(51, 120);
  }
  void addPolyline(std::size_t number) {
    begin("LWPOLYLINE", "AcDbPolyline");
    text(" 90\n8\n 70\n0\n 43\n0.0\n");
    for (std::size_t i = 0; i < 8; ++i) point(10, number + i);
  }

  std::string mText;
  std::size_t mLines = 0;
  std::size_t mEntities = 0;
};

/// The file that both read, removed at the end.
class PlanFile {
 public:
  PlanFile() : mPath(fs::temp_directory_path() / ("dxf_bench_" + std::to_string(getpid()) + ".dxf")) {
    Plan().write(mPath);
  }
  ~PlanFile() {
    std::error_code ignored;
    fs::remove(mPath, ignored);
  }
  PlanFile(const PlanFile&) = delete;
  PlanFile& operator=(const PlanFile&) = delete;
  const fs::path& path() const { return mPath; }

 private:
  fs::path mPath;
};

const fs::path& planFile() {
  static const PlanFile kFile;
  return kFile.path();
}

void readWithTheWorkbench(benchmark::State& state) {
  const fs::path& file = planFile();
  std::size_t entities = 0;
  for (auto _ : state) entities = workbench::readDrawing(file)->entities().size();
  state.counters["entities"] = static_cast<double>(entities);
}
BENCHMARK(readWithTheWorkbench)->Unit(benchmark::kMillisecond);

/// Counts, so that the calls are not left out.
class Counter : public DL_CreationAdapter {
 public:
  void addLine(const DL_LineData&) override { ++entities; }
  void addCircle(const DL_CircleData&) override { ++entities; }
  void addArc(const DL_ArcData&) override { ++entities; }
  void addPolyline(const DL_PolylineData&) override { ++entities; }
  std::size_t entities = 0;
};

void readWithDxflib(benchmark::State& state) {
  const fs::path& file = planFile();
  std::size_t entities = 0;
  for (auto _ : state) {
    Counter counter;
    DL_Dxf().in(file.string(), &counter);
    entities = counter.entities;
  }
  state.counters["entities"] = static_cast<double>(entities);
}
BENCHMARK(readWithDxflib)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
