#include "workbench/dxf/reader.h"

#include "workbench/dxf/encoding.h"
#include "workbench/dxf/entity_types.h"
#include "workbench/dxf/groups.h"
#include "workbench/dxf/header.h"
#include "workbench/dxf/inserts.h"
#include "workbench/dxf/tables.h"
#include "workbench/text_input.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <unordered_set>
#include <utility>

namespace workbench {
namespace {

using EntityPtr = std::unique_ptr<standin::DrawnEntity>;
using Records = std::vector<DxfRecord>;

constexpr long long kMostInt16 = 32767;
// Ten times what one coordinate of the file may be: an insertion of something far out still passes.
constexpr double kFurthest = 1e16;
constexpr int kHandleBits = 60;  // the drawing has no larger ones

Records splitRecords(const std::vector<DxfGroup>& groups, const DxfSource& source) {
  Records records;
  assert(!groups.empty() && "a file ends with a group 0 EOF");
  const DxfGroup* const end = groups.data() + groups.size();
  if (groups.front().code != 0)
    // A group's line is that of its value; the code that is wrong is on the line above.
    throw InputError({source.file, groups.front().line - 1}, "group 0 at the start of the file",
                     "group " + std::to_string(groups.front().code));
  // The records point into the list of groups. Copying the groups would double the memory of a large drawing.
  for (const DxfGroup* first = groups.data(); first != end;) {
    const DxfGroup* const last = std::find_if(first + 1, end, [](const DxfGroup& g) { return g.code == 0; });
    records.emplace_back(source, first, last);
    first = last;
  }
  return records;
}

/// Handles of the file's entities. New ones are above every handle in the file, so that none of them is the
/// handle of an entity further down.
class Handles {
 public:
  explicit Handles(const std::vector<DxfGroup>& groups) {
    for (const DxfGroup& group : groups)
      // Also handles of tables and blocks: an id that the module looks up must not mean two objects.
      if (group.code == 5) mHighest = std::max(mHighest, parseHandle(group.value).value_or(0));
  }

  std::uint64_t take(const DxfRecord& record) {
    const DxfGroup* const group = record.find(5);
    if (group != nullptr) {
      const std::uint64_t handle = record.handleOf(*group);
      // A handle that occurs twice goes to the first entity; the second falls through and gets a new one.
      if (mTaken.insert(handle).second) return handle;
    }
    if ((mHighest + 1) >> kHandleBits != 0)
      throw record.error("a handle, since the highest there can be is taken", "none of its own");
    return ++mHighest;
  }

 private:
  std::uint64_t mHighest = 0;
  std::unordered_set<std::uint64_t> mTaken;
};

enum class Space { kModel, kBlock, kPaper };

bool startsWith(const std::string& text, std::string_view start) {
  return text.compare(0, start.size(), start) == 0;
}

/// Layouts are blocks too; their names begin with an asterisk, or with a dollar in old files.
Space spaceOfBlock(const std::string& name) {
  const std::string upper = upperCase(name);
  // Further layouts have a number after the name, so only the start is compared. There is one model space.
  if (startsWith(upper, "*PAPER_SPACE") || startsWith(upper, "$PAPER_SPACE")) return Space::kPaper;
  if (upper == "*MODEL_SPACE" || upper == "$MODEL_SPACE") return Space::kModel;
  return Space::kBlock;
}

/// Points that the file's drawing may take: memory and time of a run must be in proportion to its file.
double mostDrawn(const std::vector<DxfGroup>& groups) {
  // A small file may draw this much for nothing, so that a handful of arrays is no error.
  constexpr double kFree = 1e6;
  constexpr double kPerGroup = 20;
  return kFree + kPerGroup * static_cast<double>(groups.size());
}

std::size_t pointsOf(const standin::DrawnEntity& entity) {
  std::size_t points = 0;
  for (const standin::Polyline3& line : entity.outline()) points += line.size();
  return points;
}

/// Names of the blocks that can be inserted.
DxfNames blockNames(const Records& records) {
  DxfNames names;
  for (const DxfRecord& record : records)
    // The blocks that are layouts cannot be inserted.
    if (record.type() == "BLOCK" && spaceOfBlock(record.text(2)) == Space::kBlock) names.add(record.text(2));
  return names;
}

class DxfReader {
 public:
  DxfReader(const std::vector<DxfGroup>& groups, const std::string& file)
      : mSource{file, dxfCodePage(groups)},
        mRecords(splitRecords(groups, mSource)),
        mDrawingP(std::make_unique<standin::Drawing>()),
        mInserts(*mDrawingP, file, blockNames(mRecords), mostDrawn(groups)),
        mHandles(groups) {
    mDrawingP->mDay = headerDay(groups);
  }

