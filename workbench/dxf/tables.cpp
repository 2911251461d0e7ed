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
constexpr long long kHighestColour = 257;

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
  standin::Drawing::View view;
  view.target = {record.real(17, 0), record.real(27, 0), record.real(37, 0)};
  view.direction = {record.real(16, 0), record.real(26, 0), record.real(36, 1)};
  view.centerX = record.real(12, 0);
  view.centerY = record.real(22, 0);
  view.height = record.real(40, 0);
  view.aspect = record.real(41, 1);
  view.twist = radians(record.real(51, 0));
  view.isPerspective = (record.integer(71, 0, 0, kMostInt16) & kPerspectiveBit) != 0;
  view.lensLength = record.real(42, view.lensLength);
  const bool hasDirection = view.direction.dotProduct(view.direction) > 0;
  if (!(view.height > 0) || !(view.aspect > 0) || !hasDirection) return std::nullopt;
  return view;
}

}  // namespace workbench
