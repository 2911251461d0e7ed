/// A line that shows how far the program is, rewritten in place. Main thread only.
#ifndef WORKBENCH_PROGRESS_LINE_H
#define WORKBENCH_PROGRESS_LINE_H

#include <chrono>
#include <ostream>
#include <string_view>

namespace workbench {

class ProgressLine {
 public:
  /// Nothing is written unless `isShown`, which is for terminals only.
  ProgressLine(std::ostream& err, bool isShown) : mErr(err), mIsShown(isShown) {}
  ~ProgressLine() { erase(); }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// Whether it is time for another text: to be asked before one that changes all the time is made.
  bool isDue() const;
  /// Shows the text in place of the one before.
  void show(std::string_view text);
  /// Erases the line, so that what is printed next begins in the first column.
  void erase();

 private:
  std::ostream& mErr;
  bool mIsShown;
  bool mIsDrawn = false;
  std::chrono::steady_clock::time_point mNext;
};

}  // namespace workbench

#endif
