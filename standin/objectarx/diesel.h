/// The expression language of menu macros: text with $(function,argument,...) in it. Functions: getvar, if,
/// eq, =, + and -.
#ifndef STANDIN_DIESEL_H
#define STANDIN_DIESEL_H

#include <string>

namespace standin::host {

/// The text with every expression replaced by its value. A mistake appears in the result, as the host
/// shows it: "$?" for an expression that does not end, "$(name)??" for an unknown function, "$(name,??)" for
/// arguments it cannot take.
std::wstring evaluateDiesel(const std::wstring& text);

}  // namespace standin::host

#endif
