/// A command that waits for input, and what a document's command line holds between inputs. Main thread only,
/// and not while the host's lock is held.
#ifndef STANDIN_ACTIVE_COMMAND_H
#define STANDIN_ACTIVE_COMMAND_H

#include <atomic>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace standin::host {

class ActiveCommand {
 public:
  enum class Next { kMore, kDone };

  virtual ~ActiveCommand() = default;
  /// The prompt for the input that the command expects next.
  virtual std::wstring prompt() const = 0;
  /// Takes an input, empty for a lone Enter.
  virtual Next input(const std::wstring& text) = 0;
};

class CommandLine {
 public:
  std::wstring& pending() { return mPending; }
  bool isCommandActive() const { return mActiveCount > 0; }

  /// The command that takes the next input. Only while one is active.
  ActiveCommand& top() { return *mActive.back(); }
  void push(std::unique_ptr<ActiveCommand> commandP) {
    mActive.push_back(std::move(commandP));
    ++mActiveCount;
  }
  void pop() {
    mActive.pop_back();
    --mActiveCount;
  }

  /// Forgets what waits, silently.
  void clear() {
    mPending.clear();
    mActive.clear();
    mActiveCount = 0;
  }

 private:
  std::wstring mPending;  ///< an input that has not ended
  std::vector<std::unique_ptr<ActiveCommand>>
      mActive;                       ///< a transparent command is above the one it interrupts
  std::atomic<int> mActiveCount{0};  ///< host calls read it on any thread
};

}  // namespace standin::host

#endif
