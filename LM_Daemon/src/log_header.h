/// The block of lines at the start of a log file. Tools recognise a new log by its second line.
#ifndef LM_DAEMON_SRC_LOG_HEADER_H
#define LM_DAEMON_SRC_LOG_HEADER_H

#include <string>

/// `name` is shown as it is; the date is that of today. Ends in a line end.
std::string logHeader(const std::string& name);

#endif
