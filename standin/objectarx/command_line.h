/// The command line: text comes in as it is typed or sent, letter by letter; a blank or newline ends an
/// input, ESC ends a command. Main thread only, and not while the host's lock is held.
#ifndef STANDIN_COMMAND_LINE_H
#define STANDIN_COMMAND_LINE_H

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace standin::host {

/// A command that has begun and waits for input.
class ActiveCommand {
 public:
  enum class Next { kMore, kDone };

  virtual ~ActiveCommand() = default;
  /// What the command asks for at this moment.
  virtual std::wstring prompt() const = 0;
  /// Takes an input, empty for a lone Enter.
  virtual Next input(const std::wstring& text) = 0;
};

class CommandLine {
 public:
  CommandLine();
  ~CommandLine();

  /// Takes text; what is not ended yet waits for more.
  void feed(const std::wstring& text);
  /// Takes one input whole, blanks and all, as AutoLISP gives it.
  void enter(const std::wstring& input);

  /// Forgets what waits, silently.
  void clear();

  bool isCommandActive() const { return mActiveCount > 0; }

 private:
  void takeLetter(wchar_t letter);
  void escape();
  void begin(const std::wstring& input);
  void beginBuiltIn(const std::wstring& name, bool isTransparent);

  std::wstring mPending;
  std::vector<std::unique_ptr<ActiveCommand>>
      mActive;                       ///< a transparent command lies over the one it interrupts
  std::atomic<int> mActiveCount{0};  ///< read by host calls on any thread
};

}  // namespace standin::host

#endif
