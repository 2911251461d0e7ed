/// The user's browser.
#ifndef WORKBENCH_BROWSER_H
#define WORKBENCH_BROWSER_H

#include <string>

namespace workbench {

/// Opens the address where there is a display and a program for it; otherwise does nothing. Does not wait.
void openBrowser(const std::string& address);

}  // namespace workbench

#endif
