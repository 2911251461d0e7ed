#include "standin/objectarx/call_record.h"

namespace standin::host {

CallRecord& callRecord() {
  static CallRecord record;
  return record;
}

}  // namespace standin::host
