/// Message boxes and beeps: recorded instead of shown.
#include "operations.h"
#include "standin_messages.h"
#include "windows.h"

#include <mutex>
#include <utility>

namespace standin::windows {
namespace {

const Operation kBeep("Beep", Result::kTellsFailure);
const Operation kMessageBox("MessageBoxW", Result::kTellsFailure);

std::mutex messagesMutex;
std::vector<UserMessage> recorded;
std::function<void(const UserMessage&)> listenerInForce;
/// What a box returns. IDOK is the only button of a plain box.
int boxAnswer = IDOK;

/// The listener runs outside the lock: it may ask for the record.
void record(const UserMessage& message) {
  std::function<void(const UserMessage&)> listener;
  {
    const std::lock_guard lock(messagesMutex);
    recorded.push_back(message);
    // A copy: the listener may set another one while it runs.
    listener = listenerInForce;
  }
  if (listener) listener(message);
}

std::wstring orEmpty(LPCWSTR text) {
  return text == nullptr ? std::wstring() : std::wstring(text);
}

}  // namespace

std::vector<UserMessage> userMessages() {
  const std::lock_guard lock(messagesMutex);
  return recorded;
}

void clearUserMessages() {
  const std::lock_guard lock(messagesMutex);
  std::vector<UserMessage>().swap(recorded);
  boxAnswer = IDOK;
}

void setUserMessageListener(std::function<void(const UserMessage&)> listener) {
  const std::lock_guard lock(messagesMutex);
  listenerInForce = std::move(listener);
}

void setBoxAnswer(int button) {
  const std::lock_guard lock(messagesMutex);
  boxAnswer = button;
}

}  // namespace standin::windows

using standin::windows::UserMessage;

BOOL Beep(DWORD frequency, DWORD durationMs) {
  UserMessage message;
  message.kind = UserMessage::Kind::kBeep;
  message.frequency = frequency;
  message.durationMs = durationMs;
  if (standin::windows::kBeep.hit()) return FALSE;
  // The range that Windows accepts, in Hz: what the divisor of a PC speaker can express.
  if (frequency < 37 || frequency > 32767) return FALSE;
  standin::windows::record(message);
  return TRUE;
}

/// Returns at once: a real box waits for the user, and a test would wait for ever.
int MessageBoxW(HWND /*owner*/, LPCWSTR text, LPCWSTR caption, UINT type) {
  if (standin::windows::kMessageBox.hit()) return 0;
  UserMessage message;
  message.caption = standin::windows::orEmpty(caption);
  message.text = standin::windows::orEmpty(text);
  message.type = type;
  standin::windows::record(message);
  const std::lock_guard lock(standin::windows::messagesMutex);
  return standin::windows::boxAnswer;
}