  std::unique_ptr<standin::Drawing> read() {
    while (current().type() != "EOF") readSection();
    // Before anything asks for an outline: a block that contains itself would be drawn without end.
    mInserts.check();
    for (const auto& [insertP, line] : mInsertLines) checkReach(*insertP, line);
    for (EntityPtr& entity : mEntities) mDrawingP->add(std::move(entity));
    return std::move(mDrawingP);
  }

 private:
  /// Scales multiply, so an insertion may reach further than any number of the file.
  void checkReach(const standin::DrawnEntity& insert, std::size_t line) const {
    for (const standin::Polyline3& wire : insert.outline())
      for (const AcGePoint3d& point : wire)
        for (const double value : {point.x, point.y, point.z})
          // Written as a negation, which also catches a value that is not a number (infinity times 0).
          if (!(std::abs(value) <= kFurthest))
            throw InputError({mSource.file, line}, "an insertion that stays within +-1e16",
                             "one that reaches further");
  }

  const DxfRecord& current() const { return mRecords[mAt]; }

  /// The lexer ends every file with EOF, so every other record has one after it.
  const DxfRecord& advance() {
    assert(mAt + 1 < mRecords.size() && "read beyond EOF");
    return mRecords[mAt++];
  }

  void readSection() {
    const DxfRecord& start = advance();
    if (start.type() != "SECTION") throw start.error(*start.begin(), "SECTION or EOF in group 0");
    const std::string name = upperCase(start.text(2));
    while (current().type() != "ENDSEC") {
      // Ends here and not at the end of the file, so that the message names the place where ENDSEC is
      // missing.
      if (current().type() == "EOF" || current().type() == "SECTION")
        throw current().error(*current().begin(), "ENDSEC in group 0");
      // The sections of a file have a fixed order: layers and blocks are known before the entities that name
      // them.
      if (name == "TABLES") {
        readTableRecord();
      } else if (name == "BLOCKS") {
        readBlock();
      } else if (name == "ENTITIES") {
        readEntity(Space::kModel, {});
      } else {
        // The other sections hold nothing that a run needs.
        advance();
      }
    }
    advance();
  }

  void readTableRecord() {
    const DxfRecord& record = advance();
    if (record.type() == "LAYER") {
      const standin::Layer layer = readLayer(record);
      mLayers.add(layer.name);
      mDrawingP->addLayer(layer);
      // A tiled screen has one record for each tile, all named *Active. The first one is the current tile.
    } else if (record.type() == "VPORT" && !mDrawingP->mView) {
      mDrawingP->mView = readActiveView(record);
    }
  }

  void readBlock() {
    const DxfRecord& start = advance();
    if (start.type() != "BLOCK") throw start.error(*start.begin(), "BLOCK or ENDSEC in group 0");
    const std::string name = start.text(2);
    const Space space = spaceOfBlock(name);
    if (space == Space::kBlock) {
      // The base point is optional in old files.
      mDrawingP->addBlock(name, start.find(10) == nullptr ? AcGePoint3d::kOrigin : start.point(10));
      mInserts.beginBlock(name);
    }
    while (current().type() != "ENDBLK") {
      if (current().type() == "EOF" || current().type() == "ENDSEC" || current().type() == "BLOCK")
        throw current().error(*current().begin(), "ENDBLK in group 0");
      readEntity(space, name);
    }
    advance();
  }

