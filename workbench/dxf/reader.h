/// Reads a drawing from a DXF file (ASCII, any release): the layers, the active viewport's view, the blocks,
/// the floating viewports of the layout and the entities of model space that the host stand-in can draw.
///
/// LINE, LWPOLYLINE, POLYLINE (2D, 3D, mesh, polyface), CIRCLE, ARC, ELLIPSE, 3DFACE, POINT and INSERT are
/// understood. Others, and everything else in paper space, are left out and counted in Drawing::mSkipped by
/// type, the ones of blocks and of paper space apart ("MTEXT (in a block)", "VIEWPORT (paper space)").
#ifndef WORKBENCH_DXF_READER_H
#define WORKBENCH_DXF_READER_H

#include "standin/objectarx/drawing.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace workbench {

/// The drawing of `text`. Throws InputError with `file` and the line of the first thing wrong. An entity
/// without a handle, or with one that another has, gets the next free one.
std::unique_ptr<standin::Drawing> parseDrawing(std::string_view text, const std::string& file);

/// The drawing of a file. Throws InputError.
std::unique_ptr<standin::Drawing> readDrawing(const std::filesystem::path& file);

}  // namespace workbench

#endif
