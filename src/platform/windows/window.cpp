#include "platform/window.h"

#include "platform/canvas.h"
#include "platform/clock.h"
#include "platform/windows/canvas_device.h"
#include "platform/windows/main_window.h"
#include "platform/windows/system_library.h"

#include <windows.h>

#include <shellapi.h>
#include <windowsx.h>

#include <array>
#include <new>
#include <utility>
#include <vector>

constexpr wchar_t kWindowClass[] = L"ZelEngineWindow";
constexpr UINT_PTR kPictureTimer = 1;
constexpr UINT kPictureMilliseconds = 15;  // between pictures while the system runs its own message loop
constexpr LPARAM kWasDown = 1 << 30;       // of a key message
constexpr double kLongGap = 0.5;           // seconds without messages, after which held keys are asked for

namespace {

struct WindowState {
    HWND handle = nullptr;
    bool holdsMouse = false;  // captured by the program
    bool isPainting = false;
    bool takesText = true;              // the input method may compose
    std::array<bool, 256> keyIsDown{};  // as reported, by virtual-key code
    double lastPump = 0;                // seconds
    bool dropsInput = false;            // see DropInput
    bool hasDroppedInput = false;       // since the last PumpMessages
    bool isOutOfMemory = false;         // no input reaches the program any more; PumpMessages throws
};

WindowState window;

}  // namespace

// The system called: no exception may leave by this way.
static void Send(const InputEvent& event) {
    if (window.isOutOfMemory || window.dropsInput) return;
    try {
        HandleInput(event);
    } catch (const std::bad_alloc&) {
        window.isOutOfMemory = true;
    }
}

// A picture may open a dialog's message loop, and that asks for a picture again.
static void SendPaint() {
    if (window.dropsInput) return PresentCanvas();
    if (window.isPainting) return;
    window.isPainting = true;
    Send({.kind = InputKind::Paint});
    window.isPainting = false;
}

static void SendKey(InputKind kind, WPARAM key, LPARAM details) {
    if (key < window.keyIsDown.size()) window.keyIsDown[key] = kind == InputKind::KeyDown;
    const bool isRepeat = kind == InputKind::KeyDown && (details & kWasDown);
    Send({.kind = kind, .key = static_cast<uint32_t>(key), .isRepeat = isRepeat});
}

// The system takes the input for itself, or for another window: what is released then is not reported.
static void SendFocusLost() {
    window.keyIsDown = {};
    Send({.kind = InputKind::FocusLost});
}

// A lock screen or a question for an administrator's password takes the keys away without a word. It also
// leaves a gap in the frames, so after one every key that is held is asked for.
static void ReportKeysThatCameUp() {
    const double now = MonotonicSeconds();
    const bool wasAway = now - window.lastPump > kLongGap;
    window.lastPump = now;
    if (!wasAway) return;
    for (uint32_t key = 0; key < window.keyIsDown.size(); ++key) {
        const bool isHeld = GetAsyncKeyState(static_cast<int>(key)) < 0;
        if (window.keyIsDown[key] && !isHeld) SendKey(InputKind::KeyUp, key, 0);
    }
}

static void SendMouse(InputKind kind, LPARAM position) {
    Send({.kind = kind, .x = GET_X_LPARAM(position), .y = GET_Y_LPARAM(position)});
}

static std::vector<std::wstring> FilesOf(HDROP drop) {
    std::vector<std::wstring> files;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(drop, i, nullptr, 0), L'\0');
        DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size()) + 1);
        files.push_back(std::move(path));
    }
    return files;
}

static void SendDroppedFiles(HDROP drop) {
    POINT point{};
    DragQueryPoint(drop, &point);
    InputEvent event{.kind = InputKind::FilesDropped, .x = point.x, .y = point.y};
    try {
        event.files = FilesOf(drop);
    } catch (const std::bad_alloc&) {
        window.isOutOfMemory = true;
    }
    DragFinish(drop);
    Send(event);
}

static void LoseCapture(HWND newOwner) {
    if (!window.holdsMouse || newOwner == window.handle) return;
    window.holdsMouse = false;
    Send({.kind = InputKind::CaptureLost});
}

// The system's menu loop would stop the frames. It opens for Alt with the space bar only, which shows the
// window's own menu; a lone Alt, F10 and Alt with a letter have no menu to open.
static bool WouldOpenMissingMenu(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SYSKEYDOWN) return wParam == VK_F10 || wParam == VK_MENU;
    return message == WM_SYSCOMMAND && (wParam & 0xFFF0) == SC_KEYMENU && lParam != VK_SPACE;
}

// Of what the user does with the window itself during work, minimising it is the only thing that neither ends
// the program nor opens a message loop of the system's own.
static bool MustWaitForWork(UINT message, WPARAM wParam) {
    if (message == WM_CLOSE || message == WM_QUERYENDSESSION) return true;
    const WPARAM command = wParam & 0xFFF0;
    return message == WM_SYSCOMMAND && command != SC_MINIMIZE && command != SC_RESTORE;
}

