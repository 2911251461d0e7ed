/// The part of the Windows interface that the native build needs, with the widths, names and values of 64-bit
/// Windows. Time comes from `standin_clock.h`, windows from `standin_desktop.h`, boxes and beeps go to
/// `standin_messages.h`; their thread rules hold for the functions here.
#ifndef STANDIN_WINDOWS_H
#define STANDIN_WINDOWS_H

#include "standin_win32_api.h"

#include <cstddef>
#include <cstdint>

#define CALLBACK
#define WINAPI
#define APIENTRY
#define VOID void
#define CONST const

#define DLL_PROCESS_DETACH 0
#define DLL_PROCESS_ATTACH 1

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using SHORT = std::int16_t;
using INT = int;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using CHAR = char;
using WCHAR = wchar_t;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = ULONG_PTR;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using HANDLE = void*;
using LPVOID = void*;
using LPSTR = char*;
using LPCSTR = const char*;
using LPWSTR = wchar_t*;
using LPCWSTR = const wchar_t*;
using LPBOOL = BOOL*;
using LPDWORD = DWORD*;

#define DECLARE_HANDLE(name) \
  struct name##__ {          \
    int unused;              \
  };                         \
  using name = name##__*
DECLARE_HANDLE(HWND);
DECLARE_HANDLE(HINSTANCE);
using HMODULE = HINSTANCE;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif
#define MAX_PATH 260

#define LOWORD(value) ((WORD)(((DWORD_PTR)(value)) & 0xffff))
#define HIWORD(value) ((WORD)((((DWORD_PTR)(value)) >> 16) & 0xffff))
#define MAKELONG(low, high)                              \
  ((LONG)(((DWORD)(WORD)(((DWORD_PTR)(low)) & 0xffff)) | \
          (((DWORD)(WORD)(((DWORD_PTR)(high)) & 0xffff)) << 16)))
#define MAKEWPARAM(low, high) ((WPARAM)(DWORD)MAKELONG(low, high))
#define MAKELPARAM(low, high) ((LPARAM)(DWORD)MAKELONG(low, high))
#define GET_WHEEL_DELTA_WPARAM(wParam) ((SHORT)HIWORD(wParam))

#define CP_ACP 0
#define CP_UTF8 65001

#define MB_OK 0x00000000u
#define MB_OKCANCEL 0x00000001u
#define MB_ICONERROR 0x00000010u
#define MB_ICONSTOP MB_ICONERROR
#define MB_ICONWARNING 0x00000030u
#define MB_ICONEXCLAMATION MB_ICONWARNING
#define MB_ICONINFORMATION 0x00000040u
#define MB_SYSTEMMODAL 0x00001000u
#define MB_TASKMODAL 0x00002000u
#define MB_SETFOREGROUND 0x00010000u
#define MB_TOPMOST 0x00040000u
#define IDOK 1
#define IDCANCEL 2

#define WM_TIMER 0x0113
#define WM_HSCROLL 0x0114
#define WM_VSCROLL 0x0115
#define WM_MOUSEWHEEL 0x020A
#define WHEEL_DELTA 120
#define USER_TIMER_MINIMUM 0x0000000A
#define USER_TIMER_MAXIMUM 0x7FFFFFFF

#define SB_HORZ 0
#define SB_VERT 1
#define SB_LINEUP 0
#define SB_LINELEFT 0
#define SB_LINEDOWN 1
#define SB_LINERIGHT 1
#define SB_PAGEUP 2
#define SB_PAGELEFT 2
#define SB_PAGEDOWN 3
#define SB_PAGERIGHT 3
#define SB_TOP 6
#define SB_LEFT 6
#define SB_BOTTOM 7
#define SB_RIGHT 7
#define SB_ENDSCROLL 8

#define SIF_RANGE 0x0001
#define SIF_PAGE 0x0002
#define SIF_POS 0x0004
#define SIF_TRACKPOS 0x0010
#define SIF_ALL (SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS)

#define GW_HWNDFIRST 0
#define GW_HWNDLAST 1
#define GW_HWNDNEXT 2
#define GW_HWNDPREV 3
#define GW_OWNER 4
#define GW_CHILD 5
#define GA_PARENT 1
#define GA_ROOT 2
#define GA_ROOTOWNER 3

struct POINT {
  LONG x;
  LONG y;
};
using LPPOINT = POINT*;

/// Screen coordinates; the right and bottom edges are outside.
struct RECT {
  LONG left;
  LONG top;
  LONG right;
  LONG bottom;
};
using LPRECT = RECT*;

