/// The date and the time of day, on the clock in force.
#include "standin_clock.h"
#include "standin_ticks.h"
#include "windows.h"

#include <ctime>

namespace {

constexpr std::int64_t kMsPerSecond = 1000;

void store(const std::tm& fields, std::int64_t utcMs, SYSTEMTIME& time) {
  // A tm counts years from 1900 and months from 0; a SYSTEMTIME holds the year itself and months from 1.
  time.wYear = static_cast<WORD>(fields.tm_year + 1900);
  time.wMonth = static_cast<WORD>(fields.tm_mon + 1);
  time.wDayOfWeek = static_cast<WORD>(fields.tm_wday);
  time.wDay = static_cast<WORD>(fields.tm_mday);
  time.wHour = static_cast<WORD>(fields.tm_hour);
  time.wMinute = static_cast<WORD>(fields.tm_min);
  time.wSecond = static_cast<WORD>(fields.tm_sec);
  time.wMilliseconds = static_cast<WORD>(utcMs % kMsPerSecond);
}

}  // namespace

void GetSystemTime(LPSYSTEMTIME time) {
  const std::int64_t utcMs = standin::clock::utcMs();
  const std::time_t seconds = utcMs / kMsPerSecond;
  // Every line of the log asks for the time, and gmtime_r takes a lock that all threads share.
  thread_local struct {
    std::time_t seconds = -1;
    std::tm fields{};
  } last;
  if (seconds != last.seconds) gmtime_r(&seconds, &last.fields);
  last.seconds = seconds;
  store(last.fields, utcMs, *time);
}

void GetLocalTime(LPSYSTEMTIME time) {
  // Local time is UTC in a replay, so that its log is the same in every time zone.
  if (standin::clock::kind() == standin::clock::Kind::kReplay) return GetSystemTime(time);
  const std::int64_t utcMs = standin::clock::utcMs();
  const std::time_t seconds = utcMs / kMsPerSecond;
  std::tm fields{};
  localtime_r(&seconds, &fields);
  store(fields, utcMs, *time);
}
