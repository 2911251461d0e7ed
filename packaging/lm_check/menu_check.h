/// What is wrong with the menu file, as the module reads it.
#ifndef PACKAGING_LM_CHECK_MENU_CHECK_H
#define PACKAGING_LM_CHECK_MENU_CHECK_H

#include "packaging/lm_check/finding.h"

#include <string>

Findings checkMenu(const std::string& path);

#endif
