#include "workbench/dxf/tables.h"

#include "workbench/dxf/frame.h"
#include "workbench/text_input.h"

#include <cstdlib>

namespace workbench {
namespace {

constexpr long long kFrozenFlag = 1;
constexpr long long kLockedFlag = 4;
constexpr long long kPerspectiveBit = 1;
constexpr long long kMostInt16 = 32767;
constexpr long long kMostInt32 = 2147483647;
// 256 means "by layer" and 257 "none".
constexpr long long kHighestColour = 257;
constexpr long long kSheetNumber = 1;  ///< of the viewport that is the sheet itself

/// What a VPORT and a VIEWPORT say in the same groups.
standin::Drawing::View readDirection(const DxfRecord& record) {
  standin::Drawing::View view;
  // Defaults are those of a new drawing: a plan view from above on the origin.
  view.target = {record.real(17, 0), record.real(27, 0), record.real(37, 0)};
  view.direction = {record.real(16, 0), record.real(26, 0), record.real(36, 1)};
  // The centre is in view coordinates and not a point of the world.
  view.centerX = record.real(12, 0);
  view.centerY = record.real(22, 0);
  // Group 51 is the twist; group 50 of a VPORT is the angle of the snap grid.
  view.twist = radians(record.real(51, 0));
  view.lensLength = record.real(42, view.lensLength);
  return view;
}

bool isUsable(const standin::Drawing::View& view) {
  // Comparisons with a value that is not a number are false, so such a view is left out as well.
  return view.height > 0 && view.aspect > 0 && view.direction.dotProduct(view.direction) > 0;
}

}  // namespace

void DxfNames::add(const std::string& name) {
  // The last definition wins where a file repeats a name.
  mByUpperCase[upperCase(name)] = name;
}

bool DxfNames::has(const std::string& name) const {
  return mByUpperCase.count(upperCase(name)) != 0;
}

std::string DxfNames::resolve(const std::string& name) const {
  const auto found = mByUpperCase.find(upperCase(name));
  // An entity may name a layer that no table defines; the drawing then shows it as on layer 0.
  return found == mByUpperCase.end() ? name : found->second;
}

standin::Layer readLayer(const DxfRecord& record) {
  const long long colour = record.integer(62, 7, -kHighestColour, kHighestColour);
  const long long flags = record.integer(70, 0, -kMostInt16 - 1, kMostInt16);
  standin::Layer layer;
  layer.name = record.text(2);
  layer.colour = static_cast<int>(std::abs(colour));
  layer.isLocked = (flags & kLockedFlag) != 0;
  // The sign of the colour says whether the layer is on. Frozen is a separate state; both hide it.
  layer.isVisible = colour >= 0 && (flags & kFrozenFlag) == 0;
  return layer;
}

std::optional<standin::Drawing::View> readActiveView(const DxfRecord& record) {
  // Other records are saved tile arrangements that are not on the screen.
  if (upperCase(record.text(2)) != "*ACTIVE") return std::nullopt;
  standin::Drawing::View view = readDirection(record);
  view.height = record.real(40, 0);
  view.aspect = record.real(41, 1);
  view.isPerspective = (record.integer(71, 0, 0, kMostInt16) & kPerspectiveBit) != 0;
  return isUsable(view) ? std::optional(view) : std::nullopt;
}

std::optional<standin::Drawing::FloatingViewport> readFloatingViewport(const DxfRecord& record) {
  // -1 means on but not drawn, because too many viewports were active. The host can still make it current.
  const bool isOff = record.integer(68, 1, -1, kMostInt16) == 0;
  if (isOff || record.integer(69, kSheetNumber, 0, kMostInt16) <= kSheetNumber) return std::nullopt;
  standin::Drawing::FloatingViewport window;
  window.centerX = record.real(10, 0);
  window.centerY = record.real(20, 0);
  window.width = record.real(40, 0);
  window.height = record.real(41, 0);
  if (!(window.width > 0) || !(window.height > 0)) return std::nullopt;
  standin::Drawing::View view = readDirection(record);
  // Group 45 is the height in the model, group 41 that on the sheet. The width follows from the sheet's
  // proportions.
  view.height = record.real(45, 0);
  view.aspect = window.width / window.height;
  // The same bit as group 71 of a VPORT; a VIEWPORT has it in the 32-bit flags of group 90.
  view.isPerspective = (record.integer(90, 0, 0, kMostInt32) & kPerspectiveBit) != 0;
  // A window without a usable view still has its place on the sheet and its number.
  if (isUsable(view)) window.view = view;
  return window;
}

}  // namespace workbench
