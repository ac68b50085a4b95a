// What any program pays for a window: the peer of the start. A window of the editor's first size, filled with
// one colour.
#include <windows.h>

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
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}
