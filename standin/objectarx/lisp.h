/// The AutoLISP the command line understands: (command ...) with texts and (menucmd "M=...") as its
/// arguments.
#ifndef STANDIN_LISP_H
#define STANDIN_LISP_H

#include <stdexcept>
#include <string>
#include <vector>

namespace standin::host {

/// Its text is what the host prints after "; error: ".
class LispError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Whether the parentheses outside texts are all closed.
bool isWholeExpression(const std::wstring& text);

/// The inputs that the expression passes to the command line. Throws LispError.
std::vector<std::wstring> commandInputs(const std::wstring& expression);

}  // namespace standin::host

#endif
