/// The moments that the report shows: what was on the screen, evenly over the run. Main thread only.
#ifndef WORKBENCH_MOMENTS_H
#define WORKBENCH_MOMENTS_H

#include "workbench/report/report.h"

#include <cstdint>
#include <map>
#include <set>
#include <vector>

namespace workbench {

/// `count` times evenly from 0 to `endMs`, rounded to whole ms, no time twice. One moment is the end.
std::vector<std::int64_t> momentTimes(std::int64_t endMs, std::size_t count);

/// Takes each moment at the first look at or after its time; between two looks the screen does not change.
class MomentRecorder {
 public:
  /// Points of moved and new shapes, and handles of erased ones, that all moments may hold together. A large
  /// drawing that is moved as a whole would otherwise be kept once for each moment.
  static constexpr std::size_t kMostChanges = 2000000;

  enum class Desktop { kLeftOut, kShown };

  MomentRecorder(std::int64_t endMs, std::size_t count, Desktop desktop = Desktop::kLeftOut)
      : mTimes(momentTimes(endMs, count)), mDesktop(desktop) {}

  /// Remembers the drawing as it is when the session begins.
  void begin();
  /// Notes what is selected, and takes the moments whose time has come. To be called at least once while a
  /// selection lasts. Does nothing on any thread but the main one: a module
  /// that breaks the rules may draw from another.
  void look();
  /// Takes all remaining moments from the present state.
  void finish();

  const std::vector<std::int64_t>& times() const { return mTimes; }

  std::vector<ReportShape> takeShapes();
  std::vector<ReportMoment> takeMoments() { return std::move(mMoments); }
  /// Moments that show the drawing as it was at the beginning, because of kMostChanges.
  std::size_t leftOut() const { return mLeftOut; }

 private:
  void take(std::int64_t nowMs);
  /// The moment, without its changes when there is no room left for them.
  ReportMoment limited(ReportMoment moment);
  void noteCandidates();
  void compare(ReportMoment& moment) const;
  /// While another document is current, or none (null): nothing of the run's drawing is on the screen.
  void compareWithAnother(const standin::Drawing* drawing, ReportMoment& moment) const;

  std::vector<std::int64_t> mTimes;
  Desktop mDesktop;
  std::vector<ReportMoment> mMoments;
  std::size_t mChanges = 0;  ///< kept so far
  std::size_t mLeftOut = 0;
  std::map<std::uint64_t, std::vector<ReportShape>> mShapes;  ///< at the beginning, by handle
  std::uint64_t mDrawing = 0;                                 ///< serial number of the run's drawing
  std::size_t mEntitiesAtStart = 0;
  std::vector<std::uint64_t> mLastSelection;
  /// Entities that were selected at some look: nothing else of the drawing is ever moved, and comparing all
  /// of a large drawing at every moment would take longer than the run.
  std::set<std::uint64_t> mWasSelected;
};

}  // namespace workbench

#endif
