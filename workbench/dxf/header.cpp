#include "workbench/dxf/header.h"

#include "workbench/text_input.h"

#include <cmath>

namespace workbench {
namespace {

// The whole part of a Julian date of the format is the number of the day, the rest the time since its
// midnight. Astronomers begin their days at noon instead.
constexpr double kJulianDayOf1970 = 2440588;
constexpr double kJulianDayOf3000 = 2816788;

std::optional<std::int64_t> dayOf(std::string_view text) {
  const auto value = parseReal(text);
  if (!value || *value < kJulianDayOf1970 || *value >= kJulianDayOf3000) return std::nullopt;
  return static_cast<std::int64_t>(std::floor(*value) - kJulianDayOf1970);
}

}  // namespace

std::string_view headerText(const std::vector<DxfGroup>& groups, std::string_view variable) {
  for (std::size_t i = 0; i + 1 < groups.size(); ++i) {
    // The header is the first section. The search ends with it, because group 9 means something else in later
    // sections.
    if (groups[i].code == 0 && trimmed(groups[i].value) == "ENDSEC") break;
    if (groups[i].code == 9 && trimmed(groups[i].value) == variable) return trimmed(groups[i + 1].value);
  }
  return {};
}

std::optional<std::int64_t> headerDay(const std::vector<DxfGroup>& groups) {
  const auto made = dayOf(headerText(groups, "$TDCREATE"));
  // Programs that keep no date write 0, which is none.
  return made ? made : dayOf(headerText(groups, "$TDUPDATE"));
}

}  // namespace workbench
