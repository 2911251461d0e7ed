/// What the native build would have shown or sounded: message boxes and beeps, recorded in order. Any thread.
#ifndef STANDIN_MESSAGES_H
#define STANDIN_MESSAGES_H

#include "standin_win32_api.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace standin::windows {

struct UserMessage {
  enum class Kind { kBox, kBeep };
  Kind kind = Kind::kBox;
  std::wstring caption;          ///< of a box; empty for a null caption
  std::wstring text;             ///< of a box
  std::uint32_t type = 0;        ///< of a box: the MB_ flags
  std::uint32_t frequency = 0;   ///< of a beep, Hz
  std::uint32_t durationMs = 0;  ///< of a beep
};

/// Everything since the last clearUserMessages(), oldest first.
STANDIN_WIN32_API std::vector<UserMessage> userMessages();

/// Forgets the record; a box returns IDOK again.
STANDIN_WIN32_API void clearUserMessages();

/// Called with each message as it comes, on the thread that it comes from; an empty function ends it.
STANDIN_WIN32_API void setUserMessageListener(std::function<void(const UserMessage&)> listener);

/// What MessageBoxW returns from now on; 0 means that the box could not be shown.
STANDIN_WIN32_API void setBoxAnswer(int button);

}  // namespace standin::windows

#endif
