/// Writes down what is done in a live session, as a session file that plays it again.
#ifndef WORKBENCH_SESSION_TEXT_H
#define WORKBENCH_SESSION_TEXT_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace workbench {

class SessionText {
 public:
  /// `line` is an event without its time; times never decrease.
  void add(std::int64_t timeMs, const std::string& line) {
    mBeforeLast = mText.size();
    mText += std::to_string(timeMs) + " " + line + "\n";
  }
  /// Takes the last event back: the host has refused it.
  void removeLast() { mText.resize(mBeforeLast); }

  bool isEmpty() const { return mText.empty(); }
  /// The events up to now, and the end.
  std::string ended(std::int64_t nowMs) const { return mText + std::to_string(nowMs) + " end\n"; }

 private:
  std::string mText;
  std::size_t mBeforeLast = 0;
};

}  // namespace workbench

#endif
