/// Code with well-known breakages.
#ifndef TESTS_MUTATION_SAMPLE_SOURCE_STEPS_H
#define TESTS_MUTATION_SAMPLE_SOURCE_STEPS_H

#include <cstddef>

void moveBack(int& place, int by);
int distance(int from, int to);
int wayBack(int from, int to);
std::ptrdiff_t size(const char* beginP, const char* endP);
bool isUntested(bool isOdd);

#endif
