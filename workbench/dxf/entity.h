/// An entity record of a DXF file, and the function that converts it to an entity of the drawing.
#ifndef WORKBENCH_DXF_ENTITY_H
#define WORKBENCH_DXF_ENTITY_H

#include "standin/objectarx/drawing.h"
#include "workbench/dxf/groups.h"

#include <memory>
#include <string>
#include <vector>

namespace workbench {

class DxfInserts;

struct DxfEntity {
  const DxfRecord& record;
  const std::vector<DxfRecord>& vertices;  ///< the VERTEX records of a POLYLINE
  std::string container;                   ///< block that it is in; empty for model space
  standin::EntityProperties properties;
};

/// Makes an entity. Throws InputError.
using DxfEntityMaker = std::unique_ptr<standin::DrawnEntity> (*)(const DxfEntity&, DxfInserts&);

}  // namespace workbench

#endif
