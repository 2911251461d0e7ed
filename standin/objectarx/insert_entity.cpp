// Insertions of blocks.
#include "entity_base.h"

namespace standin {
namespace {

/// Blocks within blocks beyond this are not drawn: a block that contains itself would never end.
constexpr int kDeepestNesting = 16;

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
    thread_local int depth = 0;
    if (depth >= kDeepestNesting) return {};
    ++depth;
    std::vector<Polyline3> result;
    const AcGeVector3d fromBase = AcGePoint3d::kOrigin - mDrawing.blockBase(mBlock);
    for (const auto& entityP : mDrawing.blockEntities(mBlock))
      for (Polyline3& wire : entityP->outline()) {
        for (AcGePoint3d& point : wire) point = mTransform * (point + fromBase);
        result.push_back(std::move(wire));
      }
    --depth;
    return result;
  }

 protected:
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override {
    return boxOf(outline(), extents);
  }
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override {
    mTransform = transform * mTransform;
    return Acad::eOk;
  }

 private:
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
