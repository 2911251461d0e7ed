// The runtime that is linked into the module: what the compiler and libc++'s headers need of it.
#include "tests/runtime/runtime_probe.h"
#include "tests/support/handle_count.h"
#include "tests/support/system.h"

#include <gmock/gmock.h>

#include <climits>
#include <cstdio>
#include <string>

namespace {

using ::testing::StrEq;

class Runtime : public ::testing::Test {
 protected:
#define FIND(RESULT, NAME, PARAMETERS) \
  RESULT(*NAME) PARAMETERS = reinterpret_cast<RESULT(*) PARAMETERS>(tests::symbolOf(sLibraryP, #NAME));
  static inline void* const sLibraryP = tests::openLibrary(LM_PROBE_FILE);
  LM_RUNTIME_PROBES(FIND)
#undef FIND
};

TEST_F(Runtime, ALocalStaticIsInitialisedOnceByRacingThreads) {
  const LocalStaticRace race = raceForALocalStatic(8, 0);
  EXPECT_EQ(race.initialisations, 1);
  EXPECT_EQ(race.complete, 8);
}

TEST_F(Runtime, ALocalStaticWhoseInitialiserThrowsIsTriedAgain) {
  const LocalStaticRace race = raceForALocalStatic(8, 2);
  EXPECT_EQ(race.initialisations, 3);
  EXPECT_EQ(race.exceptions, 2);
  EXPECT_EQ(race.complete, 6);
}

TEST_F(Runtime, ExceptionsAreCaughtByTheirClassAndKeepTheirText) {
  EXPECT_THAT(throwAndCatch("int"), StrEq("int: 7"));
  EXPECT_THAT(throwAndCatch("length_error"), StrEq("logic_error: length_error thrown"));
  EXPECT_THAT(throwAndCatch("out_of_range"), StrEq("logic_error: out_of_range thrown"));
  EXPECT_THAT(throwAndCatch("own"), StrEq("exception: one's own thrown"));
  EXPECT_THAT(throwAndCatch("bad_alloc"), StrEq("exception: std::bad_alloc"));
}

TEST_F(Runtime, AnExceptionPassesTheFramesOfAnotherCompiler) {
  EXPECT_THAT(throwThrough([](void (*call)(void*), void* argument) { call(argument); }),
              StrEq("out_of_range thrown"));
}

TEST_F(Runtime, AnExceptionIsThrownOn) {
  EXPECT_THAT(rethrow(), StrEq("length_error thrown"));
}

TEST_F(Runtime, AThrowDestroysTheObjectsOnItsWay) {
  EXPECT_EQ(objectsLeftByAThrow(), 0);
}

TEST_F(Runtime, NewThatFailsThrowsOrIsNull) {
  EXPECT_TRUE(hugeNewThrows());
  EXPECT_TRUE(hugeNothrowNewIsNull());
}

TEST_F(Runtime, DoublesAreWrittenAsPrintfWritesThem) {
  for (const double value : {0.0,
                             -0.0,
                             1.0,
                             -1.5,
                             0.1,
                             1.0 / 3,
                             100000.0,
                             999999.5,
                             1e6,
                             123456789.0,
                             1e15,
                             1e16,
                             1e-4,
                             1e-5,
                             -2.5e-7,
                             1e99,
                             1e100,
                             -1.7976931348623157e308,
                             2.2250738585072014e-308,
                             4.9406564584124654e-324}) {
    for (const int precision : {1, 6, 10, 17}) {
      char expected[64];
      std::snprintf(expected, sizeof expected, "%.*g", precision, value);
      char text[64];
      const int length = writeDouble(value, precision, text, sizeof text);
      ASSERT_GE(length, 0) << expected;
      EXPECT_EQ(std::string(text, static_cast<std::size_t>(length)), expected) << "precision " << precision;
    }
  }
}

TEST_F(Runtime, ADoubleThatDoesNotFitIsRefused) {
  char text[4];
  EXPECT_EQ(writeDouble(1.25, 6, text, 4), 4);
  EXPECT_EQ(writeDouble(-1.25, 6, text, 4), -1);
}

TEST_F(Runtime, IntegersAreWrittenAsPrintfWritesThem) {
  for (const long long value : {0LL, 9LL, 10LL, -1LL, 4294967295LL, 4294967296LL, LLONG_MAX, LLONG_MIN})
    EXPECT_EQ(writeInteger(value), std::to_string(value));
  for (const unsigned long long value : {0ULL, 99999999ULL, 100000000ULL, 10000000000000000ULL, ULLONG_MAX})
    EXPECT_EQ(writeUnsigned(value), std::to_string(value));
}

TEST_F(Runtime, JoinedThreadsLeaveNoHandle) {
  EXPECT_EQ(runAndJoinThreads(1), 1);
  const int before = tests::handleCount();
  EXPECT_EQ(runAndJoinThreads(1000), 1000);
  EXPECT_EQ(tests::handleCount(), before);
}

TEST_F(Runtime, DetachedThreadsLeaveNoHandle) {
  EXPECT_EQ(runAndDetachThreads(1), 1);
  const int before = tests::handleCount();
  EXPECT_EQ(runAndDetachThreads(100), 100);
  EXPECT_EQ(tests::handleCount(), before);
}

TEST_F(Runtime, SemaphoresHandATokenToAndFro) {
  EXPECT_EQ(handATokenToAndFro(1000), 1000);
}

}  // namespace
