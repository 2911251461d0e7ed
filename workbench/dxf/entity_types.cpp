#include "workbench/dxf/entity_types.h"

#include "workbench/dxf/entities.h"
#include "workbench/dxf/inserts.h"

#include <unordered_map>

namespace workbench {
namespace {

std::unique_ptr<standin::DrawnEntity> makeInsert(const DxfEntity& entity, DxfInserts& inserts) {
  return inserts.make(entity);
}

}  // namespace

/// Adding a type: a row here and its name in docs/outputs.md.
const std::vector<DxfEntityType>& dxfEntityTypes() {
  static const std::vector<DxfEntityType> kTypes = {
      {"LINE", dxf::makeLine},        {"POINT", dxf::makePoint},
      {"CIRCLE", dxf::makeCircle},    {"ARC", dxf::makeArc},
      {"ELLIPSE", dxf::makeEllipse},  {"3DFACE", dxf::makeFace},
      {"INSERT", makeInsert},         {"LWPOLYLINE", dxf::makeLightPolyline},
      {"POLYLINE", dxf::makePolyline}};
  return kTypes;
}

DxfEntityMaker dxfEntityMaker(std::string_view type) {
  // Asked once for each entity of a file, so a hash and not a search through the list.
  static const auto kMakers = [] {
    std::unordered_map<std::string_view, DxfEntityMaker> makers;
    for (const auto& [name, make] : dxfEntityTypes()) makers.emplace(name, make);
    return makers;
  }();
  const auto maker = kMakers.find(type);
  // Null is no error: the reader counts such entities and reports them in the summary.
  return maker == kMakers.end() ? nullptr : maker->second;
}

}  // namespace workbench
