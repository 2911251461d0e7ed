#include "limit.h"

int limited(int value, int low, int high) {
  if (value < low) return low;
  return value > high ? high : value;
}
