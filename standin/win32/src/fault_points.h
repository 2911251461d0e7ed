/// The functions that can be told to misbehave.
#ifndef STANDIN_WIN32_FAULT_POINTS_H
#define STANDIN_WIN32_FAULT_POINTS_H

namespace standin::windows {

enum class Function {
  kSetTimer,
  kKillTimer,
  kGetTickCount,
  kBeep,
  kMessageBox,
  kGetModuleFileName,
  kWideCharToMultiByte,
  kGetCursorPos,
  kWindowFromPoint,
  kGetWindowRect,
  kGetClassName,
  kGetScrollInfo,
  kSendMessage,
};

/// Counts a call; true when it is to fail, and throws when it is to throw.
bool isToFail(Function function);

}  // namespace standin::windows

#endif
