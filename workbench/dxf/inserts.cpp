#include "workbench/dxf/inserts.h"

#include "workbench/dxf/frame.h"

#include <algorithm>
#include <cstdio>

namespace workbench {
namespace {

constexpr long long kMostInt16 = 32767;
constexpr AcGeVector3d kWorldZ{0, 0, 1};

AcGeMatrix3d translation(double x, double y, double z) {
  return AcGeMatrix3d().setTranslation({x, y, z});
}

long long columnsOf(const DxfRecord& record) {
  // Some programs write 0 columns or rows for an insertion that is no array.
  return std::max(record.integer(70, 1, 0, kMostInt16), 1LL);
}
long long rowsOf(const DxfRecord& record) {
  return std::max(record.integer(71, 1, 0, kMostInt16), 1LL);
}

/// Position and rotation of the insertion, without its scale.
AcGeMatrix3d placement(const DxfRecord& record) {
  const AcGePoint3d at = record.point(10);
  // Applied from right to left: turn, move to the insertion point, then from the object frame to the world.
  // The insertion point is in the object frame too.
  return dxfFrame(record.direction(210, kWorldZ)).matrix() * translation(at.x, at.y, at.z) *
         AcGeMatrix3d::rotation(radians(record.real(50, 0)), kWorldZ, AcGePoint3d::kOrigin);
}

}  // namespace

std::unique_ptr<standin::DrawnEntity> DxfInserts::make(const DxfEntity& insert) {
  const auto& [record, vertices, container, properties] = insert;
  const std::string named = record.text(2);
  // Checked against the names of the whole file: a block may be defined after the insertion that uses it.
  if (!mBlockNames.has(named)) throw record.error(*record.find(2), "the name of a block of this file");
  const std::string block = mBlockNames.resolve(named);
  const long long copies = columnsOf(record) * rowsOf(record);
  // A file of a few lines could otherwise ask for 32767 x 32767 copies.
  if (copies > kMostCopies)
    throw record.error("at most " + std::to_string(kMostCopies) + " copies of a block",
                       std::to_string(copies));
  mCopies += copies;
  if (mCopies > kMostCopiesInAll)
    throw record.error("at most " + std::to_string(kMostCopiesInAll) + " copies of blocks in all insertions",
                       std::to_string(mCopies));
  // Noted even though the block may be empty so far: check() follows the reference when all blocks are known.
  mContents[container].references.push_back({block, record.begin()->line, static_cast<double>(copies)});

  // Each factor is 1 when it is missing. A negative one mirrors, and 0 flattens, which is allowed.
  const AcGeMatrix3d scale = scaling(record.real(41, 1), record.real(42, 1), record.real(43, 1));
  // The block's base point is subtracted by the drawing, not here.
  if (copies == 1) return standin::makeInsert(properties, mDrawing, block, placement(record) * scale);
  const std::string array = makeArrayBlock(record, block, scale, properties);
  return standin::makeInsert(properties, mDrawing, array, placement(record));
}

/// An array is one entity with one handle: the insertion of a nameless block that holds the copies. Its
/// spacing turns with the insertion and is not scaled.
std::string DxfInserts::makeArrayBlock(const DxfRecord& record, const std::string& block,
                                       const AcGeMatrix3d& scale,
                                       const standin::EntityProperties& properties) {
  // Not a name that a file has for a block: "*" begins those of nameless blocks and "|" is part of those from
  // another drawing, and nothing has both.
  std::string name = "*ARRAY|" + std::to_string(++mArrays);
  const double columnSpacing = record.real(44, 0);
  const double rowSpacing = record.real(45, 0);
  standin::EntityProperties copy = properties;
  // The copies are no entities of the drawing: only the array as a whole can be selected.
  copy.handle = 0;
  mDrawing.addBlock(name, AcGePoint3d::kOrigin);
  for (long long row = 0; row < rowsOf(record); ++row)
    for (long long column = 0; column < columnsOf(record); ++column) {
      // The step is to the left of the scale, so the spacing is in units of the drawing and not of the block.
      const AcGeMatrix3d step =
          translation(static_cast<double>(column) * columnSpacing, static_cast<double>(row) * rowSpacing, 0);
      mDrawing.addToBlock(name, standin::makeInsert(copy, mDrawing, block, step * scale));
    }
  return name;
}

void DxfInserts::check() const {
  Walk walk;
  for (const auto& [name, contents] : mContents) {
    // Every block is checked, also one that nothing inserts: it is never drawn, but the file is wrong all the
    // same.
    walk.open = {name};
    drawnBy(contents, walk);
  }
}

double DxfInserts::drawnBy(const Contents& contents, Walk& walk) const {
  // A double, since nested arrays multiply beyond 64 bits long before the walk ends.
  double drawn = contents.points;
  for (const Reference& reference : contents.references) {
    drawn += reference.copies * drawnBy(reference, walk);
    // Compared after each reference, so the walk ends at the first one that is too much.
    if (drawn > mMostDrawn) throw tooMuch(reference, drawn, walk);
  }
  return drawn;
}

double DxfInserts::drawnBy(const Reference& reference, Walk& walk) const {
  const std::string& block = reference.block;
  const FilePlace place{mFile, reference.line};
  // The cycle is looked for before the finished blocks: a block that is still open has no result yet.
  if (std::find(walk.open.begin(), walk.open.end(), block) != walk.open.end())
    throw InputError(place, "a block that does not contain itself", inQuotes(block));
  // Bounds the recursion here and in the drawing code, which has one stack frame for each level.
  if (walk.open.size() > kDeepestNesting)
    throw InputError(place, "at most " + std::to_string(kDeepestNesting) + " blocks one in another",
                     inQuotes(block));
  const auto contents = mContents.find(block);
  if (contents == mContents.end()) return 0;
  // Each block is counted once. Without this a chain of blocks that each insert the next one twice takes
  // exponential time.
  const auto done = walk.drawn.find(block);
  if (done != walk.drawn.end()) return done->second;
  walk.open.push_back(block);
  const double drawn = drawnBy(contents->second, walk);
  walk.open.pop_back();
  walk.drawn[block] = drawn;
  return drawn;
}

/// Names the insertions on the way from model space to the one that goes beyond the limit.
InputError DxfInserts::tooMuch(const Reference& last, double drawn, const Walk& walk) const {
  std::string lines;
  for (std::size_t i = 0; i + 1 < walk.open.size(); ++i)
    // The first insertion of the next block is enough for the user to find the chain.
    for (const Reference& reference : mContents.at(walk.open[i]).references)
      if (reference.block == walk.open[i + 1]) {
        lines += std::to_string(reference.line) + ", ";
        break;
      }
  char counts[100];
  std::snprintf(counts, sizeof counts, "%.3g points", drawn);
  return InputError(
      {mFile, last.line},
      "insertions that draw at most " + std::to_string(static_cast<long long>(mMostDrawn)) +
          " points together",
      std::string(counts) + " with the insertions of the lines " + lines + std::to_string(last.line));
}

}  // namespace workbench
