#include "packaging/lm_check/platform.h"

Findings machineFindings() {
  return {};
}

std::string toUtf8(const std::string& text) {
  // Paths are in UTF-8 there already.
  return text;
}