// Turns messages of the system into input events. Each case either handles its message (return 0) or reports
// it and lets the system handle it too (break). The system also calls this from within its own message loops,
// for dialogs, menus and the dragging of the frame, so nothing here may rely on the frame loop going on.
static LRESULT CALLBACK HandleMessage(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (window.dropsInput && MustWaitForWork(message, wParam)) return 0;
    if (WouldOpenMissingMenu(message, wParam, lParam)) return 0;
    switch (message) {
        case WM_DESTROY:
            window = {};
            PostQuitMessage(0);
            return 0;

        case WM_ERASEBKGND: return 1;  // every picture covers the whole client area
        case WM_PAINT: {
            PAINTSTRUCT paint{};
            BeginPaint(handle, &paint);
            EndPaint(handle, &paint);
            windowCanvas.isWindowStale = true;
            SendPaint();
            return 0;
        }

        // While the user drags or sizes the window or a menu of the system is open, the frame loop waits.
        case WM_ENTERSIZEMOVE:
        case WM_ENTERMENULOOP:
            SendFocusLost();
            SetTimer(handle, kPictureTimer, kPictureMilliseconds, nullptr);
            break;
        case WM_EXITSIZEMOVE:
        case WM_EXITMENULOOP: KillTimer(handle, kPictureTimer); break;
        case WM_TIMER: SendPaint(); return 0;

        case WM_KEYDOWN: SendKey(InputKind::KeyDown, wParam, lParam); return 0;
        case WM_KEYUP: SendKey(InputKind::KeyUp, wParam, lParam); return 0;
        case WM_SYSKEYUP:
            SendKey(InputKind::KeyUp, wParam, lParam);
            break;  // pressed alone, released with Alt
        case WM_CHAR: Send({.kind = InputKind::Character, .character = static_cast<wchar_t>(wParam)}); break;
        case WM_KILLFOCUS:
        case WM_CANCELMODE: SendFocusLost(); break;

        case WM_ENDSESSION:  // the process may end as soon as this returns
            if (wParam) Send({.kind = InputKind::SessionEnds});
            return 0;

        case WM_MOUSEMOVE: SendMouse(InputKind::MouseMove, lParam); return 0;
        case WM_LBUTTONDOWN: SendMouse(InputKind::LeftDown, lParam); return 0;
        case WM_LBUTTONUP: SendMouse(InputKind::LeftUp, lParam); return 0;
        case WM_LBUTTONDBLCLK: SendMouse(InputKind::LeftDoubleClick, lParam); return 0;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:  // a fast second press
            SendMouse(InputKind::RightDown, lParam);
            return 0;
        case WM_RBUTTONUP: SendMouse(InputKind::RightUp, lParam); return 0;
        case WM_CAPTURECHANGED: LoseCapture(reinterpret_cast<HWND>(lParam)); return 0;

        case WM_DROPFILES: SendDroppedFiles(reinterpret_cast<HDROP>(wParam)); return 0;
    }
    return DefWindowProcW(handle, message, wParam, lParam);
}

// True also when it was registered before.
static bool RegisterWindowClass() {
    WNDCLASSW windowClass{};
    windowClass.style = CS_DBLCLKS;
    windowClass.lpfnWndProc = HandleMessage;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hIcon = CurrentWindowIcons().large;
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

bool OpenMainWindow(const std::wstring& title, ClientSize size) {
    if (!RegisterWindowClass()) return false;
    RECT outer{0, 0, size.width, size.height};
    AdjustWindowRect(&outer, WS_OVERLAPPEDWINDOW, FALSE);
    window = {.lastPump = MonotonicSeconds()};
    // Hidden until it is dressed: a caption that becomes dark later stays light on Windows 10.
    window.handle = CreateWindowExW(0, kWindowClass, title.c_str(), WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                                    CW_USEDEFAULT, outer.right - outer.left, outer.bottom - outer.top,
                                    nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (!window.handle) return false;

    DressWindow(window.handle);
    ShowWindow(window.handle, ShowCommand());
    return true;
}

bool PumpMessages() {
    bool goesOn = true;
    MSG message{};
    ReportKeysThatCameUp();
    if (std::exchange(window.hasDroppedInput, false)) SendFocusLost();
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) goesOn = false;
        TranslateMessage(&message);
        DispatchMessageW(&message);
        if (window.isOutOfMemory) throw std::bad_alloc();
    }
    return goesOn;
}

static bool IsUserInput(const MSG& message) {
    const auto isBetween = [&message](UINT first, UINT last) {
        return message.message >= first && message.message <= last;
    };
    return isBetween(WM_KEYFIRST, WM_KEYLAST) || isBetween(WM_MOUSEFIRST, WM_MOUSELAST) ||
           isBetween(WM_NCMOUSEMOVE, WM_NCXBUTTONDBLCLK);
}

// Input is not even dispatched: a press on the title bar would open a message loop of the system's own.
bool DropInput() {
    bool wantsEnd = false, wantsToCancel = false;
    window.dropsInput = window.hasDroppedInput = true;
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) wantsEnd = true;
        if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) wantsToCancel = true;
        if (!IsUserInput(message)) DispatchMessageW(&message);
    }
    window.dropsInput = false;
    if (wantsEnd) PostQuitMessage(0);
    window.lastPump = MonotonicSeconds();
    return wantsToCancel;
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

// Without its context a window is left alone by the input method; the default one brings it back.
void AllowTextInput(bool isAllowed) {
    if (!window.handle || isAllowed == window.takesText) return;
    window.takesText = isAllowed;
    constexpr DWORD kDefaultContext = 0x0010;  // IACE_DEFAULT
    BOOL(WINAPI * associate)(HWND, HANDLE, DWORD) = nullptr;
    FindFunction(LoadSystemLibrary(L"imm32.dll"), "ImmAssociateContextEx", associate);
    if (associate) associate(window.handle, nullptr, isAllowed ? kDefaultContext : 0);
}

bool IsControlHeld() { return GetKeyState(VK_CONTROL) < 0; }

bool IsShiftHeld() { return GetKeyState(VK_SHIFT) < 0; }

bool IsAltHeld() { return GetKeyState(VK_MENU) < 0; }
