/// The tables of a DXF file that a run needs: layers, the active viewport's view, floating viewports.
#ifndef WORKBENCH_DXF_TABLES_H
#define WORKBENCH_DXF_TABLES_H

#include "standin/objectarx/drawing.h"
#include "workbench/dxf/groups.h"

#include <map>
#include <optional>
#include <string>

namespace workbench {

/// Names of one kind (layers, blocks). A file may refer to one in another letter case.
class DxfNames {
 public:
  void add(const std::string& name);
  bool has(const std::string& name) const;
  /// The name as it was added, or `name` itself when none of the kind was.
  std::string resolve(const std::string& name) const;

 private:
  std::map<std::string, std::string> mByUpperCase;
};

/// A LAYER record. A negative colour means off; flags 1 frozen, 4 locked.
standin::Layer readLayer(const DxfRecord& record);

/// A VPORT record's view; none when the record is not of "*Active", or when its height, aspect or direction
/// is not usable (programs that store no views write 0).
std::optional<standin::Drawing::View> readActiveView(const DxfRecord& record);

/// A VIEWPORT of the layout; none when it is the sheet itself or off, or has no size. Its view is left out
/// when it is not usable.
std::optional<standin::Drawing::FloatingViewport> readFloatingViewport(const DxfRecord& record);

}  // namespace workbench

#endif
