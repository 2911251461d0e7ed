// The cost of one pass of view motion with all six axes deflected, beside the same three rotations in Eigen.
#include "bench/null_core.h"
#include "bench/pass/null_host.h"
#include "tests/support/allocations.h"

#include <Eigen/Geometry>
#include <benchmark/benchmark.h>

namespace {

void PassAllSixAxes(benchmark::State& state) {
  NullCore core;
  core.core().setCapData(3, -2, 1, 40, -30, 20, 0, 0);
  AutoCadProxy& proxy = core.proxy();
  resetNullView();
  proxy.handleDeviceCap();
  const std::uint64_t before = tests::allocations();
  for (auto _ : state) benchmark::DoNotOptimize(proxy.handleDeviceCap());
  state.counters["allocations"] = static_cast<double>(tests::allocations() - before);
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
