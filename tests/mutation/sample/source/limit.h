/// Code with well-known breakages.
#ifndef TESTS_MUTATION_SAMPLE_SOURCE_LIMIT_H
#define TESTS_MUTATION_SAMPLE_SOURCE_LIMIT_H

/// The value, or the nearer limit.
int limited(int value, int low, int high);

/// The value in steps of 5, towards 0.
inline int inSteps(int value) {
  return value / 5 * 5;
}

#endif