struct SCROLLINFO {
  UINT cbSize;
  UINT fMask;
  int nMin;
  int nMax;
  UINT nPage;
  int nPos;
  int nTrackPos;
};
using LPSCROLLINFO = SCROLLINFO*;
static_assert(sizeof(SCROLLINFO) == 28, "the size that callers pass in cbSize");

struct SYSTEMTIME {
  WORD wYear;
  WORD wMonth;
  WORD wDayOfWeek;
  WORD wDay;
  WORD wHour;
  WORD wMinute;
  WORD wSecond;
  WORD wMilliseconds;
};
using LPSYSTEMTIME = SYSTEMTIME*;

using TIMERPROC = void(CALLBACK*)(HWND window, UINT message, UINT_PTR id, DWORD tickCount);

extern "C" {

// --- time; see standin_clock.h ---

/// Main thread. A periodic timer without a window; the period is at least USER_TIMER_MINIMUM ms. Returns its
/// id (not 0); 0 when `window` is not null, `proc` is null, or off the main thread. An `id` of a timer that
/// is set replaces that timer.
STANDIN_WIN32_API UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT periodMs, TIMERPROC proc);
/// Main thread. FALSE when no such timer is set.
STANDIN_WIN32_API BOOL KillTimer(HWND window, UINT_PTR id);
STANDIN_WIN32_API DWORD GetTickCount();
STANDIN_WIN32_API void Sleep(DWORD ms);
/// UTC: of the replay when one runs, else the machine's.
STANDIN_WIN32_API void GetSystemTime(LPSYSTEMTIME time);
/// The machine's local time; in a replay UTC, as in every time zone.
STANDIN_WIN32_API void GetLocalTime(LPSYSTEMTIME time);

// --- boxes and beeps; see standin_messages.h ---

/// Recorded, not sounded, and takes no time. FALSE for a frequency outside 37 ... 32767 Hz.
STANDIN_WIN32_API BOOL Beep(DWORD frequency, DWORD durationMs);
/// Recorded, not shown. Returns what setBoxAnswer set, IDOK at first.
STANDIN_WIN32_API int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);

// --- process; see standin_process.h ---

/// Characters written without the terminator; for a path that does not fit it is cut and `size` returned; 0
/// on failure.
STANDIN_WIN32_API DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD size);
/// Threads count from 1 in order of their creation.
STANDIN_WIN32_API DWORD GetCurrentThreadId();
STANDIN_WIN32_API DWORD GetCurrentProcessId();
STANDIN_WIN32_API UINT GetACP();
/// Code pages CP_ACP (see standin_process.h), 1252 and CP_UTF8. Bytes written (or needed, when `narrowSize`
/// is 0), the terminator included when `wideCount` is -1; 0 on failure or when they do not fit. A character
/// that 1252 lacks becomes `*replacement` ('?' without one) and sets `*usedReplacement`; with UTF-8 both must
/// be null.
STANDIN_WIN32_API int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int wideCount,
                                          LPSTR narrow, int narrowSize, LPCSTR replacement,
                                          LPBOOL usedReplacement);
/// The reverse; every byte is a character of 1252, one that is none of UTF-8 becomes U+FFFD. 0 when the
/// buffer is too small.
STANDIN_WIN32_API int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR narrow, int narrowCount,
                                          LPWSTR wide, int wideSize);

// --- windows; main thread; see standin_desktop.h ---

STANDIN_WIN32_API BOOL GetCursorPos(LPPOINT point);
/// The window on top at the point, null when there is none. A hidden or disabled window is passed over.
STANDIN_WIN32_API HWND WindowFromPoint(POINT point);
STANDIN_WIN32_API BOOL GetWindowRect(HWND window, LPRECT rect);
/// The parent of a child, the owner of an owned top-level window; null when it has neither.
STANDIN_WIN32_API HWND GetParent(HWND window);
STANDIN_WIN32_API HWND GetWindow(HWND window, UINT command);
STANDIN_WIN32_API BOOL PtInRect(const RECT* rect, POINT point);
/// TRUE when the window and all its parents are shown.
STANDIN_WIN32_API BOOL IsWindowVisible(HWND window);
STANDIN_WIN32_API HWND GetAncestor(HWND window, UINT flags);
/// Characters written without the terminator, cut to `size` - 1; 0 on failure.
STANDIN_WIN32_API int GetClassNameW(HWND window, LPWSTR name, int size);
/// Fills what the mask asks for; FALSE when the window has no such scroll bar or `cbSize` is wrong.
STANDIN_WIN32_API BOOL GetScrollInfo(HWND window, int bar, LPSCROLLINFO info);
STANDIN_WIN32_API LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
STANDIN_WIN32_API BOOL UpdateWindow(HWND window);
}

#endif
