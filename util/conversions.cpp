#include "util/util.h"

#include <cstddef>

namespace {

// The index of a text is its value: the order is fixed.
constexpr const char* kAxisLocks[] = {"off", "horz", "vert"};
constexpr const char* kMotionReferences[] = {"object", "screen"};
constexpr const char* kRotationCenterModes[] = {"objscreen", "objorigin", "camstandard", "camtarget",
                                                "camhover"};

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

template <std::size_t kCount>
int valueOf(std::string_view text, const char* const (&candidates)[kCount]) {
  for (std::size_t i = 0; i < kCount; ++i)
    // The first candidate of the table wins, not the first in the text.
    if (contains(text, candidates[i])) return static_cast<int>(i);
  return -1;
}

template <std::size_t kCount>
const char* textOf(int value, const char* const (&candidates)[kCount]) {
  if (value < 0 || value >= static_cast<int>(kCount)) return "unknown!";
  return candidates[value];
}

}  // namespace

bool Util::onOffToBool(std::string_view text) {
  // Deliberately loose: "only" switches on, "ON" and "true" do not.
  return contains(text, "on");
}

const char* Util::boolToOnOff(bool isOn) {
  return isOn ? "on" : "off";
}

int Util::textToAxisLock(std::string_view text) {
  return valueOf(text, kAxisLocks);
}

int Util::textToMotionReference(std::string_view text) {
  return valueOf(text, kMotionReferences);
}

int Util::textToRotationCenterMode(std::string_view text) {
  return valueOf(text, kRotationCenterModes);
}

const char* Util::axisLockToText(int value) {
  return textOf(value, kAxisLocks);
}

const char* Util::motionReferenceToText(int value) {
  return textOf(value, kMotionReferences);
}

const char* Util::rotationCenterModeToText(int value) {
  return textOf(value, kRotationCenterModes);
}
