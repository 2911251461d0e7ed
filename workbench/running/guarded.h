/// Calls into the module that may let an exception out.
#ifndef WORKBENCH_GUARDED_H
#define WORKBENCH_GUARDED_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// Calls `call` and turns an exception into a line of `problems` that begins with `what`. InputError is
/// rethrown.
void guarded(std::string_view what, std::vector<std::string>& problems, const std::function<void()>& call);

}  // namespace workbench

#endif
