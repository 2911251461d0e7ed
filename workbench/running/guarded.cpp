#include "workbench/running/guarded.h"

#include "workbench/input_error.h"

#include <exception>

namespace workbench {

void guarded(std::string_view what, std::vector<std::string>& problems, const std::function<void()>& call) {
  try {
    call();
    // A mistake in the session or the drawing is the user's and no finding about the module.
  } catch (const InputError&) {
    throw;
  } catch (const std::exception& error) {
    problems.push_back(std::string(what) + " threw: " + error.what());
  } catch (...) {
    problems.push_back(std::string(what) + " threw something other than a std::exception");
  }
}

}  // namespace workbench
