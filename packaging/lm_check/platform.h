/// Operations of the checker that differ between its two builds.
#ifndef PACKAGING_LM_CHECK_PLATFORM_H
#define PACKAGING_LM_CHECK_PLATFORM_H

#include "packaging/lm_check/finding.h"

#include <string>

/// The findings of the machine itself. The native build has none: there is no AutoCAD on Linux.
Findings machineFindings();

/// A text in the module's code page, converted to UTF-8.
std::string toUtf8(const std::string& text);

#endif
