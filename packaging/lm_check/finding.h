/// What keeps the cap from working on a machine, or may.
#ifndef PACKAGING_LM_CHECK_FINDING_H
#define PACKAGING_LM_CHECK_FINDING_H

#include <string>
#include <vector>

struct Finding {
  std::string id;    ///< for programs, for example "settings.missing-key"; never changes
  std::string text;  ///< what is wrong, what comes of it, what to do; one line
};
using Findings = std::vector<Finding>;

#endif
