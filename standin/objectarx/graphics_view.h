/// A viewport's graphics view: a live camera, and the one that is stored as the viewport's own.
#ifndef STANDIN_GRAPHICS_VIEW_H
#define STANDIN_GRAPHICS_VIEW_H

#include "camera.h"

#include "gs.h"

namespace standin::host {

/// Numbers of viewports: the tile of the model tab, and the sheet of the layout, after which its floating
/// ones count on.
constexpr int kTileViewport = 2;
constexpr int kPaperViewport = 1;

class GraphicsView final : public AcGsView {
 public:
  explicit GraphicsView(int number) : mNumber(number) {}

  AcGePoint3d position() const override;
  AcGePoint3d target() const override;
  AcGeVector3d upVector() const override;
  bool isPerspective() const override;
  double fieldWidth() const override;
  double fieldHeight() const override;
  void setView(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& up,
               double fieldWidth, double fieldHeight, Projection projection) override;
  void zoom(double factor) override;
  bool isValid() const override;
  void update() override;

  int number() const { return mNumber; }
  const Camera& live() const { return mLive; }
  const Camera& committed() const { return mCommitted; }
  /// Changes what is shown only.
  void show(const Camera& camera) { mLive = camera; }
  /// Changes what is shown and stored.
  void store(const Camera& camera) { mLive = mCommitted = camera; }
  /// Drops what was not stored.
  void revert() { mLive = mCommitted; }

 private:
  int mNumber;
  Camera mLive;
  Camera mCommitted;
};

}  // namespace standin::host

#endif
