/// What the library of the module's compiler does with the module's runtime, as C functions.
#ifndef TESTS_RUNTIME_PROBE_H
#define TESTS_RUNTIME_PROBE_H

/// What threads that came to one local static together found.
struct LocalStaticRace {
  int initialisations;  ///< runs of the initialiser, those that threw among them
  int exceptions;       ///< threads that saw the initialiser throw
  int complete;         ///< threads that found the value that the initialiser ended with
};

/// Calls `call` with `argument`.
using Caller = void (*)(void (*call)(void*), void* argument);

#define LM_RUNTIME_PROBES(PROBE)                                               \
  PROBE(LocalStaticRace, raceForALocalStatic, (int threads, int failures))     \
  PROBE(const char*, throwAndCatch, (const char* kind))                        \
  PROBE(const char*, throwThrough, (Caller caller))                            \
  PROBE(const char*, rethrow, ())                                              \
  PROBE(int, objectsLeftByAThrow, ())                                          \
  PROBE(bool, hugeNewThrows, ())                                               \
  PROBE(bool, hugeNothrowNewIsNull, ())                                        \
  PROBE(int, writeDouble, (double value, int precision, char* text, int size)) \
  PROBE(const char*, writeInteger, (long long value))                          \
  PROBE(const char*, writeUnsigned, (unsigned long long value))                \
  PROBE(int, runAndJoinThreads, (int count))                                   \
  PROBE(int, runAndDetachThreads, (int count))                                 \
  PROBE(int, handATokenToAndFro, (int times))

#endif
