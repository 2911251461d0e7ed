// Insertions of blocks.
#include "entity_base.h"

namespace standin {
namespace {

/// Blocks within blocks beyond this are not drawn: a block that contains itself would never end.
constexpr int kDeepestNesting = 101;
constexpr const char* kLayerOfTheInsertion = "0";
constexpr int kByBlock = 0;

class InsertEntity final : public GeometryEntity {
 public:
  InsertEntity(EntityProperties properties, const Drawing& drawing, std::string block,
               const AcGeMatrix3d& transform)
      : GeometryEntity(std::move(properties)),
        mDrawing(drawing),
        mBlock(std::move(block)),
        mTransform(transform) {}

  const char* typeName() const override { return "INSERT"; }
  Polyline3 points() const override { return {mTransform * AcGePoint3d::kOrigin}; }

  std::vector<Polyline3> outline() const override {
    std::vector<Polyline3> result;
    for (DrawnPart& part : parts())
      for (Polyline3& wire : part.outline) result.push_back(std::move(wire));
    return result;
  }

  std::vector<DrawnPart> parts() const override {
    // Counted across all insertions of the thread, because each level is another object.
    thread_local int depth = 0;
    if (depth >= kDeepestNesting) return {};
    ++depth;
    std::vector<DrawnPart> result;
    for (const auto& entityP : mDrawing.blockEntities(mBlock))
      for (DrawnPart& part : entityP->parts()) result.push_back(inserted(std::move(part)));
    --depth;
    return result;
  }

 protected:
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override {
    return boxOf(outline(), extents);
  }
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override {
    // The new transformation acts in the world, so after the one from the block to the world.
    mTransform = transform * mTransform;
    return Acad::eOk;
  }

 private:
  /// The block's base point goes to the insertion point, so it is subtracted before the transformation.
  /// A block's content on layer "0" and in colour "by block" takes what the insertion has.
  DrawnPart inserted(DrawnPart part) const {
    const AcGeVector3d fromBase = AcGePoint3d::kOrigin - mDrawing.blockBase(mBlock);
    for (Polyline3& wire : part.outline)
      for (AcGePoint3d& point : wire) point = mTransform * (point + fromBase);
    if (part.layer == kLayerOfTheInsertion) part.layer = properties().layer;
    // Before `colour` is replaced below: "by block" must still be seen here.
    if (part.colourLayer == kLayerOfTheInsertion || part.colour == kByBlock)
      part.colourLayer = properties().layer;
    if (part.colour == kByBlock) part.colour = properties().colour;
    return part;
  }

  const Drawing& mDrawing;
  std::string mBlock;
  AcGeMatrix3d mTransform;
};

}  // namespace

std::unique_ptr<DrawnEntity> makeInsert(EntityProperties properties, const Drawing& drawing,
                                        const std::string& block, const AcGeMatrix3d& transform) {
  return std::make_unique<InsertEntity>(std::move(properties), drawing, block, transform);
}

}  // namespace standin
