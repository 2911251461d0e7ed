#include "steps.h"

namespace {
constexpr int kNone = 7;
}

void moveBack(int& place, int by) {
  if (by == kNone) return;
  place -= by;
}

int distance(int from, int to) {
  return to - from;
}

int wayBack(int from, int to) {
  return distance(to, from);
}

std::ptrdiff_t size(const char* beginP, const char* endP) {
  return endP - beginP;
}

bool isUntested(bool isOdd) {
  return !isOdd;
}
