#include "LM_Daemon/src/log_header.h"

#include "util/util.h"

std::string logHeader(const std::string& name) {
  static constexpr const char* kRule =
      "------------------------------------------------------------------------------------------\n";
  static constexpr const char* kColumns =
      "    Time    |Typ|  TID |      File      | Line|        Class And Method         | LogText\n"
      "------------+---+------+----------------+-----+---------------------------------+---------\n";
  return std::string(kRule) + "Lumetra logfile '" + name + "' opened at " + Util::localDate() + "\n" + kRule +
         kColumns;
}
