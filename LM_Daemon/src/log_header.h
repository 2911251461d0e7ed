/// The block of lines with which a log file begins.
#ifndef LM_DAEMON_SRC_LOG_HEADER_H
#define LM_DAEMON_SRC_LOG_HEADER_H

#include <string>

/// `name` is shown as it is; the date is that of today. Ends in a line end.
std::string logHeader(const std::string& name);

#endif
