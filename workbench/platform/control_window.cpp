#include "workbench/platform/control_window.h"

#include <commctrl.h>

#include <stdexcept>
#include <string>

namespace workbench {
namespace {

constexpr wchar_t kFrameClass[] = L"LumetraWorkbench";
// The module recognises controls by class name; this one scrolls by wheel messages only.
constexpr wchar_t kWidgetClass[] = L"QWidget";
// Far more than a control shows at once, so that there is room to scroll either way.
constexpr int kLines = 200;
constexpr int kCell = 200;  // pixels
constexpr int kGap = 10;

/// The widget keeps the sum of the wheel's turns in its user data.
LRESULT CALLBACK widgetProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_MOUSEWHEEL) return DefWindowProcW(window, message, wParam, lParam);
  const LONG_PTR turns = GetWindowLongPtrW(window, GWLP_USERDATA);
  // A turn forward, away from the user, is positive.
  SetWindowLongPtrW(window, GWLP_USERDATA, turns + GET_WHEEL_DELTA_WPARAM(wParam) / WHEEL_DELTA);
  return 0;
}

void registerClass(const wchar_t* name, WNDPROC procedure) {
  WNDCLASSW description{};
  description.lpszClassName = name;
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  // 32512 is IDC_ARROW, whose macro gives a narrow name in a build without UNICODE.
  description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
  // Fails for the second window of a process, when the class is there already; the failure does not matter.
  RegisterClassW(&description);
}

std::wstring lineText(int line) {
  return L"line " + std::to_wstring(line) + L" of a text that is wider than what is seen of it";
}

}  // namespace

ControlWindow::ControlWindow() {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&controls);
  registerClass(kFrameClass, DefWindowProcW);
  registerClass(kWidgetClass, widgetProc);
  // On top of all others, because the module looks for the window under the pointer.
  mFrame = CreateWindowExW(WS_EX_TOPMOST, kFrameClass, L"Workbench", WS_POPUP, 0, 0, 3 * kCell, 2 * kCell,
                           nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  if (mFrame == nullptr) throw std::runtime_error("no window: error " + std::to_string(GetLastError()));
  mCanvas = add(L"STATIC", SS_NOTIFY, 0, 0);
  mTree = add(WC_TREEVIEWW, TVS_HASLINES | TVS_LINESATROOT, 1, 0);
  mList = add(WC_LISTVIEWW, LVS_LIST, 2, 0);
  // As in many dialogs, the list box is inside a group box that is above it in z-order. The order of creation
  // decides that: the first child is on top.
  mGroup = add(L"BUTTON", BS_GROUPBOX, 0, 1);
  mListBox = add(L"LISTBOX", WS_VSCROLL | LBS_NOINTEGRALHEIGHT, 0, 1);
  mEdit = add(L"EDIT", ES_MULTILINE | ES_AUTOHSCROLL | ES_AUTOVSCROLL | WS_VSCROLL | WS_HSCROLL, 1, 1);
  mWidget = add(kWidgetClass, 0, 2, 1);
  // Shown only now: each line would be drawn as it comes.
  fill();
  // Without activation: the keyboard stays with whatever the user is working in.
  ShowWindow(mFrame, SW_SHOWNOACTIVATE);
  UpdateWindow(mFrame);
}

ControlWindow::~ControlWindow() {
  DestroyWindow(mFrame);
}

HWND ControlWindow::add(const wchar_t* className, DWORD style, int column, int row) const {
  // The group box is larger than what it surrounds.
  const int inset = lstrcmpW(className, L"BUTTON") == 0 ? kGap / 2 : kGap;
  return CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE | style, column * kCell + inset,
                         row * kCell + inset, kCell - 2 * inset, kCell - 2 * inset, mFrame, nullptr,
                         GetModuleHandleW(nullptr), nullptr);
}

void ControlWindow::fill() const {
  // One column, as the palettes have it.
  SetWindowLongPtrW(mList, GWL_STYLE,
                    (GetWindowLongPtrW(mList, GWL_STYLE) & ~LVS_TYPEMASK) | LVS_REPORT | LVS_NOCOLUMNHEADER);
  LVCOLUMNW column{};
  column.mask = LVCF_WIDTH;
  column.cx = 2 * kCell;
  SendMessageW(mList, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
  std::wstring whole;
  for (int line = 0; line < kLines; ++line) {
    std::wstring text = lineText(line);
    TVINSERTSTRUCTW branch{};
    branch.hInsertAfter = TVI_LAST;
    branch.item.mask = TVIF_TEXT;
    branch.item.pszText = text.data();
    SendMessageW(mTree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&branch));
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = line;
    item.pszText = text.data();
    SendMessageW(mList, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    SendMessageW(mListBox, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    whole += text + L"\r\n";
  }
  // An edit control breaks lines at CR LF only.
  SetWindowTextW(mEdit, whole.c_str());
}

void ControlWindow::pointAt(HWND control) const {
  RECT rect{};
  if (control == nullptr) {
    GetWindowRect(mFrame, &rect);
    // Beside the frame, where the pointer is over no window of this program.
    SetCursorPos(rect.right + kCell, rect.bottom + kCell);
    return;
  }
  GetWindowRect(control, &rect);
  SetCursorPos((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
}

int ControlWindow::wheelTurns() const {
  return static_cast<int>(GetWindowLongPtrW(mWidget, GWLP_USERDATA));
}

}  // namespace workbench
