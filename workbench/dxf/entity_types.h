/// The types of entities that the DXF reader understands.
#ifndef WORKBENCH_DXF_ENTITY_TYPES_H
#define WORKBENCH_DXF_ENTITY_TYPES_H

#include "workbench/dxf/entity.h"

#include <string_view>
#include <vector>

namespace workbench {

struct DxfEntityType {
  std::string_view name;
  DxfEntityMaker make;
};

const std::vector<DxfEntityType>& dxfEntityTypes();

/// The maker of a type; null for one that the reader does not understand.
DxfEntityMaker dxfEntityMaker(std::string_view type);

}  // namespace workbench

#endif
