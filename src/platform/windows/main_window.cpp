#include "platform/windows/main_window.h"

#include "platform/windows/system_library.h"

#include <shellapi.h>

#include <algorithm>
#include <array>

namespace {
// An attribute of the desktop's window manager: number and value. A colour is 0x00BBGGRR.
struct CaptionAttribute {
    DWORD number = 0;
    DWORD value = 0;
};
}  // namespace

// clang-format off
constexpr CaptionAttribute kDarkMode{20, 1}, kEarlyDarkMode{19, 1};  // the number before Windows 10 2004
constexpr std::array<CaptionAttribute, 2> kCaptionColors{{
    {35, 0x221F1E},  // caption
    {36, 0xF4F0EC},  // text of the caption
}};
// clang-format on

static void DarkenCaption(HWND window) {
    HRESULT(WINAPI * setAttribute)(HWND, DWORD, LPCVOID, DWORD) = nullptr;
    FindFunction(LoadSystemLibrary(L"dwmapi.dll"), "DwmSetWindowAttribute", setAttribute);
    if (!setAttribute) return;
    const auto set = [setAttribute, window](const CaptionAttribute& attribute) {
        return SUCCEEDED(setAttribute(window, attribute.number, &attribute.value, sizeof attribute.value));
    };
    if (!set(kDarkMode)) set(kEarlyDarkMode);
    for (const CaptionAttribute& attribute : kCaptionColors) set(attribute);
}

void ShowWindowIcons(const WindowIcons& icons) {
    if (!MainWindow()) return;
    SendMessageW(MainWindow(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icons.large));
    SendMessageW(MainWindow(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icons.little));
}

// One side: moved as far as it must, and cut to the room that there is.
static void FitSide(LONG low, LONG high, LONG& from, LONG& to) {
    const LONG length = std::min(to - from, high - low);
    from = std::clamp(from, low, high - length);
    to = from + length;
}

RECT FitIntoWorkArea(const RECT& wanted, const RECT& workArea) {
    RECT place = wanted;
    FitSide(workArea.left, workArea.right, place.left, place.right);
    FitSide(workArea.top, workArea.bottom, place.top, place.bottom);
    return place;
}

// The system places a window of any size; what would lie outside the work area is moved and cut.
static void FitOntoScreen(HWND window) {
    RECT place{};
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!GetWindowRect(window, &place)) return;
    if (!GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor)) return;
    const RECT fitted = FitIntoWorkArea(place, monitor.rcWork);
    if (EqualRect(&fitted, &place)) return;
    SetWindowPos(window, nullptr, fitted.left, fitted.top, fitted.right - fitted.left,
                 fitted.bottom - fitted.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

// A program that runs as an administrator gets no files from the desktop, which does not, unless it lets
// these messages through.
static void AcceptDroppedFiles(HWND window) {
    constexpr UINT kCopyGlobalData = 0x0049;  // brings the list of files over; in no header
    for (const UINT message : {UINT{WM_DROPFILES}, UINT{WM_COPYDATA}, kCopyGlobalData})
        ChangeWindowMessageFilterEx(window, message, MSGFLT_ALLOW, nullptr);
    DragAcceptFiles(window, TRUE);
}

void DressWindow(HWND window) {
    DarkenCaption(window);
    ShowWindowIcons(CurrentWindowIcons());
    AcceptDroppedFiles(window);
    FitOntoScreen(window);
}
