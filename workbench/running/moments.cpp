#include "workbench/running/moments.h"

#include "standin/controller/controller_feed.h"
#include "standin_clock.h"
#include "workbench/platform/desktop.h"
#include "workbench/running/drawing_state.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace workbench {
namespace {

namespace clock = standin::clock;
namespace host = standin::host;

// Numbers as the host gives them: 1 is the sheet of a layout, windows in it count from 2.
constexpr int kSheetViewport = 1;
constexpr int kFirstWindow = 2;

bool isSamePoint(const AcGePoint3d& a, const AcGePoint3d& b) {
  // Exact: what was not transformed has the same bits, and the smallest motion is a change.
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

bool isSameOutline(const std::vector<standin::Polyline3>& a, const std::vector<standin::Polyline3>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const standin::Polyline3& p, const standin::Polyline3& q) {
                      return std::equal(p.begin(), p.end(), q.begin(), q.end(), isSamePoint);
                    });
}

bool isSame(const std::vector<ReportShape>& a, const std::vector<ReportShape>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const ReportShape& p, const ReportShape& q) {
    return p.layer == q.layer && p.colour == q.colour && isSameOutline(p.outline, q.outline);
  });
}

}  // namespace

std::vector<std::int64_t> momentTimes(std::int64_t endMs, std::size_t count) {
  std::vector<std::int64_t> times;
  for (std::size_t i = 0; i + 1 < count; ++i)
    // Multiplied first: dividing first would add up the rounding. A week times 10000 fits in 64 bits.
    times.push_back(endMs * static_cast<std::int64_t>(i) / static_cast<std::int64_t>(count - 1));
  times.push_back(endMs);
  // A short session has fewer whole milliseconds than moments were asked for.
  times.erase(std::unique(times.begin(), times.end()), times.end());
  return times;
}

void MomentRecorder::begin() {
  const standin::Drawing* const drawing = host::drawing();
  if (drawing == nullptr) return;
  mDrawing = drawing->serial();
  // New entities are appended, so an index from here on is that of a new one.
  mEntitiesAtStart = drawing->entities().size();
  for (const auto& entity : drawing->entities())
    if (isSeen(*entity, *drawing)) mShapes.emplace(entity->properties().handle, shapesOf(*entity, *drawing));
}

void MomentRecorder::look() {
  // Cheap in the usual case: this runs at every drawing call.
  if (!clock::isMainThread() || mMoments.size() == mTimes.size()) return;
  noteCandidates();
  const std::int64_t now = clock::nowMs();
  if (mTimes[mMoments.size()] <= now) take(now);
}

void MomentRecorder::finish() {
  if (mMoments.size() < mTimes.size()) take(mTimes.back());
}

std::vector<ReportShape> MomentRecorder::takeShapes() {
  std::vector<ReportShape> shapes;
  for (auto& [handle, parts] : mShapes) std::move(parts.begin(), parts.end(), std::back_inserter(shapes));
  mShapes.clear();
  return shapes;
}

void MomentRecorder::take(std::int64_t nowMs) {
  assert(mMoments.size() < mTimes.size() && "a moment was taken after the last one");
  ReportMoment moment;
  // What the module has fetched and not what the device has sent: the picture shows its effect.
  const auto cap = standin::controller::lastHandedOver();
  std::copy(cap.begin(), cap.end(), moment.cap.begin());
  moment.viewport = host::currentViewport();
  moment.isLayout = host::variable(L"TILEMODE") == L"0";
  moment.isPaper = moment.isLayout && moment.viewport == kSheetViewport;
  // While the sheet is current, no window is. The first one is recorded then.
  const int window = moment.isPaper ? kFirstWindow : moment.viewport;
  // A viewport may have no view yet; the page says so in place of a picture.
  moment.camera = host::camera(window).value_or(host::Camera());
  moment.paper = host::paperView();
  const host::Layout layout = host::layout();
  moment.sheet = layout.sheet;
  if (moment.isLayout) moment.window = layout.windows.at(static_cast<std::size_t>(window - kFirstWindow));
  noteCandidates();
  moment.selection = mLastSelection;
  if (mDesktop == Desktop::kShown) moment.desktop = desktopState();
  // Once for all moments that are due: nothing changed on the screen between them.
  compare(moment);
  while (mMoments.size() < mTimes.size() && mTimes[mMoments.size()] <= nowMs) {
    moment.timeMs = mTimes[mMoments.size()];
    mMoments.push_back(limited(moment));
  }
}

ReportMoment MomentRecorder::limited(ReportMoment moment) {
  std::size_t changes = moment.gone.size();
  for (const ReportShape& shape : moment.changed)
    for (const standin::Polyline3& line : shape.outline) changes += line.size();
  if (mChanges + changes <= kMostChanges) {
    mChanges += changes;
    return moment;
  }
  moment.changed.clear();
  moment.gone.clear();
  ++mLeftOut;
  return moment;
}

void MomentRecorder::noteCandidates() {
  std::vector<std::uint64_t> selection = host::selection();
  if (selection == mLastSelection) return;
  mWasSelected.insert(selection.begin(), selection.end());
  mLastSelection = std::move(selection);
}

void MomentRecorder::compare(ReportMoment& moment) const {
  const standin::Drawing* const drawing = host::drawing();
  // By serial number: handles and even the address of a closed drawing may recur in the next one.
  if (drawing == nullptr || drawing->serial() != mDrawing) return compareWithAnother(drawing, moment);
  const auto& entities = drawing->entities();
  for (std::size_t i = 0; i < entities.size(); ++i) {
    const standin::DrawnEntity& entity = *entities[i];
    const std::uint64_t handle = entity.properties().handle;
    const bool isNew = i >= mEntitiesAtStart;
    if (!isSeen(entity, *drawing)) {
      // What was hidden from the beginning is not in the page at all.
      if (mShapes.count(handle) != 0) moment.gone.push_back(handle);
    } else if (isNew || mWasSelected.count(handle) != 0) {
      std::vector<ReportShape> parts = shapesOf(entity, *drawing);
      const auto before = mShapes.find(handle);
      if (before == mShapes.end() || !isSame(before->second, parts))
        std::move(parts.begin(), parts.end(), std::back_inserter(moment.changed));
    }
  }
}

void MomentRecorder::compareWithAnother(const standin::Drawing* drawing, ReportMoment& moment) const {
  std::set<std::uint64_t> seen;
  if (drawing != nullptr)
    for (const auto& entityP : drawing->entities()) {
      if (!isSeen(*entityP, *drawing)) continue;
      std::vector<ReportShape> parts = shapesOf(*entityP, *drawing);
      std::move(parts.begin(), parts.end(), std::back_inserter(moment.changed));
      seen.insert(entityP->properties().handle);
    }
  for (const auto& [handle, shape] : mShapes)
    if (seen.count(handle) == 0) moment.gone.push_back(handle);
}

}  // namespace workbench
