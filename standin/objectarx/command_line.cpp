#include "command_line.h"

#include "commands.h"
#include "lisp.h"
#include "printing.h"
#include "state.h"

namespace standin::host {
namespace {

constexpr wchar_t kEscape = 27;

bool isEnd(wchar_t letter) {
  return letter == L' ' || letter == L'\n' || letter == L'\r';
}

}  // namespace

CommandLine::CommandLine() = default;
CommandLine::~CommandLine() = default;

void CommandLine::feed(const std::wstring& text) {
  for (const wchar_t letter : text) takeLetter(letter);
  if (!mActive.empty() && mPending.empty()) hostPrint(mActive.back()->prompt());
}

void CommandLine::takeLetter(wchar_t letter) {
  if (letter == kEscape) return escape();
  const bool isLisp = !mPending.empty() && mPending.front() == L'(';
  if (!isEnd(letter) || (isLisp && !isWholeExpression(mPending))) {
    mPending += letter == L'\n' || letter == L'\r' ? L' ' : letter;
    return;
  }
  const std::wstring input = std::move(mPending);
  mPending.clear();
  if (!isLisp) return enter(input);
  try {
    for (const std::wstring& part : commandInputs(input)) enter(part);
  } catch (const LispError& error) {
    const std::string what = error.what();
    hostPrint(L"; error: " + std::wstring(what.begin(), what.end()));
  }
}

void CommandLine::enter(const std::wstring& input) {
  if (mActive.empty() || (!input.empty() && input.front() == L'\'')) {
    if (!input.empty()) begin(input);
    return;
  }
  if (mActive.back()->input(input) == ActiveCommand::Next::kMore) return;
  mActive.pop_back();
  --mActiveCount;
}

void CommandLine::clear() {
  mPending.clear();
  mActive.clear();
  mActiveCount = 0;
}

void CommandLine::escape() {
  const bool isCancelling = !mActive.empty();
  clear();
  if (!isCancelling) return selectNone();
  hostPrint(L"*Cancel*");
}

void CommandLine::begin(const std::wstring& input) {
  const bool isTransparent = input.front() == L'\'';
  const std::wstring name = keyword(isTransparent ? input.substr(1) : input);
  if (findBuiltIn(name) != nullptr) return beginBuiltIn(name, isTransparent);
  if (mActive.empty() && runRegisteredCommand(name)) return;
  hostPrint(L"Unknown command \"" + name + L"\".");
}

void CommandLine::beginBuiltIn(const std::wstring& name, bool isTransparent) {
  const BuiltIn& builtIn = *findBuiltIn(name);
  if (isTransparent && !mActive.empty() && !builtIn.isTransparent)
    return hostPrint(L"** That command may not be invoked transparently **");
  std::unique_ptr<ActiveCommand> commandP = builtIn.make();
  if (commandP == nullptr) return;
  mActive.push_back(std::move(commandP));
  ++mActiveCount;
}

}  // namespace standin::host
