#include "LM_Daemon/src/log_header.h"

#include "util/util.h"

std::string logHeader(const std::string& name) {
  static constexpr const char* kRule =
      "------------------------------------------------------------------------------------------\n";
  static constexpr const char* kColumns =
      // The widths are those of a line of the log. They are part of its format: change them only together
      // with LogPosition and Logging::appendStart.
      "    Time    |Typ|  TID |      File      | Line|        Class And Method         | LogText\n"
      "------------+---+------+----------------+-----+---------------------------------+---------\n";
  return std::string(kRule) + "Lumetra logfile '" + name + "' opened at " + Util::localDate() + "\n" + kRule +
         kColumns;
}
