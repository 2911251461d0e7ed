/// Host calls that do nothing, so that a benchmark sees the module's own cost. They are
/// linked into the benchmark's program, before the stand-in's.
#ifndef BENCH_NULL_HOST_H
#define BENCH_NULL_HOST_H

/// Puts the one view's camera back, so that long runs stay within sensible numbers.
void resetNullView();

#endif
