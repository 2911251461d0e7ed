// The bodies of libc++'s conversions of numbers to text that the module uses.
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

/// Long enough for 17 digits, sign, point and exponent.
constexpr int kLongestDouble = 40;

char* writeDigits(unsigned long long value, char* at) {
  char digits[20];
  int count = 0;
  do digits[count++] = static_cast<char>('0' + value % 10);
  while ((value /= 10) != 0);
  while (count > 0) *at++ = digits[--count];
  return at;
}

template <typename Integer>
std::string textOf(Integer value) {
  char text[24];
  return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

/// The C library writes three digits of an exponent at least, the standard asks for two.
void shortenExponent(char* text) {
  char* const exponentP = std::strchr(text, 'e');
  if (exponentP == nullptr || exponentP[2] != '0' || std::strlen(exponentP) < 5) return;
  std::memmove(exponentP + 2, exponentP + 3, std::strlen(exponentP + 3) + 1);
}

}  // namespace

namespace std {
inline namespace __1 {

namespace __itoa {
char* __u32toa(uint32_t value, char* buffer) noexcept {
  return writeDigits(value, buffer);
}
char* __u64toa(uint64_t value, char* buffer) noexcept {
  return writeDigits(value, buffer);
}
}  // namespace __itoa

#define LM_TEXT_OF(INTEGER)            \
  string to_string(INTEGER value) {    \
    return textOf(value);              \
  }                                    \
  wstring to_wstring(INTEGER value) {  \
    const string text = textOf(value); \
    return {text.begin(), text.end()}; \
  }
LM_TEXT_OF(int)
LM_TEXT_OF(unsigned)
LM_TEXT_OF(long)
LM_TEXT_OF(unsigned long)
LM_TEXT_OF(long long)
LM_TEXT_OF(unsigned long long)
#undef LM_TEXT_OF

/// General notation only, which is all that the module asks for.
to_chars_result to_chars(char* first, char* last, double value, chars_format /*general*/, int precision) {
  char text[kLongestDouble];
  _snprintf(text, sizeof text, "%.*g", precision, value);
  text[sizeof text - 1] = '\0';
  shortenExponent(text);
  const size_t length = strlen(text);
  if (length > static_cast<size_t>(last - first)) return {last, errc::value_too_large};
  memcpy(first, text, length);
  return {first + length, errc{}};
}

}  // namespace __1
}  // namespace std
