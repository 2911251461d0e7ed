/// The seven special functions of the device's keys: what the device sends, what a session calls them, and
/// what is sent to the command line. A new one is one row.
#ifndef DEVICE_SPECIAL_FUNCTIONS_H
#define DEVICE_SPECIAL_FUNCTIONS_H

#include "device/lmt_ctrlr.h"

struct SpecialFunction {
  std::int32_t eventCode;
  const char* nameP;
  const wchar_t* commandP;  ///< its blank at the end completes it
};

/// The apostrophe makes a command transparent: it runs while another one waits for input.
inline constexpr const wchar_t* kZoomAllTransparent = L"'_ZOOM _ALL ";

inline constexpr SpecialFunction kSpecialFunctions[] = {
    {LM_VIEW_FRONT, "front", L"'_-VIEW _FRONT "}, {LM_VIEW_RIGHT, "right", L"'_-VIEW _RIGHT "},
    {LM_VIEW_TOP, "top", L"'_-VIEW _TOP "},       {LM_VIEW_BACK, "back", L"'_-VIEW _BACK "},
    {LM_VIEW_LEFT, "left", L"'_-VIEW _LEFT "},    {LM_VIEW_BOTTOM, "bottom", L"'_-VIEW _BOTTOM "},
    {LM_FIT_ALL, "fit", kZoomAllTransparent},
};

/// The function of an event code; null for any other code.
constexpr const SpecialFunction* findSpecialFunction(std::int32_t eventCode) {
  for (const SpecialFunction& function : kSpecialFunctions)
    if (function.eventCode == eventCode) return &function;
  return nullptr;
}

#endif
