/// Small, stateless operations shared by the whole plug-in: the user's profile, file probes, a message box
/// with a beep, conversions between values and texts. None throws for a failure of the system. Any
/// thread unless noted.
#ifndef UTIL_UTIL_H
#define UTIL_UTIL_H

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

class Util {
 public:
  /// Value of the environment variable USERPROFILE, unchanged. Empty when there is no such variable; callers
  /// that need it report that.
  static std::string getUserProfileDir();

  /// Whether the file can be opened for reading; false for a folder.
  static bool fileExists(std::string_view path);

  /// Whether there is a folder of that name.
  static bool folderExists(std::string_view path);

  /// Whether opening the file for reading is denied, as it is while another process holds it without sharing.
  /// False for a free file, and for every other failure, a missing file included.
  static bool isFileLocked(std::string_view path);

  /// Main thread. Beeps (440 Hz, 200 ms), then shows a message box and returns its result. `ownerWindowP` is
  /// a window handle or null, `type` the MB_ flags. Only 7-bit texts are shown faithfully: see widen().
  static int beepAndShowMessage(void* ownerWindowP, std::string_view text, std::string_view caption,
                                unsigned type);

  /// Byte by byte to 16-bit characters by sign extension: the byte 0xE4 becomes the character 0xFFE4.
  static std::wstring widen(std::string_view text);

  /// True exactly when `text` contains "on" anywhere, in lower case.
  static bool onOffToBool(std::string_view text);
  /// "on" or "off".
  static const char* boolToOnOff(bool isOn);

  /// Values of the rotation mode from texts: the first candidate, in the order given, that occurs anywhere in
  /// `text` counts from 0; -1 when none does.
  static int textToAxisLock(std::string_view text);            ///< "off", "horz", "vert"
  static int textToMotionReference(std::string_view text);     ///< "object", "screen"
  static int textToRotationCenterMode(std::string_view text);  ///< "objscreen", "objorigin", "camstandard",
                                                               ///< "camtarget", "camhover"
  /// The same back; "unknown!" for any other value.
  static const char* axisLockToText(int value);
  static const char* motionReferenceToText(int value);
  static const char* rotationCenterModeToText(int value);

  /// Weekday, month, day of the month padded to two places by a blank, year; for example "Mon Nov 16 2026".
  static std::string dateText(const std::tm& time);
  /// The local date of now.
  static std::string localDate();

  /// Milliseconds since midnight, UTC.
  static std::uint32_t utcMsOfDay();
  /// Writes such a time as "hh:mm:ss.mmm", without a terminator, to `targetP`, which has room for 12
  /// characters.
  static void writeTimeOfDay(char* targetP, std::uint32_t msOfDay);

  /// Creates one folder. A failure is reported on standard error.
  static bool makeDirectory(std::string_view path);
  /// Removes nothing: prints that it isn't implemented.
  static void removeFolders(std::string_view path);
  /// Prints that the program stopped for debugging.
  static void stopForDebugging();
  /// `value` in `base` (2 to 36), in digits and small letters, with a minus sign when it is negative.
  /// "Base error" for any other base.
  static std::string numberToString(long value, int base);
};

#endif
