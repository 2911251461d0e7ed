#include "diesel.h"

#include "operation.h"
#include "text.h"
#include "variables.h"

#include <cassert>
#include <cmath>
#include <cwchar>
#include <mutex>
#include <vector>

namespace standin::host {
namespace {

/// Deeper nesting counts as an expression that does not end: it must not exhaust the stack.
constexpr int kDeepestNesting = 64;
/// Below this every whole number is exact in a double, and is shown without an exponent.
constexpr double kLargestWhole = 1e15;

// In two pieces: two question marks before a parenthesis would be a trigraph.
std::wstring badArguments(const std::wstring& name) {
  return L"$(" + name +
         L",?"
         L"?)";
}

std::wstring numberText(double value) {
  wchar_t text[40];
  const bool isWhole = value == std::floor(value) && std::abs(value) < kLargestWhole;
  std::swprintf(text, sizeof text / sizeof text[0], isWhole ? L"%.0f" : L"%.12g", value);
  return text;
}

std::wstring getVariable(const std::wstring& name) {
  const std::lock_guard lock(hostMutex());
  // All variables that the stand-in has are whole numbers.
  const std::optional<int> value = readVariable(name);
  return value ? std::to_wstring(*value) : badArguments(L"getvar");
}

std::wstring choose(const std::vector<std::wstring>& arguments) {
  double condition = 0;
  if (arguments.size() < 2 || arguments.size() > 3 || !parseNumber(arguments[0], condition))
    return badArguments(L"if");
  // Both branches have been evaluated by now; none has an effect, so it makes no difference.
  if (condition != 0) return arguments[1];
  return arguments.size() == 3 ? arguments[2] : std::wstring();
}

/// The first number with the others added, or taken away.
std::wstring sum(const std::wstring& name, const std::vector<std::wstring>& arguments, double sign) {
  double total = 0;
  if (arguments.empty() || !parseNumber(arguments[0], total)) return badArguments(name);
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    double number = 0;
    if (!parseNumber(arguments[i], number)) return badArguments(name);
    total += sign * number;
  }
  return numberText(total);
}

std::wstring isEqualNumber(const std::vector<std::wstring>& arguments) {
  double a = 0;
  double b = 0;
  if (arguments.size() != 2 || !parseNumber(arguments[0], a) || !parseNumber(arguments[1], b))
    return badArguments(L"=");
  return a == b ? L"1" : L"0";
}

std::wstring call(const std::wstring& name, const std::vector<std::wstring>& arguments) {
  if (isSameName(name, L"getvar"))
    return arguments.size() == 1 ? getVariable(arguments[0]) : badArguments(name);
  if (isSameName(name, L"if")) return choose(arguments);
  // `eq` compares texts and `=` numbers: 1 and 1.0 are equal only to the second.
  if (isSameName(name, L"eq")) {
    if (arguments.size() != 2) return badArguments(name);
    return arguments[0] == arguments[1] ? L"1" : L"0";
  }
  if (name == L"=") return isEqualNumber(arguments);
  if (name == L"+") return sum(name, arguments, 1);
  if (name == L"-") return sum(name, arguments, -1);
  return L"$(" + name + L")??";
}

class Evaluator {
 public:
  explicit Evaluator(const std::wstring& text) : mText(text) {}

  std::wstring all() {
    std::wstring result;
    while (mAt < mText.size() && !mIsBroken) result += piece();
    return mIsBroken ? L"$?" : result;
  }

 private:
  bool isAtExpression() const { return mText.compare(mAt, 2, L"$(") == 0; }

  /// An expression's value, a quoted text without its quotes, or one letter.
  std::wstring piece() {
    assert(mAt < mText.size() && "a piece begins before the end of the text");
    if (isAtExpression()) return expression();
    if (mText[mAt] == L'"') return quoted();
    return {mText[mAt++]};
  }

  std::wstring quoted() {
    const std::size_t end = mText.find(L'"', mAt + 1);
    if (end == std::wstring::npos) {
      mIsBroken = true;
      return {};
    }
    std::wstring result = mText.substr(mAt + 1, end - mAt - 1);
    mAt = end + 1;
    return result;
  }

  std::wstring expression() {
    if (++mDepth > kDeepestNesting) mIsBroken = true;
    mAt += 2;
    std::vector<std::wstring> parts(1);
    while (!mIsBroken && mAt < mText.size() && mText[mAt] != L')') {
      if (mText[mAt] == L',') {
        parts.emplace_back();
        ++mAt;
      } else {
        parts.back() += piece();
      }
    }
    // The text ended before the closing parenthesis.
    if (mAt >= mText.size()) mIsBroken = true;
    if (mIsBroken) return {};
    ++mAt;
    --mDepth;
    return call(parts[0], {parts.begin() + 1, parts.end()});
  }

  const std::wstring& mText;
  std::size_t mAt = 0;
  int mDepth = 0;
  bool mIsBroken = false;
};

}  // namespace

std::wstring evaluateDiesel(const std::wstring& text) {
  return Evaluator(text).all();
}

}  // namespace standin::host
