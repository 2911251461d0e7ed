#include "tests/runtime/runtime_probe.h"

#include <pthread.h>
#include <semaphore.h>
#include <windows.h>

#include <charconv>
#include <cstdint>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#define DECLARE(RESULT, NAME, PARAMETERS) extern "C" __declspec(dllexport) RESULT NAME PARAMETERS;
LM_RUNTIME_PROBES(DECLARE)
#undef DECLARE

namespace {

// --- local statics ---

constexpr long kEnded = 4711;
/// How often the initialiser lets others run: they are to come while it is under way.
constexpr int kYields = 200;

struct Race {
  long threads;
  volatile long failuresLeft;
  volatile long arrived, initialisations, exceptions, complete;
};
Race theRace;

/// The initialiser waits until every thread is on its way to it.
struct SlowlyMade {
  SlowlyMade() {
    InterlockedIncrement(&theRace.initialisations);
    while (theRace.arrived < theRace.threads) SwitchToThread();
    for (int i = 0; i < kYields; ++i) SwitchToThread();
    if (InterlockedDecrement(&theRace.failuresLeft) >= 0) throw std::length_error("not made");
    mValue = kEnded;
  }
  volatile long mValue = 0;
};

/// A number of its own gives each race a local static that no thread has been to.
template <int kNumber>
void* comeToTheStatic(void* /*unused*/) {
  InterlockedIncrement(&theRace.arrived);
  try {
    static const SlowlyMade made;
    if (made.mValue == kEnded) InterlockedIncrement(&theRace.complete);
  } catch (const std::exception&) {
    InterlockedIncrement(&theRace.exceptions);
  }
  return nullptr;
}

// --- exceptions ---

std::string theText;

const char* keep(const std::string& text) {
  theText = text;
  return theText.c_str();
}

struct Counted {
  Counted() { ++sAlive; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  ~Counted() { --sAlive; }
  static inline int sAlive = 0;
};

struct OwnException : std::exception {
  const char* what() const noexcept override { return "one's own thrown"; }
};

[[noreturn]] void throwKind(const std::string& kind) {
  const Counted local;
  if (kind == "int") throw 7;
  if (kind == "length_error") throw std::length_error("length_error thrown");
  if (kind == "out_of_range") throw std::out_of_range("out_of_range thrown");
  if (kind == "bad_alloc") throw std::bad_alloc();
  throw OwnException();
}

void throwFrom(void* kindP) {
  const Counted local;
  throwKind(static_cast<const char*>(kindP));
}

// --- threads ---

void* count(void* countP) {
  InterlockedIncrement(static_cast<long*>(countP));
  return nullptr;
}

struct Token {
  sem_t there, back;
  int times;
  int value;
};

void* giveBack(void* tokenP) {
  Token& token = *static_cast<Token*>(tokenP);
  for (int i = 0; i < token.times; ++i) {
    sem_wait(&token.there);
    token.value = -token.value;
    sem_post(&token.back);
  }
  return nullptr;
}

}  // namespace

LocalStaticRace raceForALocalStatic(int threads, int failures) {
  theRace = {threads, failures, 0, 0, 0, 0};
  std::vector<pthread_t> all(static_cast<std::size_t>(threads));
  for (pthread_t& thread : all)
    pthread_create(&thread, nullptr, failures == 0 ? comeToTheStatic<0> : comeToTheStatic<1>, nullptr);
  for (const pthread_t thread : all) pthread_join(thread, nullptr);
  return {theRace.initialisations, theRace.exceptions, theRace.complete};
}

const char* throwAndCatch(const char* kind) {
  try {
    throwKind(kind);
  } catch (const std::logic_error& error) {
    return keep(std::string("logic_error: ") + error.what());
  } catch (const std::exception& error) {
    return keep(std::string("exception: ") + error.what());
  } catch (int number) {
    return keep("int: " + std::to_string(number));
  }
}

const char* throwThrough(Caller caller) {
  char kind[] = "out_of_range";
  try {
    caller(throwFrom, kind);
  } catch (const std::out_of_range& error) {
    return keep(error.what());
  }
  return "nothing was thrown";
}

const char* rethrow() {
  try {
    try {
      throwKind("length_error");
    } catch (...) {
      throw;
    }
  } catch (const std::length_error& error) {
    return keep(error.what());
  }
}

int objectsLeftByAThrow() {
  try {
    char kind[] = "int";
    throwFrom(kind);
  } catch (...) {
  }
  return Counted::sAlive;
}

// No process has so much; the compiler is kept from seeing that nobody uses the memory.
volatile std::size_t theHugeSize = SIZE_MAX / 2;

bool hugeNewThrows() {
  try {
    ::operator delete(::operator new(theHugeSize));
  } catch (const std::bad_alloc&) {
    return true;
  }
  return false;
}

bool hugeNothrowNewIsNull() {
  void* const memoryP = ::operator new(theHugeSize, std::nothrow);
  ::operator delete(memoryP);
  return memoryP == nullptr;
}

int writeDouble(double value, int precision, char* text, int size) {
  const auto result = std::to_chars(text, text + size, value, std::chars_format::general, precision);
  return result.ec == std::errc{} ? static_cast<int>(result.ptr - text) : -1;
}

const char* writeInteger(long long value) {
  return keep(std::to_string(value));
}

const char* writeUnsigned(unsigned long long value) {
  return keep(std::to_string(value));
}

int runAndJoinThreads(int threads) {
  long counted = 0;
  for (int i = 0; i < threads; ++i) {
    pthread_t thread{};
    if (pthread_create(&thread, nullptr, count, &counted) != 0) return -1;
    if (pthread_join(thread, nullptr) != 0) return -1;
  }
  return counted;
}

int runAndDetachThreads(int threads) {
  static sem_t ended;
  sem_init(&ended, 0, 0);
  const auto end = [](void* /*unused*/) -> void* {
    sem_post(&ended);
    return nullptr;
  };
  for (int i = 0; i < threads; ++i) {
    pthread_t thread{};
    if (pthread_create(&thread, nullptr, end, nullptr) != 0) return -1;
    if (pthread_detach(thread) != 0) return -1;
  }
  for (int i = 0; i < threads; ++i) sem_wait(&ended);
  return threads;
}

int handATokenToAndFro(int times) {
  Token token{{}, {}, times, 1};
  sem_init(&token.there, 0, 1);
  sem_init(&token.back, 0, 0);
  pthread_t thread{};
  pthread_create(&thread, nullptr, giveBack, &token);
  int right = 0;
  for (int i = 0; i < times; ++i) {
    sem_wait(&token.back);
    // The other thread has had it once, and waits for it.
    if (token.value == -1) ++right;
    token.value = 1;
    sem_post(&token.there);
  }
  pthread_join(thread, nullptr);
  sem_destroy(&token.there);
  sem_destroy(&token.back);
  return right;
}
