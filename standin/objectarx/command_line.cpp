/// Reads the text of a command line letter by letter and passes each whole input on.
#include "command_line.h"

#include "commands.h"
#include "lisp.h"
#include "operation.h"
#include "printing.h"
#include "selection.h"
#include "text.h"

#include <cassert>

namespace standin::host {
namespace {

constexpr wchar_t kEscape = 27;

/// A blank ends an input as Enter does, as at the host's command line.
bool isEnd(wchar_t letter) {
  return letter == L' ' || letter == L'\n' || letter == L'\r';
}

void beginBuiltIn(CommandLine& line, const BuiltIn& builtIn, bool isTransparent) {
  if (isTransparent && line.isCommandActive() && !builtIn.isTransparent)
    return hostPrint(L"** That command may not be invoked transparently **");
  std::unique_ptr<ActiveCommand> commandP = builtIn.make();
  // Null: the command has already done all it does.
  if (commandP != nullptr) line.push(std::move(commandP));
}

void begin(CommandLine& line, const std::wstring& input) {
  const bool isTransparent = input.front() == L'\'';
  const std::wstring name = keyword(isTransparent ? input.substr(1) : input);
  if (const BuiltIn* builtInP = findBuiltIn(name)) return beginBuiltIn(line, *builtInP, isTransparent);
  // A module's commands are modal: they cannot interrupt another.
  if (!line.isCommandActive() && runRegisteredCommand(name)) return;
  hostPrint(L"Unknown command \"" + name + L"\".");
}

/// Takes one input whole, blanks and all, as AutoLISP gives it.
void enter(CommandLine& line, const std::wstring& input) {
  // An apostrophe begins a transparent command in the middle of another.
  if (!line.isCommandActive() || (!input.empty() && input.front() == L'\'')) {
    if (!input.empty()) begin(line, input);
    return;
  }
  if (line.top().input(input) == ActiveCommand::Next::kDone) line.pop();
}

void evaluate(CommandLine& line, const std::wstring& expression) {
  try {
    for (const std::wstring& input : commandInputs(expression)) enter(line, input);
  } catch (const LispError& error) {
    // Byte by byte: the texts are ASCII.
    const std::string what = error.what();
    hostPrint(L"; error: " + std::wstring(what.begin(), what.end()));
  }
}

void escape(CommandLine& line) {
  const bool isCancelling = line.isCommandActive();
  line.clear();
  // With no command to cancel ESC clears the pre-selection.
  if (!isCancelling) return selectNone();
  hostPrint(L"*Cancel*");
}

void takeLetter(CommandLine& line, wchar_t letter) {
  if (letter == kEscape) return escape(line);
  std::wstring& pending = line.pending();
  const bool isLisp = !pending.empty() && pending.front() == L'(';
  if (!isEnd(letter) || (isLisp && !isWholeExpression(pending))) {
    // A line break inside an expression is only a separator.
    pending += letter == L'\n' || letter == L'\r' ? L' ' : letter;
    return;
  }
  const std::wstring input = std::move(pending);
  // Before it is carried out: a command may be sent more text meanwhile.
  pending.clear();
  if (isLisp) return evaluate(line, input);
  enter(line, input);
}

}  // namespace

void feed(CommandLine& line, const std::wstring& text) {
  assert(isMainThread() && "the command line is typed at on the main thread");
  for (const wchar_t letter : text) takeLetter(line, letter);
  if (line.isCommandActive() && line.pending().empty()) hostPrint(line.top().prompt());
}

}  // namespace standin::host
