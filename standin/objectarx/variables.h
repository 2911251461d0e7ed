/// The host's system variables. Only while the host's lock is held.
#ifndef STANDIN_VARIABLES_H
#define STANDIN_VARIABLES_H

#include <optional>
#include <string>
#include <string_view>

namespace standin::host {

/// None for an unknown name, or when no drawing is open.
std::optional<int> readVariable(std::wstring_view name);

enum class VariableChange { kUnknown, kNotAllowed, kDone };

/// TILEMODE and CVPORT switch tab and viewport; what was shown of the tab left and not stored is lost.
VariableChange writeVariable(std::wstring_view name, int value);

}  // namespace standin::host

#endif
