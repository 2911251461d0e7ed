#include "workbench/progress_line.h"

namespace workbench {
namespace {

// Ten times a second. A terminal that shows every step would slow the run down.
constexpr std::chrono::milliseconds kPeriod(100);
// Back to the first column, and after the text everything to the right of it is erased.
constexpr std::string_view kFirstColumn = "\r";
constexpr std::string_view kEraseRest = "\033[K";

}  // namespace

bool ProgressLine::isDue() const {
  return mIsShown && std::chrono::steady_clock::now() >= mNext;
}

void ProgressLine::show(std::string_view text) {
  if (!mIsShown) return;
  mNext = std::chrono::steady_clock::now() + kPeriod;
  mIsDrawn = true;
  mErr << kFirstColumn << text << kEraseRest << std::flush;
}

void ProgressLine::erase() {
  if (mIsDrawn) mErr << kFirstColumn << kEraseRest << std::flush;
  mIsDrawn = false;
}

}  // namespace workbench
