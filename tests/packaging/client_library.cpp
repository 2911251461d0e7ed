// A client library for the checker to talk to: LM_TEST_DRIVER says what the driver behind it does.
#include "device/lmt_ctrlr.h"

#include <cstdlib>
#include <cstring>

namespace {

bool isDriver(const char* kindP) {
  const char* const valueP = std::getenv("LM_TEST_DRIVER");
  return valueP != nullptr && std::strcmp(valueP, kindP) == 0;
}

}  // namespace

std::int32_t lmConnect(std::int32_t reserved, const char* applName) {
  // The module's own name is the module's.
  return isDriver("refuses") || reserved != 0 || std::strcmp(applName, "acad") == 0 ? 1 : 0;
}

std::int32_t lmDisconnect() {
  return 0;
}

std::int32_t lmGetEvent(std::int32_t, std::int16_t*, std::int16_t*, std::int16_t*, std::int16_t*,
                        std::int16_t*, std::int16_t*, std::int32_t*, std::int32_t*, std::int32_t*,
                        std::int32_t*, std::int32_t*) {
  return 1;
}

std::int32_t lmGetAdvancedSettings(std::int32_t, LmAdvancedSettings*) {
  return 1;
}

std::int32_t lmGetDevInfo(std::int32_t, LmDevInfo* recordP) {
  std::strcpy(recordP->name, "Lumetrapad");
  return isDriver("describes nothing") ? 1 : 0;
}

std::int32_t lmGetDevNum(std::int32_t* countP, std::int32_t* ignored1P, std::int32_t* ignored2P) {
  *countP = isDriver("has no device") ? 0 : 1;
  *ignored1P = *ignored2P = 0;
  return isDriver("counts nothing") ? 1 : 0;
}

std::int32_t lmSetApplMode(const char*, const char*) {
  return 1;
}
