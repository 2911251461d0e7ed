/// Findings as a test compares them: the text alone, without what each of a kind begins with.
#ifndef TESTS_LM_CHECK_FINDING_TEXTS_H
#define TESTS_LM_CHECK_FINDING_TEXTS_H

#include "packaging/lm_check/finding.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace tests {

inline std::vector<std::string> textsOf(const Findings& findings) {
  std::vector<std::string> texts;
  texts.reserve(findings.size());
  for (const Finding& finding : findings) texts.push_back(finding.text);
  return texts;
}

inline std::vector<std::string> idsOf(const Findings& findings) {
  std::vector<std::string> ids;
  ids.reserve(findings.size());
  for (const Finding& finding : findings) ids.push_back(finding.id);
  return ids;
}

/// The text with `to` in the place of the first `from`; fails the test when there is none.
inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  if (at == std::string::npos) throw std::invalid_argument("no '" + from + "' in the text");
  return text.replace(at, from.size(), to);
}

}  // namespace tests

#endif
