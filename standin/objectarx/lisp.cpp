/// The few forms of AutoLISP that menu macros send.
#include "lisp.h"

#include "diesel.h"
#include "text.h"

#include <cwctype>

namespace standin::host {
namespace {

class Reader {
 public:
  explicit Reader(const std::wstring& text) : mText(text) {}

  bool at(wchar_t letter) {
    skipBlanks();
    return mAt < mText.size() && mText[mAt] == letter;
  }
  void expect(wchar_t letter) {
    if (!at(letter)) throw LispError("malformed list on input");
    ++mAt;
  }
  bool isAtEnd() {
    skipBlanks();
    return mAt == mText.size();
  }
  std::wstring symbol() {
    skipBlanks();
    const std::size_t start = mAt;
    while (mAt < mText.size() && !std::iswspace(static_cast<wint_t>(mText[mAt])) && mText[mAt] != L'(' &&
           mText[mAt] != L')' && mText[mAt] != L'"')
      ++mAt;
    // Symbols of AutoLISP are the same in any case of letters.
    return upper(std::wstring_view(mText).substr(start, mAt - start));
  }
  std::wstring string() {
    expect(L'"');
    std::wstring result;
    for (; mAt < mText.size() && mText[mAt] != L'"'; ++mAt) {
      // A backslash makes the next letter a plain one: \" and \\ are all that file names need.
      if (mText[mAt] == L'\\' && mAt + 1 < mText.size()) ++mAt;
      result += mText[mAt];
    }
    expect(L'"');
    return result;
  }

 private:
  void skipBlanks() {
    while (mAt < mText.size() && std::iswspace(static_cast<wint_t>(mText[mAt]))) ++mAt;
  }

  const std::wstring& mText;
  std::size_t mAt = 0;
};

LispError noFunction(const std::wstring& name) {
  // Symbols of other alphabets lose their upper bytes: it is only the text of an error.
  return LispError{"no function definition: " + std::string(name.begin(), name.end())};
}

/// Only the "M=" form of menucmd evaluates an expression; the forms for menus on the screen give an empty
/// text.
std::wstring menuCommand(Reader& reader) {
  reader.expect(L'(');
  const std::wstring function = reader.symbol();
  if (function != L"MENUCMD") throw noFunction(function);
  const std::wstring argument = reader.string();
  reader.expect(L')');
  if (upper(argument.substr(0, 2)) != L"M=") return {};
  return evaluateDiesel(argument.substr(2));
}

}  // namespace

bool isWholeExpression(const std::wstring& text) {
  int depth = 0;
  bool isInText = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    // An escaped quotation mark does not end the text.
    if (text[i] == L'\\' && isInText)
      ++i;
    else if (text[i] == L'"')
      isInText = !isInText;
    else if (!isInText && text[i] == L'(')
      ++depth;
    else if (!isInText && text[i] == L')')
      --depth;
  }
  // Too many closing parentheses count as whole: the expression is then refused with a message instead of
  // waiting for ever.
  return depth <= 0 && !isInText;
}

std::vector<std::wstring> commandInputs(const std::wstring& expression) {
  Reader reader(expression);
  reader.expect(L'(');
  const std::wstring function = reader.symbol();
  if (function != L"COMMAND") throw noFunction(function);
  std::vector<std::wstring> inputs;
  while (!reader.at(L')')) {
    if (reader.at(L'('))
      inputs.push_back(menuCommand(reader));
    else if (reader.at(L'"'))
      inputs.push_back(reader.string());
    else
      throw LispError("bad argument type");
  }
  reader.expect(L')');
  if (!reader.isAtEnd()) throw LispError("extra right paren on input");
  return inputs;
}

}  // namespace standin::host
