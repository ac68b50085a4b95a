// What any program pays for a window: the peer of the start, and of the program at rest. A window of the
// editor's first size, filled with one colour. With "loop" on its command line it asks for messages and
// sleeps a millisecond in turn, as the program does, rather than waiting for the next message.
#include <windows.h>

#include <cwchar>

constexpr COLORREF kFill = RGB(0x22, 0x44, 0x66);

static LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) PostQuitMessage(0);
    if (message == WM_PAINT) {
        PAINTSTRUCT paint{};
        const HDC device = BeginPaint(window, &paint);
        const HBRUSH brush = CreateSolidBrush(kFill);
        RECT client{};
        GetClientRect(window, &client);
        FillRect(device, &client, brush);
        DeleteObject(brush);
        EndPaint(window, &paint);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

int main() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = HandleMessage;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"EmptyWindow";
    RegisterClassW(&windowClass);
    RECT outer{0, 0, 1360, 820};
    AdjustWindowRect(&outer, WS_OVERLAPPEDWINDOW, FALSE);
    CreateWindowExW(0, windowClass.lpszClassName, L"Empty window", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                    CW_USEDEFAULT, CW_USEDEFAULT, outer.right - outer.left, outer.bottom - outer.top, nullptr,
                    nullptr, windowClass.hInstance, nullptr);
    MSG message{};
    if (!std::wcsstr(GetCommandLineW(), L"loop")) {
        while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
        return 0;
    }
    for (;;) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) return 0;
            DispatchMessageW(&message);
        }
        Sleep(1);
    }
}