  void readEntity(Space space, const std::string& block) {
    const DxfRecord& record = advance();
    const Records vertices = record.type() == "POLYLINE" ? readVertices(record) : Records();
    // Read before the space is known for good: the attributes have to be consumed in any case.
    if (record.type() == "INSERT") readAttributes(record, space);
    // The section ENTITIES also holds the entities of the current layout; group 67 marks them.
    if (space == Space::kModel && record.integer(67, 0, 0, kMostInt16) == 1) space = Space::kPaper;
    // What the blocks of paper space hold belongs to layouts that are not shown.
    if (space == Space::kPaper && block.empty() && addFloatingViewport(record)) return;
    EntityPtr entity;
    // Entities of paper space are not made at all, since an error in one must not end a run that never shows
    // it.
    if (space != Space::kPaper) entity = makeEntity(record, vertices, space, block);
    if (!entity) {
      ++mDrawingP->mSkipped[skippedName(record, space)];
    } else if (space == Space::kBlock) {
      mDrawingP->addToBlock(block, std::move(entity));
    } else {
      // The reach is checked at the end, when the block's contents are known.
      if (record.type() == "INSERT") mInsertLines.emplace_back(entity.get(), record.begin()->line);
      mEntities.push_back(std::move(entity));
    }
  }

  bool addFloatingViewport(const DxfRecord& record) {
    if (record.type() != "VIEWPORT") return false;
    const auto window = readFloatingViewport(record);
    if (window) mDrawingP->mFloatingViewports.push_back(*window);
    return window.has_value();
  }

  EntityPtr makeEntity(const DxfRecord& record, const Records& vertices, Space space,
                       const std::string& block) {
    const DxfEntityMaker make = dxfEntityMaker(record.type());
    if (make == nullptr) return nullptr;
    const std::string container = space == Space::kBlock ? block : std::string();
    EntityPtr entity = make({record, vertices, container, propertiesOf(record, space)}, mInserts);
    if (record.type() != "INSERT") mInserts.countPoints(container, pointsOf(*entity));
    return entity;
  }

  standin::EntityProperties propertiesOf(const DxfRecord& record, Space space) {
    standin::EntityProperties properties;
    // Only what can be selected needs a handle.
    if (space == Space::kModel) properties.handle = mHandles.take(record);
    if (record.find(8) != nullptr) properties.layer = mLayers.resolve(record.text(8));
    // The sign is kept: negative means that the layer was off when the file was written.
    properties.colour = static_cast<int>(record.integer(62, properties.colour, -kMostInt16, kMostInt16));
    return properties;
  }

  Records readVertices(const DxfRecord& polyline) {
    Records vertices;
    // Vertices are records of their own, after the polyline, up to SEQEND.
    while (current().type() == "VERTEX") vertices.push_back(advance());
    if (current().type() != "SEQEND")
      throw current().error(*current().begin(), "VERTEX or SEQEND of the POLYLINE of line " +
                                                    std::to_string(polyline.begin()->line));
    advance();
    return vertices;
  }

  void readAttributes(const DxfRecord& insert, Space space) {
    // Without the flag an ATTRIB that follows is an entity of its own.
    if (insert.integer(66, 0, 0, kMostInt16) == 0) return;
    while (current().type() == "ATTRIB") ++mDrawingP->mSkipped[skippedName(advance(), space)];
    // Some programs leave SEQEND out after attributes, although the format demands it.
    if (current().type() == "SEQEND") advance();
  }

  static std::string skippedName(const DxfRecord& record, Space space) {
    // A type name comes from the file and ends up in JSON, which must be UTF-8.
    std::string type = toUtf8(record.type());
    switch (space) {
      case Space::kModel:
        return type;
      case Space::kBlock:
        return type + " (in a block)";
      case Space::kPaper:
        return type + " (paper space)";
    }
    return type;
  }

  DxfSource mSource;
  Records mRecords;
  std::size_t mAt = 0;
  std::unique_ptr<standin::Drawing> mDrawingP;
  DxfInserts mInserts;
  DxfNames mLayers;
  Handles mHandles;
  std::vector<EntityPtr> mEntities;
  std::vector<std::pair<const standin::DrawnEntity*, std::size_t>> mInsertLines;
};

}  // namespace

std::unique_ptr<standin::Drawing> parseDrawing(std::string_view text, const std::string& file) {
  const std::vector<DxfGroup> groups = parseGroups(text, file);
  return DxfReader(groups, file).read();
}

std::unique_ptr<standin::Drawing> readDrawing(const std::filesystem::path& file) {
  return parseDrawing(readFile(file, "a drawing (DXF text file)"), file.string());
}

}  // namespace workbench
