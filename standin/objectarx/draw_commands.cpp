// LINE and CIRCLE.
#include "built_ins.h"
#include "operation.h"
#include "printing.h"
#include "state.h"
#include "text.h"

#include <algorithm>
#include <mutex>
#include <optional>

namespace standin::host {
namespace {

/// "x,y" or "x,y,z"; without a z the point is in the plane z = 0.
std::optional<AcGePoint3d> parsePoint(const std::wstring& text) {
  double values[3] = {0, 0, 0};
  std::size_t count = 0;
  std::size_t start = 0;
  while (start <= text.size()) {
    const std::size_t comma = std::min(text.find(L',', start), text.size());
    if (count == 3 || !parseNumber(text.substr(start, comma - start), values[count++])) return std::nullopt;
    start = comma + 1;
  }
  if (count < 2) return std::nullopt;
  return AcGePoint3d(values[0], values[1], values[2]);
}

void addToDrawing(std::unique_ptr<DrawnEntity> entity) {
  const std::lock_guard lock(hostMutex());
  // The document may have been closed while the command waited.
  if (currentDrawing() != nullptr) currentDrawing()->add(std::move(entity));
}

class LineCommand final : public ActiveCommand {
 public:
  std::wstring prompt() const override { return mLast ? L"Specify next point:" : L"Specify first point:"; }

  Next input(const std::wstring& text) override {
    if (text.empty()) return Next::kDone;
    const std::optional<AcGePoint3d> point = parsePoint(text);
    if (!point) {
      hostPrint(L"Point or option keyword required.");
      return Next::kMore;
    }
    // Each segment is a line of its own and is drawn at once, so ESC keeps those before it.
    if (mLast) addToDrawing(makeLine({}, *mLast, *point));
    mLast = point;
    return Next::kMore;
  }

 private:
  std::optional<AcGePoint3d> mLast;
};

class CircleCommand final : public ActiveCommand {
 public:
  std::wstring prompt() const override {
    return mCentre ? L"Specify radius of circle:" : L"Specify center point for circle:";
  }

  Next input(const std::wstring& text) override {
    if (text.empty()) return Next::kDone;
    return mCentre ? takeRadius(text) : takeCentre(text);
  }

 private:
  Next takeCentre(const std::wstring& text) {
    mCentre = parsePoint(text);
    if (!mCentre) hostPrint(L"Point or option keyword required.");
    return Next::kMore;
  }
  Next takeRadius(const std::wstring& text) {
    double radius = 0;
    if (!parseNumber(text, radius) || radius <= 0) {
      hostPrint(L"Value must be positive and nonzero.");
      return Next::kMore;
    }
    // The world's Z axis: the stand-in has no user coordinate system.
    addToDrawing(makeCircle({}, *mCentre, {0, 0, 1}, radius));
    return Next::kDone;
  }

  std::optional<AcGePoint3d> mCentre;
};

}  // namespace

std::unique_ptr<ActiveCommand> makeLineCommand() {
  return std::make_unique<LineCommand>();
}
std::unique_ptr<ActiveCommand> makeCircleCommand() {
  return std::make_unique<CircleCommand>();
}

}  // namespace standin::host
