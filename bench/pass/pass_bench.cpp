// The cost of one pass of view motion with all six axes deflected, beside the same three rotations in Eigen.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <Eigen/Geometry>
#include <filesystem>
#include <fstream>

#include "bench/allocation_count.h"
#include "bench/pass/null_host.h"
#include "common_sources/auto_cad_proxy.h"
#include "common_sources/lm_auto_cad.h"
#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"

namespace {

/// A core object with every log level off and object selection switched off.
class Core {
 public:
  Core() {
    std::string name = (std::filesystem::temp_directory_path() / "lm_bench_XXXXXX").string();
    mProfile = mkdtemp(name.data());
    setenv("USERPROFILE", mProfile.c_str(), 1);
    std::filesystem::create_directories(mProfile / "Lumetrapad" / "Applications");
    writeSettings();
    standin::clock::start(standin::clock::Kind::kReplay);
    standin::controller::reset();
    standin::host::start();
    mCoreP = std::make_unique<LmAutoCad>();
    standin::clock::settle();
    mCoreP->setCapData(3, -2, 1, 40, -30, 20, 0, 0);
  }
  ~Core() {
    mCoreP.reset();
    standin::clock::stop();
    std::filesystem::remove_all(mProfile);
  }
  AutoCadProxy& proxy() { return *mCoreP->autoCadProxy(); }

 private:
  void writeSettings() const {
    std::ofstream file(mProfile / "Lumetrapad" / "Applications" / "autocad_addin.ini");
    file << "[PROGRAM]\nname = bench\nversion = 0\ntransSensBase = 20000\nrotSensBase = 10000\nminThreshold "
            "= 0\n"
            "maxContMoveTime = 500\ntoggleRotationCenter = off\ntoggleRotationAxis = off\nscrollTreeAndList "
            "= off\n"
            "useInt3dIntrfce = off\n\n[LOGGING]\nlogFile = log.txt\nmaxSize = 5000\nlogToFile = on\n"
            "logToCnsl = off\n";
    for (const char* const level :
         {"warning", "creation", "trace", "devcom", "intcom", "info", "debug", "tmp"})
      file << level << " = off\n";
    file << "fileToLog =\n";
  }

  std::filesystem::path mProfile;
  std::unique_ptr<LmAutoCad> mCoreP;
};

void PassAllSixAxes(benchmark::State& state) {
  Core core;
  AutoCadProxy& proxy = core.proxy();
  resetNullView();
  proxy.handleDeviceCap();
  const std::uint64_t before = allocationCount();
  for (auto _ : state) benchmark::DoNotOptimize(proxy.handleDeviceCap());
  state.counters["allocations"] = static_cast<double>(allocationCount() - before);
}
BENCHMARK(PassAllSixAxes);

void ThreeRotationsInEigen(benchmark::State& state) {
  Eigen::Vector3d position(10, -20, 15), target(0, 0, 0), up(0, 0, 1);
  const Eigen::Vector3d centre(1, 2, 3);
  for (auto _ : state) {
    const Eigen::Vector3d z = (position - target).normalized();
    const Eigen::Vector3d axes[3] = {z.cross(up).normalized(), up.normalized(), z};
    const double angles[3] = {0.004, 0.003, -0.002};
    for (int i = 0; i < 3; ++i) {
      const Eigen::Matrix3d turn = Eigen::AngleAxisd(angles[i], axes[i]).toRotationMatrix();
      position = centre + turn * (position - centre);
      target = centre + turn * (target - centre);
      up = turn * up;
    }
    benchmark::DoNotOptimize(position);
    benchmark::DoNotOptimize(target);
    benchmark::DoNotOptimize(up);
  }
}
BENCHMARK(ThreeRotationsInEigen);

}  // namespace

BENCHMARK_MAIN();
