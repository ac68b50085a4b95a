#include "platform/window.h"

#include "platform/windows/canvas_images.h"
#include "platform/windows/main_window.h"
#include "platform/windows/system_library.h"

#include <windows.h>

#include <shellapi.h>
#include <windowsx.h>

#include <array>
#include <utility>

constexpr wchar_t kWindowClass[] = L"ZelEngineWindow";
constexpr UINT_PTR kPictureTimer = 1;
constexpr UINT kPictureMilliseconds = 15;  // between pictures while the system runs its own message loop
constexpr LPARAM kWasDown = 1 << 30;       // of a key message

namespace {

// An attribute of the desktop's window manager: number and value. A colour is 0x00BBGGRR.
struct CaptionAttribute {
    DWORD number = 0;
    DWORD value = 0;
};

struct WindowState {
    HWND handle = nullptr;
    bool holdsMouse = false;  // captured by the program
    bool isPainting = false;
};

WindowState window;

}  // namespace

// clang-format off
constexpr std::array<CaptionAttribute, 3> kDarkCaption{{
    {20, 1},         // dark mode
    {35, 0x221F1E},  // caption
    {36, 0xF4F0EC},  // text of the caption
}};
// clang-format on

static void DarkenCaption() {
    HRESULT(WINAPI * setAttribute)(HWND, DWORD, LPCVOID, DWORD) = nullptr;
    FindFunction(LoadSystemLibrary(L"dwmapi.dll"), "DwmSetWindowAttribute", setAttribute);
    if (!setAttribute) return;
    for (const CaptionAttribute& attribute : kDarkCaption) {
        setAttribute(window.handle, attribute.number, &attribute.value, sizeof attribute.value);
    }
}

// A picture may open a dialog's message loop, and that asks for a picture again.
static void SendPaint() {
    if (window.isPainting) return;
    window.isPainting = true;
    HandleInput({.kind = InputKind::Paint});
    window.isPainting = false;
}

static void SendKey(InputKind kind, WPARAM key, LPARAM details) {
    const bool isRepeat = kind == InputKind::KeyDown && (details & kWasDown);
    HandleInput({.kind = kind, .key = static_cast<uint32_t>(key), .isRepeat = isRepeat});
}

static void SendMouse(InputKind kind, LPARAM position) {
    HandleInput({.kind = kind, .x = GET_X_LPARAM(position), .y = GET_Y_LPARAM(position)});
}

static void SendDroppedFiles(HDROP drop) {
    POINT point{};
    DragQueryPoint(drop, &point);
    InputEvent event{.kind = InputKind::FilesDropped, .x = point.x, .y = point.y};
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(drop, i, nullptr, 0), L'\0');
        DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size()) + 1);
        event.files.push_back(std::move(path));
    }
    DragFinish(drop);
    HandleInput(event);
}

static void LoseCapture(HWND newOwner) {
    if (!window.holdsMouse || newOwner == window.handle) return;
    window.holdsMouse = false;
    HandleInput({.kind = InputKind::CaptureLost});
}

// The system's menu loop would stop the frames. It opens for Alt with the space bar only, which shows the
// window's own menu; a lone Alt, F10 and Alt with a letter have no menu to open.
static bool WouldOpenMissingMenu(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SYSKEYDOWN) return wParam == VK_F10 || wParam == VK_MENU;
    return message == WM_SYSCOMMAND && (wParam & 0xFFF0) == SC_KEYMENU && lParam != VK_SPACE;
}

