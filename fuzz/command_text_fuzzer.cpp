/// Any bytes are a menu macro: no letter of it is lost or made up, and each token is one input of its own.
#include "common_sources/ansi_text.h"
#include "common_sources/command_text.h"

#include <cstdlib>

namespace {

void check(bool isRight) {
  if (!isRight) std::abort();
}

void checkTokens(std::string_view macro) {
  const std::vector<std::string> tokens = splitMacro(macro);
  std::string joined;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    check(tokens[i].find(';') == std::string::npos);
    joined += (i == 0 ? "" : ";") + tokens[i];
  }
  // A semicolon at the very end adds no token.
  check(joined == macro || joined + ";" == macro);
  check(tokens.empty() == macro.empty());
}

void checkCommand(const std::string& token) {
  const std::wstring command = commandOfToken(token);
  const std::wstring text = wideFromAnsi(token);
  check(!command.empty() && command.back() == L'\n');
  const bool isEvaluated = token.substr(0, 2) == "M=";
  check(command == (isEvaluated ? L"(command (menucmd \"" + text + L"\"))\n" : text + L"\n"));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dataP, std::size_t size) {
  const std::string_view macro(reinterpret_cast<const char*>(dataP), size);
  checkTokens(macro);
  for (const std::string& token : splitMacro(macro)) checkCommand(token);
  return 0;
}
