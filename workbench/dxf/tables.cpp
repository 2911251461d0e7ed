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
constexpr long long kHighestColour = 257;
constexpr long long kSheetNumber = 1;  ///< of the viewport that is the sheet itself

/// What a VPORT and a VIEWPORT say in the same groups.
standin::Drawing::View readDirection(const DxfRecord& record) {
  standin::Drawing::View view;
  view.target = {record.real(17, 0), record.real(27, 0), record.real(37, 0)};
  view.direction = {record.real(16, 0), record.real(26, 0), record.real(36, 1)};
  view.centerX = record.real(12, 0);
  view.centerY = record.real(22, 0);
  view.twist = radians(record.real(51, 0));
  view.lensLength = record.real(42, view.lensLength);
  return view;
}

bool isUsable(const standin::Drawing::View& view) {
  return view.height > 0 && view.aspect > 0 && view.direction.dotProduct(view.direction) > 0;
}

}  // namespace

void DxfNames::add(const std::string& name) {
  mByUpperCase[upperCase(name)] = name;
}

bool DxfNames::has(const std::string& name) const {
  return mByUpperCase.count(upperCase(name)) != 0;
}

std::string DxfNames::resolve(const std::string& name) const {
  const auto found = mByUpperCase.find(upperCase(name));
  return found == mByUpperCase.end() ? name : found->second;
}

standin::Layer readLayer(const DxfRecord& record) {
  const long long colour = record.integer(62, 7, -kHighestColour, kHighestColour);
  const long long flags = record.integer(70, 0, -kMostInt16 - 1, kMostInt16);
  standin::Layer layer;
  layer.name = record.text(2);
  layer.colour = static_cast<int>(std::abs(colour));
  layer.isLocked = (flags & kLockedFlag) != 0;
  layer.isVisible = colour >= 0 && (flags & kFrozenFlag) == 0;
  return layer;
}

std::optional<standin::Drawing::View> readActiveView(const DxfRecord& record) {
  if (upperCase(record.text(2)) != "*ACTIVE") return std::nullopt;
  standin::Drawing::View view = readDirection(record);
  view.height = record.real(40, 0);
  view.aspect = record.real(41, 1);
  view.isPerspective = (record.integer(71, 0, 0, kMostInt16) & kPerspectiveBit) != 0;
  return isUsable(view) ? std::optional(view) : std::nullopt;
}

std::optional<standin::Drawing::FloatingViewport> readFloatingViewport(const DxfRecord& record) {
  const bool isOff = record.integer(68, 1, -1, kMostInt16) == 0;
  if (isOff || record.integer(69, kSheetNumber, 0, kMostInt16) <= kSheetNumber) return std::nullopt;
  standin::Drawing::FloatingViewport window;
  window.centerX = record.real(10, 0);
  window.centerY = record.real(20, 0);
  window.width = record.real(40, 0);
  window.height = record.real(41, 0);
  if (!(window.width > 0) || !(window.height > 0)) return std::nullopt;
  standin::Drawing::View view = readDirection(record);
  view.height = record.real(45, 0);
  view.aspect = window.width / window.height;
  view.isPerspective = (record.integer(90, 0, 0, kMostInt32) & kPerspectiveBit) != 0;
  if (isUsable(view)) window.view = view;
  return window;
}

}  // namespace workbench