static LRESULT CALLBACK HandleMessage(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (WouldOpenMissingMenu(message, wParam, lParam)) return 0;
    switch (message) {
        case WM_DESTROY:
            window = {};
            PostQuitMessage(0);
            return 0;

        case WM_ERASEBKGND:
            return 1;  // every picture covers the whole client area
        case WM_PAINT: {
            PAINTSTRUCT paint{};
            BeginPaint(handle, &paint);
            EndPaint(handle, &paint);
            SendPaint();
            return 0;
        }

        // While the user drags or sizes the window or a menu of the system is open, the frame loop waits.
        case WM_ENTERSIZEMOVE:
        case WM_ENTERMENULOOP:
            SetTimer(handle, kPictureTimer, kPictureMilliseconds, nullptr);
            break;
        case WM_EXITSIZEMOVE:
        case WM_EXITMENULOOP:
            KillTimer(handle, kPictureTimer);
            break;
        case WM_TIMER:
            SendPaint();
            return 0;

        case WM_KEYDOWN:
            SendKey(InputKind::KeyDown, wParam, lParam);
            return 0;
        case WM_KEYUP:
            SendKey(InputKind::KeyUp, wParam, lParam);
            return 0;
        case WM_SYSKEYUP:
            SendKey(InputKind::KeyUp, wParam, lParam);
            break;  // pressed alone, released with Alt
        case WM_CHAR:
            HandleInput({.kind = InputKind::Character, .character = static_cast<wchar_t>(wParam)});
            break;
        case WM_KILLFOCUS:
            HandleInput({.kind = InputKind::FocusLost});
            break;

        case WM_MOUSEMOVE:
            SendMouse(InputKind::MouseMove, lParam);
            return 0;
        case WM_LBUTTONDOWN:
            SendMouse(InputKind::LeftDown, lParam);
            return 0;
        case WM_LBUTTONUP:
            SendMouse(InputKind::LeftUp, lParam);
            return 0;
        case WM_LBUTTONDBLCLK:
            SendMouse(InputKind::LeftDoubleClick, lParam);
            return 0;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:  // a fast second press
            SendMouse(InputKind::RightDown, lParam);
            return 0;
        case WM_RBUTTONUP:
            SendMouse(InputKind::RightUp, lParam);
            return 0;
        case WM_CAPTURECHANGED:
            LoseCapture(reinterpret_cast<HWND>(lParam));
            return 0;

        case WM_DROPFILES:
            SendDroppedFiles(reinterpret_cast<HDROP>(wParam));
            return 0;
    }
    return DefWindowProcW(handle, message, wParam, lParam);
}

// True also when it was registered before.
static bool RegisterWindowClass() {
    WNDCLASSW windowClass{};
    windowClass.style = CS_DBLCLKS;
    windowClass.lpfnWndProc = HandleMessage;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hIcon = WindowIcon() ? WindowIcon() : LoadIconW(nullptr, IDI_APPLICATION);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(INT_PTR{COLOR_WINDOW + 1});
    windowClass.lpszClassName = kWindowClass;
    return RegisterClassW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

// How the program was asked to show its window.
static int ShowCommand() {
    STARTUPINFOW startup{};
    GetStartupInfoW(&startup);
    return startup.dwFlags & STARTF_USESHOWWINDOW ? startup.wShowWindow : SW_SHOWDEFAULT;
}

HWND MainWindow() { return window.handle; }

void ShowWindowIcon(HICON icon) {
    if (!window.handle) return;
    SendMessageW(window.handle, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon));
    SendMessageW(window.handle, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
}

bool OpenMainWindow(const std::wstring& title, ClientSize size) {
    if (!RegisterWindowClass()) return false;
    RECT outer{0, 0, size.width, size.height};
    AdjustWindowRect(&outer, WS_OVERLAPPEDWINDOW, FALSE);
    window = {};
    window.handle =
        CreateWindowExW(0, kWindowClass, title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CW_USEDEFAULT,
                        CW_USEDEFAULT, outer.right - outer.left, outer.bottom - outer.top, nullptr, nullptr,
                        GetModuleHandleW(nullptr), nullptr);
    if (!window.handle) return false;

    DarkenCaption();
    if (WindowIcon()) ShowWindowIcon(WindowIcon());
    DragAcceptFiles(window.handle, TRUE);
    ShowWindow(window.handle, ShowCommand());
    return true;
}

bool PumpMessages() {
    bool goesOn = true;
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) goesOn = false;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return goesOn;
}

void RequestQuit() { PostQuitMessage(0); }

ClientSize WindowClientSize() {
    RECT client{};
    if (!window.handle || IsIconic(window.handle) || !GetClientRect(window.handle, &client)) return {};
    return {client.right - client.left, client.bottom - client.top};
}

void ChangeWindowTitle(const std::wstring& title) {
    if (window.handle) SetWindowTextW(window.handle, title.c_str());
}

void CaptureMouse() {
    if (!window.handle) return;
    window.holdsMouse = true;
    SetCapture(window.handle);
}

void ReleaseMouse() {
    if (!window.holdsMouse) return;
    window.holdsMouse = false;  // first: the system reports this loss too
    ReleaseCapture();
}

void ShowArrowCursor() { SetCursor(LoadCursorW(nullptr, IDC_ARROW)); }

bool IsControlHeld() { return GetKeyState(VK_CONTROL) < 0; }

bool IsShiftHeld() { return GetKeyState(VK_SHIFT) < 0; }

bool IsAltHeld() { return GetKeyState(VK_MENU) < 0; }
