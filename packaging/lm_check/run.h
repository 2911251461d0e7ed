/// The program: parses its arguments, runs the checks and prints the findings.
#ifndef PACKAGING_LM_CHECK_RUN_H
#define PACKAGING_LM_CHECK_RUN_H

#include <iosfwd>
#include <string>
#include <vector>

constexpr int kNothingFound = 0;
constexpr int kFindings = 1;
constexpr int kCouldNotCheck = 2;

/// `arguments` are those after the program's name. Returns the exit status.
int runCheck(const std::vector<std::string>& arguments, std::ostream& output, std::ostream& errors);

#endif
