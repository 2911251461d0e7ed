#include "workbench/live/live_scene.h"

#include "standin/objectarx/host_control.h"
#include "workbench/running/drawing_state.h"
#include "workbench/running/recording.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>

namespace workbench {
namespace {

namespace host = standin::host;
using Json = nlohmann::json;

AcGePoint3d originOf(const standin::Drawing& drawing) {
  const auto extents = drawing.extents();
  if (!extents) return {0, 0, 0};
  const AcGePoint3d low = extents->minPoint(), high = extents->maxPoint();
  // In the middle, where 32-bit floats are finest: drawings of the land are far from 0.
  return {(low.x + high.x) / 2, (low.y + high.y) / 2, (low.z + high.z) / 2};
}

void appendBytes(std::string& out, const void* from, std::size_t size) {
  // In the byte order of this machine, which is little-endian as are the machines of browsers.
  out.append(static_cast<const char*>(from), size);
}

bool isSame(const std::vector<ReportShape>& a, const std::vector<ReportShape>& b) {
  const auto isSamePoint = [](const AcGePoint3d& p, const AcGePoint3d& q) {
    return p.x == q.x && p.y == q.y && p.z == q.z;
  };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](const ReportShape& p, const ReportShape& q) {
    return std::equal(p.outline.begin(), p.outline.end(), q.outline.begin(), q.outline.end(),
                      [&](const standin::Polyline3& l, const standin::Polyline3& m) {
                        return std::equal(l.begin(), l.end(), m.begin(), m.end(), isSamePoint);
                      });
  });
}

Json linesJson(const ReportShape& shape) {
  Json lines = Json::array();
  for (const standin::Polyline3& line : shape.outline) {
    Json points = Json::array();
    for (const AcGePoint3d& point : line) {
      points.push_back(point.x);
      points.push_back(point.y);
      points.push_back(point.z);
    }
    lines.push_back(std::move(points));
  }
  return lines;
}

}  // namespace

std::string LiveScene::whole(const std::string& name) {
  *this = {};
  const standin::Drawing* const drawing = host::drawing();
  Json shapes = Json::array();
  std::vector<float> coordinates;
  const AcGePoint3d origin = drawing != nullptr ? originOf(*drawing) : AcGePoint3d(0, 0, 0);
  if (drawing != nullptr) {
    mDrawing = drawing->serial();
    mEntities = drawing->entities().size();
    for (const auto& entityP : drawing->entities()) {
      if (!isSeen(*entityP, *drawing)) {
        mGone.insert(entityP->properties().handle);
        continue;
      }
      for (const ReportShape& shape : shapesOf(*entityP, *drawing)) {
        Json counts = Json::array();
        for (const standin::Polyline3& line : shape.outline) {
          counts.push_back(line.size());
          for (const AcGePoint3d& p : line)
            coordinates.insert(coordinates.end(),
                               {static_cast<float>(p.x - origin.x), static_cast<float>(p.y - origin.y),
                                static_cast<float>(p.z - origin.z)});
        }
        shapes.push_back({handleText(shape.handle), shape.layer, shape.colour, std::move(counts)});
      }
    }
  }
  const Json header{{"t", "scene"},
                    {"name", name},
                    {"origin", {origin.x, origin.y, origin.z}},
                    {"shapes", std::move(shapes)}};
  std::string text = header.dump(-1, ' ', false, Json::error_handler_t::replace);
  text.resize((text.size() + 3) / 4 * 4, ' ');
  std::string message;
  const auto length = static_cast<std::uint32_t>(text.size());
  appendBytes(message, &length, sizeof length);
  message += text;
  appendBytes(message, coordinates.data(), coordinates.size() * sizeof(float));
  noteSelection();
  return message;
}

void LiveScene::noteSelection() {
  std::vector<std::uint64_t> selection = host::selection();
  if (selection == mSelection) return;
  const standin::Drawing* const drawing = host::drawing();
  for (const std::uint64_t handle : selection)
    // Before anything moves it: what is selected is as the pages have it.
    if (const auto* const entityP = drawing->find(handle); entityP != nullptr && mWatched.count(handle) == 0)
      mWatched.emplace(handle, shapesOf(*entityP, *drawing));
  mSelection = std::move(selection);
}

std::string LiveScene::changes(bool isEverything) {
  const standin::Drawing* const drawing = host::drawing();
  if (drawing == nullptr || isOfAnotherDrawing()) return {};
  noteSelection();
  Json changed = Json::array(), gone = Json::array();
  const auto add = [&](const std::vector<ReportShape>& shapes) {
    for (const ReportShape& shape : shapes)
      changed.push_back({handleText(shape.handle), shape.layer, shape.colour, linesJson(shape)});
  };
  // Only what is selected is ever moved.
  for (const std::uint64_t handle : mSelection) {
    const auto watched = mWatched.find(handle);
    const auto* const entityP = drawing->find(handle);
    if (watched == mWatched.end() || entityP == nullptr || !isSeen(*entityP, *drawing)) continue;
    std::vector<ReportShape> shapes = shapesOf(*entityP, *drawing);
    if (isSame(shapes, watched->second)) continue;
    add(shapes);
    watched->second = std::move(shapes);
  }
  if (isEverything) {
    const auto& entities = drawing->entities();
    for (std::size_t i = 0; i < entities.size(); ++i) {
      const std::uint64_t handle = entities[i]->properties().handle;
      const bool isShown = isSeen(*entities[i], *drawing);
      const bool wasShown = i < mEntities && mGone.count(handle) == 0;
      if (isShown && !wasShown) {
        add(shapesOf(*entities[i], *drawing));
        mGone.erase(handle);
      } else if (!isShown && wasShown) {
        gone.push_back(handleText(handle));
      }
      if (!isShown) mGone.insert(handle);
    }
    mEntities = entities.size();
  }
  if (changed.empty() && gone.empty()) return {};
  return Json{{"t", "changed"}, {"shapes", std::move(changed)}, {"gone", std::move(gone)}}.dump(
      -1, ' ', false, Json::error_handler_t::replace);
}

bool LiveScene::isOfAnotherDrawing() const {
  const standin::Drawing* const drawing = host::drawing();
  return mDrawing != (drawing != nullptr ? drawing->serial() : 0);
}

}  // namespace workbench
