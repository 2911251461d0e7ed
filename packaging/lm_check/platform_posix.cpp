#include "packaging/lm_check/platform.h"

Findings machineFindings() {
  return {};
}

std::string toUtf8(const std::string& text) {
  return text;
}
