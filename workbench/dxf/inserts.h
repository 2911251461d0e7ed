/// Insertions of blocks: single ones, arrays of columns and rows, and the check that no block contains
/// itself.
#ifndef WORKBENCH_DXF_INSERTS_H
#define WORKBENCH_DXF_INSERTS_H

#include "standin/objectarx/drawing.h"
#include "workbench/dxf/entity.h"
#include "workbench/dxf/groups.h"
#include "workbench/dxf/tables.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace workbench {

/// The insertions of one file and the blocks that they name. An insertion may name a block that is defined
/// further down. So the names of all blocks are given in advance, and the contents are checked when the whole
/// file has been read.
class DxfInserts {
 public:
  /// `mostDrawn`: points that all insertions of model space may draw together with its other entities.
  DxfInserts(standin::Drawing& drawing, std::string file, DxfNames blockNames, double mostDrawn)
      : mDrawing(drawing),
        mFile(std::move(file)),
        mBlockNames(std::move(blockNames)),
        mMostDrawn(mostDrawn) {}

  /// The block's contents follow; they replace those of an earlier block of that name.
  void beginBlock(const std::string& block) { mContents[block] = {}; }

  /// Adds what an entity other than an insertion draws to its block's count (model space: the empty name).
  void countPoints(const std::string& block, std::size_t points) {
    mContents[block].points += static_cast<double>(points);
  }

  /// The entity of an INSERT record. Throws InputError, also for a block that the file does not have.
  std::unique_ptr<standin::DrawnEntity> make(const DxfEntity& insert);

  /// Throws InputError at an insertion that makes a block contain itself, nests too deep, or draws too much:
  /// nothing may be drawn before this has returned.
  void check() const;

  static constexpr std::size_t kDeepestNesting = 100;
  static constexpr long long kMostCopies = 10000;        ///< columns times rows of one insertion
  static constexpr long long kMostCopiesInAll = 200000;  ///< of all insertions of the file

 private:
  struct Reference {
    std::string block;
    std::size_t line = 0;
    double copies = 1;
  };
  struct Contents {
    double points = 0;
    std::vector<Reference> references;
  };
  struct Walk {
    std::map<std::string, double> drawn;  ///< points by blocks that are done
    std::vector<std::string> open;        ///< from the outermost block to the one being walked
  };

  double drawnBy(const Reference& reference, Walk& walk) const;
  double drawnBy(const Contents& contents, Walk& walk) const;
  InputError tooMuch(const Reference& last, double drawn, const Walk& walk) const;
  std::string makeArrayBlock(const DxfRecord& record, const std::string& block, const AcGeMatrix3d& scale,
                             const standin::EntityProperties& properties);

  standin::Drawing& mDrawing;
  std::string mFile;
  DxfNames mBlockNames;
  std::map<std::string, Contents> mContents;  ///< by block; the empty name is model space
  double mMostDrawn;
  std::size_t mArrays = 0;
  long long mCopies = 0;
};

}  // namespace workbench

#endif
