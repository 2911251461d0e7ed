/// The drawing as the pages have it, and what has changed in it since. Main thread only.
#ifndef WORKBENCH_LIVE_SCENE_H
#define WORKBENCH_LIVE_SCENE_H

#include "workbench/report/report_data.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace workbench {

class LiveScene {
 public:
  /// The current drawing as one binary message: the length of the header (32 bits, little-endian), the header
  /// (JSON, filled with blanks to a multiple of 4), then the coordinates of all polylines as 32-bit floats
  /// relative to the header's origin. From now on changes are counted against it.
  std::string whole(const std::string& name);

  /// What the selection has become, or a JSON message of what is new, moved or gone; empty when nothing is.
  /// With `isEverything` also entities that nobody has selected are looked at, which takes longer.
  std::string changes(bool isEverything);

  /// Whether another drawing than that of whole() is shown, or none.
  bool isOfAnotherDrawing() const;

 private:
  void noteSelection();

  std::uint64_t mDrawing = 0;  ///< serial number, 0 for none
  std::size_t mEntities = 0;   ///< seen so far; new ones are appended
  std::map<std::uint64_t, std::vector<ReportShape>>
      mWatched;  ///< selected at some time, as the pages have them
  std::set<std::uint64_t> mGone;
  std::vector<std::uint64_t> mSelection;
};

}  // namespace workbench

#endif
