#include "tests/workbench/fake_module_process.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace workbench {
namespace {

constexpr const char* kSession = "10 select all\n20 motion 1 0 0 0 0 0\n150 motion 0 0 0 0 0 0\n300 end\n";

struct Fault {
  const char* name;
  const char* problem;
};

void PrintTo(const Fault& fault, std::ostream* stream) {
  *stream << fault.name;
}

class Misbehaviour : public testing::TestWithParam<Fault> {};

TEST_P(Misbehaviour, MisbehaviourMakesTheRunUncleanAndIsReported) {
  const FakeModuleProcess process;
  const Outcome outcome = process.replay(kSession, "", GetParam().name);
  EXPECT_EQ(outcome.status, 1);
  const std::string problem = GetParam().problem;
  EXPECT_NE(outcome.err.find("workbench: problem: " + problem + "\n"), std::string::npos) << outcome.err;
  const auto summary = nlohmann::json::parse(process.read("out/summary.json"));
  EXPECT_FALSE(summary.at("clean").get<bool>());
  const auto problems = summary.at("problems").get<std::vector<std::string>>();
  EXPECT_NE(std::find(problems.begin(), problems.end(), problem), problems.end());
  EXPECT_NE(outcome.out.find("clean: no\n"), std::string::npos);
}

std::string nameOf(const testing::TestParamInfo<Fault>& tested) {
  std::string name = tested.param.name;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, Misbehaviour,
                         testing::Values(Fault{"init-error", "the init message returned 3, not 0"},
                                         Fault{"init-throw", "the init message threw: not today"},
                                         Fault{"unload-error", "the unload message returned 3, not 0"},
                                         Fault{"throw-in-timer", "a timer procedure threw: no more"},
                                         Fault{"leave-timer", "1 timers left after the unload message"},
                                         Fault{"leave-thread", "1 threads left after the unload message"},
                                         Fault{"leave-lock", "the document lock is held at the end, depth 1"},
                                         Fault{"leave-object", "1 objects left open"},
                                         Fault{"leave-set", "1 selection sets not freed"},
                                         Fault{"leave-reactor", "1 document reactors left registered"},
                                         Fault{"leave-command", "1 commands left registered"},
                                         Fault{"print-off-main", "2 host calls off the main thread"},
                                         Fault{"pin", "the module is still mapped after it was freed"}),
                         nameOf);

TEST(Misbehaving, RepeatedBreachIsReportedOnceWithCountAndFirstTime) {
  const FakeModuleProcess process;
  const Outcome outcome = process.replay(kSession, "", "print-off-main");
  const std::string problem =
      "problem: host: acutPrintf: called off the main thread (2 times, first at 20 ms)\n";
  EXPECT_EQ(outcome.err.find(problem), outcome.err.rfind(problem));
  EXPECT_NE(outcome.err.find(problem), std::string::npos) << outcome.err;
  const auto breaches = nlohmann::json::parse(process.read("out/summary.json")).at("host_breaches");
  ASSERT_EQ(breaches.size(), 1u);
  EXPECT_EQ(breaches[0].at("count"), 2);
  EXPECT_EQ(breaches[0].at("first_ms"), 20);
}

}  // namespace
}  // namespace workbench
