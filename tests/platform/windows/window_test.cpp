#include "platform/window.h"

#include "doctest/doctest.h"
#include "platform/canvas.h"
#include "platform/windows/main_window.h"
#include "platform/windows/recorded_input.h"
#include "platform/windows/system_library.h"
#include "platform/windows/window_icon.h"

#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace {

// The program's window, open for the length of a test.
struct TestWindow {
    TestWindow() {
        REQUIRE(OpenMainWindow(L"ZelEngine", {400, 300}));
        PumpMessages();
        recordedInput = {};
    }
    ~TestWindow() {
        recordedInput = {};
        if (MainWindow()) DestroyWindow(MainWindow());
        PumpMessages();
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
};

constexpr LPARAM kAltHeld = LPARAM{1} << 29;
constexpr LPARAM kRepeated = LPARAM{1} << 30;

bool menuLoopWasEntered = false;

}  // namespace

static void Post(UINT message, WPARAM wParam, LPARAM lParam) {
    PostMessageW(MainWindow(), message, wParam, lParam);
}

// The one event of its kind since the test began.
static InputEvent Only(InputKind kind) {
    REQUIRE(CountOf(kind) == 1);
    return *std::ranges::find(recordedInput.events, kind, &InputEvent::kind);
}

// Sees every message that is sent to the window, notes the menu loop and ends it.
static LRESULT CALLBACK WatchForMenuLoop(int code, WPARAM wParam, LPARAM lParam) {
    if (reinterpret_cast<const CWPSTRUCT*>(lParam)->message == WM_ENTERMENULOOP) {
        menuLoopWasEntered = true;
        Post(WM_CANCELMODE, 0, 0);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

static bool EntersMenuLoop(UINT message, WPARAM wParam, LPARAM lParam) {
    menuLoopWasEntered = false;
    const HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROC, WatchForMenuLoop, nullptr, GetCurrentThreadId());
    Post(message, wParam, lParam);
    PumpMessages();
    PumpMessages();
    UnhookWindowsHookEx(hook);
    return menuLoopWasEntered;
}

// A window manager of another process may take its time, and try another size before.
static bool ComesToSize(ClientSize size) {
    for (int32_t i = 0; i < 5000 && WindowClientSize() != size; ++i) {
        Sleep(1);
        PumpMessages();
    }
    return WindowClientSize() == size;
}

static void DropFiles(const std::vector<std::wstring>& paths, POINT point) {
    std::wstring list;
    for (const std::wstring& path : paths) list += path + L'\0';
    list += L'\0';
    const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + list.size() * sizeof(wchar_t));
    auto* drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    drop->pt = point;
    drop->fWide = TRUE;
    std::memcpy(drop + 1, list.data(), list.size() * sizeof(wchar_t));
    GlobalUnlock(memory);
    Post(WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
    PumpMessages();
}

TEST_CASE("the window opens with its title, its class and its client size, and takes dropped files") {
    const TestWindow window;
    CHECK(ComesToSize({400, 300}));
    wchar_t text[64] = {};
    GetWindowTextW(MainWindow(), text, 64);
    CHECK(std::wstring(text) == L"ZelEngine");
    GetClassNameW(MainWindow(), text, 64);
    CHECK(std::wstring(text) == L"ZelEngineWindow");
    CHECK((GetClassLongPtrW(MainWindow(), GCL_STYLE) & CS_DBLCLKS) != 0);
    CHECK((GetWindowLongPtrW(MainWindow(), GWL_STYLE) & WS_OVERLAPPEDWINDOW) == WS_OVERLAPPEDWINDOW);
    CHECK((GetWindowLongPtrW(MainWindow(), GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0);
    CHECK(IsWindowVisible(MainWindow()));
}

TEST_CASE("the title changes") {
    const TestWindow window;
    ChangeWindowTitle(L"ZelEngine - Hra \x017E");
    wchar_t text[64] = {};
    GetWindowTextW(MainWindow(), text, 64);
    CHECK(std::wstring(text) == L"ZelEngine - Hra \x017E");
}

TEST_CASE("keys arrive with their code, and a held key says that it repeats") {
    const TestWindow window;
    Post(WM_KEYDOWN, 'W', 1);
    Post(WM_KEYDOWN, 'W', kRepeated | 1);
    Post(WM_KEYUP, 'W', kRepeated | 1);  // it was down
    Post(WM_KEYDOWN, VK_ESCAPE, 1);
    PumpMessages();
    std::erase_if(recordedInput.events, [](const InputEvent& event) {
        return event.kind != InputKind::KeyDown && event.kind != InputKind::KeyUp;
    });
    REQUIRE(recordedInput.events.size() == 4);
    CHECK(recordedInput.events[0].key == 'W');
    CHECK_FALSE(recordedInput.events[0].isRepeat);
    CHECK(recordedInput.events[1].isRepeat);
    CHECK(recordedInput.events[2].kind == InputKind::KeyUp);
    CHECK(recordedInput.events[2].key == 'W');
    CHECK_FALSE(recordedInput.events[2].isRepeat);
    CHECK(recordedInput.events[3].key == kKeyEscape);
}

TEST_CASE("a key released while Alt is held is reported up") {
    const TestWindow window;
    Post(WM_SYSKEYUP, 'W', kAltHeld);
    PumpMessages();
    CHECK(Only(InputKind::KeyUp).key == 'W');
}

TEST_CASE("characters arrive as UTF-16 units") {
    const TestWindow window;
    Post(WM_CHAR, 0x017E, 1);
    Post(WM_CHAR, 0xD83D, 1);
    Post(WM_CHAR, 0xDE00, 1);
    PumpMessages();
    std::wstring typed;
    for (const InputEvent& event : recordedInput.events) {
        if (event.kind == InputKind::Character) typed += event.character;
    }
    CHECK(typed == L"\x017E\xD83D\xDE00");
}

TEST_CASE("mouse messages become events with signed client pixels") {
    const TestWindow window;
    struct {
        UINT message;
        InputKind kind;
    } cases[] = {
        {WM_MOUSEMOVE, InputKind::MouseMove},   {WM_LBUTTONDOWN, InputKind::LeftDown},
        {WM_LBUTTONUP, InputKind::LeftUp},      {WM_LBUTTONDBLCLK, InputKind::LeftDoubleClick},
        {WM_RBUTTONDOWN, InputKind::RightDown}, {WM_RBUTTONUP, InputKind::RightUp},
    };
    for (const auto& [message, kind] : cases) {
        for (const Point point : {Point{12, 34}, Point{-5, -300}, Point{32767, -32768}}) {
            recordedInput.events.clear();
            SendMessageW(MainWindow(), message, 0,
                         MAKELPARAM(static_cast<uint16_t>(point.x), static_cast<uint16_t>(point.y)));
            const InputEvent event = Only(kind);
            CHECK(Point{event.x, event.y} == point);
        }
    }
}

TEST_CASE("a fast second right press is a press") {
    const TestWindow window;
    SendMessageW(MainWindow(), WM_RBUTTONDBLCLK, 0, MAKELPARAM(3, 4));
    CHECK(Only(InputKind::RightDown).x == 3);
}

TEST_CASE("every dropped file arrives, with its whole path and the place of the drop") {
    const TestWindow window;
    const std::vector<std::wstring> paths{L"C:\\a.png", L"C:\\" + std::wstring(400, L'd') + L"\\m.obj",
                                          L"C:\\\x017Elut\xFD k\x016F\x0148.png"};
    DropFiles(paths, {31, 77});
    const InputEvent event = Only(InputKind::FilesDropped);
    CHECK(event.files == paths);
    CHECK(event.x == 31);
    CHECK(event.y == 77);
}

TEST_CASE("F10, Alt and Alt with a letter do not stop the frames in a menu") {
    const TestWindow window;
    CHECK_FALSE(EntersMenuLoop(WM_SYSKEYDOWN, VK_F10, 1));
    CHECK_FALSE(EntersMenuLoop(WM_SYSKEYUP, VK_F10, 1));
    CHECK_FALSE(EntersMenuLoop(WM_SYSKEYDOWN, VK_MENU, kAltHeld | 1));
    CHECK_FALSE(EntersMenuLoop(WM_SYSKEYUP, VK_MENU, 1));
    CHECK_FALSE(EntersMenuLoop(WM_SYSCHAR, 'f', kAltHeld | 1));
    CHECK_FALSE(EntersMenuLoop(WM_SYSCOMMAND, SC_KEYMENU, 0));
    CHECK_FALSE(EntersMenuLoop(WM_SYSCOMMAND, SC_KEYMENU, 'f'));
    CHECK(MainWindow() != nullptr);
}

TEST_CASE("the window's own menu still opens for Alt and the space bar") {
    const TestWindow window;
    CHECK(EntersMenuLoop(WM_SYSCOMMAND, SC_KEYMENU, VK_SPACE));
}

TEST_CASE("Alt and F4 close the window and end the program") {
    const TestWindow window;
    Post(WM_SYSKEYDOWN, VK_F4, kAltHeld | 1);
    bool goesOn = PumpMessages();
    if (goesOn) goesOn = PumpMessages();
    CHECK_FALSE(goesOn);
    CHECK(MainWindow() == nullptr);
}

TEST_CASE("a request to quit ends the program after the waiting messages") {
    const TestWindow window;
    CHECK(PumpMessages());
    RequestQuit();
    Post(WM_KEYDOWN, 'A', 1);
    CHECK_FALSE(PumpMessages());
    CHECK(CountOf(InputKind::KeyDown) == 1);
    CHECK(PumpMessages());
}

TEST_CASE("messages behind the one to quit arrive before the program ends") {
    const TestWindow window;
    Post(WM_KEYDOWN, 'A', 1);
    PostThreadMessageW(GetCurrentThreadId(), WM_QUIT, 0, 0);
    Post(WM_KEYUP, 'A', kRepeated | 1);
    CHECK_FALSE(PumpMessages());
    CHECK(CountOf(InputKind::KeyDown) == 1);
    CHECK(CountOf(InputKind::KeyUp) == 1);
    CHECK(PumpMessages());
}

TEST_CASE(
    "the focus counts as lost while the system's menu, sizing or a question of its own takes the input") {
    const TestWindow window;
    for (const UINT message : {WM_KILLFOCUS, WM_CANCELMODE, WM_ENTERSIZEMOVE, WM_ENTERMENULOOP}) {
        recordedInput.events.clear();
        SendMessageW(MainWindow(), message, 0, 0);
        CHECK(CountOf(InputKind::FocusLost) == 1);
    }
}

TEST_CASE("a key that came up while no messages arrived for half a second is reported up, once") {
    const TestWindow window;
    Post(WM_KEYDOWN, 'W', 1);  // a message alone: the key itself is up
    PumpMessages();
    REQUIRE(CountOf(InputKind::KeyDown) == 1);
    for (int32_t i = 0; i < 2; ++i) {
        Sleep(600);
        PumpMessages();
        CHECK(Only(InputKind::KeyUp).key == 'W');
    }
}

TEST_CASE("the end of the session is told when it has been decided, not when it is only asked about") {
    const TestWindow window;
    CHECK(SendMessageW(MainWindow(), WM_QUERYENDSESSION, 0, 0) != 0);
    SendMessageW(MainWindow(), WM_ENDSESSION, FALSE, 0);
    CHECK(CountOf(InputKind::SessionEnds) == 0);
    SendMessageW(MainWindow(), WM_ENDSESSION, TRUE, 0);
    CHECK(CountOf(InputKind::SessionEnds) == 1);
}

TEST_CASE("a window is moved into the work area, and cut where that has no room") {
    constexpr RECT kWork{0, 40, 1280, 720};
    struct {
        RECT wanted, fitted;
    } cases[] = {
        {{100, 100, 600, 500}, {100, 100, 600, 500}},    // has room
        {{0, 40, 1280, 720}, {0, 40, 1280, 720}},        // exactly
        {{900, 400, 1400, 800}, {780, 320, 1280, 720}},  // beyond the right and lower edges
        {{-50, 10, 200, 300}, {0, 40, 250, 330}},        // beyond the left and upper edges
        {{26, 26, 1402, 885}, {0, 40, 1280, 720}},       // larger on both sides
        {{26, 26, 626, 885}, {26, 40, 626, 720}},        // too high only
    };
    for (const auto& [wanted, fitted] : cases) {
        const RECT place = FitIntoWorkArea(wanted, kWork);
        CAPTURE(wanted.left);
        CHECK(EqualRect(&place, &fitted));
    }
}

TEST_CASE("a window larger than the screen opens inside its work area") {
    REQUIRE(OpenMainWindow(L"ZelEngine", {5000, 4000}));
    RECT place{};
    GetWindowRect(MainWindow(), &place);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    REQUIRE(GetMonitorInfoW(MonitorFromWindow(MainWindow(), MONITOR_DEFAULTTONEAREST), &monitor));
    DestroyWindow(MainWindow());
    PumpMessages();
    CHECK(place.right - place.left <= monitor.rcWork.right - monitor.rcWork.left);
    CHECK(place.bottom - place.top <= monitor.rcWork.bottom - monitor.rcWork.top);
}

TEST_CASE("the input method has a context of the window only while text is taken") {
    HANDLE(WINAPI * getContext)(HWND) = nullptr;
    BOOL(WINAPI * releaseContext)(HWND, HANDLE) = nullptr;
    const HMODULE library = LoadSystemLibrary(L"imm32.dll");
    FindFunction(library, "ImmGetContext", getContext);
    FindFunction(library, "ImmReleaseContext", releaseContext);
    const bool canAsk = getContext != nullptr && releaseContext != nullptr;
    REQUIRE(canAsk);
    const auto hasContext = [&] {
        const HANDLE context = getContext(MainWindow());
        if (context) releaseContext(MainWindow(), context);
        return context != nullptr;
    };
    const TestWindow window;
    CHECK(hasContext());
    for (const bool isAllowed : {false, true, false}) {
        AllowTextInput(isAllowed);
        CHECK(hasContext() == isAllowed);
    }
}

static ClientSize SizeOf(HICON icon) {
    ICONINFO parts{};
    REQUIRE(GetIconInfo(icon, &parts));
    BITMAP bitmap{};
    GetObjectW(parts.hbmColor, sizeof bitmap, &bitmap);
    DeleteObject(parts.hbmColor);
    DeleteObject(parts.hbmMask);
    return {bitmap.bmWidth, bitmap.bmHeight};
}

TEST_CASE("the window shows an icon of 32 pixels in the task list and one of 16 in its title bar") {
    const TestWindow window;
    MakeWindowIcon({.width = 72, .height = 72, .argb = std::vector<uint32_t>(72 * 72, 0xFF3366CC)});
    const auto iconOf = [](WPARAM size) {
        return reinterpret_cast<HICON>(SendMessageW(MainWindow(), WM_GETICON, size, 0));
    };
    CHECK(SizeOf(iconOf(ICON_BIG)) == ClientSize{32, 32});
    CHECK(SizeOf(iconOf(ICON_SMALL)) == ClientSize{16, 16});
    ReleaseCanvasImages();
}

TEST_CASE("a scaled icon averages what lies under each pixel, and clear pixels lend no colour") {
    // Two columns, 0xFF000000 and clear white, in three rows: scaled to 2 x 2 each pixel covers one and a
    // half.
    const DecodedImage image{
        .width = 2,
        .height = 3,
        .argb = {0xFF000000, 0x00FFFFFF, 0xFF000030, 0x00FFFFFF, 0xFF000060, 0x00FFFFFF}};
    CHECK(ScaleByArea(image, 2).argb == std::vector<uint32_t>{0xFF000010, 0, 0xFF000050, 0});
    // All of it: half is opaque, and its mean blue is 0x30.
    CHECK(ScaleByArea(image, 1).argb == std::vector<uint32_t>{0x80000030});
    // Larger: every pixel is repeated.
    const DecodedImage dot{.width = 1, .height = 1, .argb = {0x7F102030}};
    CHECK(ScaleByArea(dot, 2).argb == std::vector<uint32_t>(4, 0x7F102030));
}

TEST_CASE("losing the mouse capture is reported, releasing it is not") {
    const TestWindow window;
    CaptureMouse();
    CHECK(GetCapture() == MainWindow());
    ReleaseMouse();
    CHECK(GetCapture() == nullptr);
    CHECK(CountOf(InputKind::CaptureLost) == 0);

    CaptureMouse();
    CaptureMouse();
    CHECK(CountOf(InputKind::CaptureLost) == 0);
    ReleaseCapture();
    CHECK(CountOf(InputKind::CaptureLost) == 1);
    ReleaseMouse();
    ReleaseCapture();
    CHECK(CountOf(InputKind::CaptureLost) == 1);
}

TEST_CASE("the window asks for its picture once, even while one is being drawn") {
    const TestWindow window;
    recordedInput.onEvent = [](const InputEvent& event) {
        if (event.kind == InputKind::Paint)
            RedrawWindow(MainWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    };
    RedrawWindow(MainWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    CHECK(CountOf(InputKind::Paint) == 1);
    recordedInput.onEvent = nullptr;
    RedrawWindow(MainWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    CHECK(CountOf(InputKind::Paint) == 2);
}

TEST_CASE("pictures go on while the user moves or sizes the window") {
    const TestWindow window;
    struct {
        UINT enter, leave;
    } loops[] = {{WM_ENTERSIZEMOVE, WM_EXITSIZEMOVE}, {WM_ENTERMENULOOP, WM_EXITMENULOOP}};
    for (const auto& [enter, leave] : loops) {
        recordedInput.events.clear();
        SendMessageW(MainWindow(), enter, 0, 0);
        for (int32_t i = 0; i < 2000 && CountOf(InputKind::Paint) < 3; ++i) {
            Sleep(1);
            PumpMessages();
        }
        CHECK(CountOf(InputKind::Paint) >= 3);

        SendMessageW(MainWindow(), leave, 0, 0);
        PumpMessages();
        recordedInput.events.clear();
        for (int32_t i = 0; i < 60; ++i) {
            Sleep(1);
            PumpMessages();
        }
        CHECK(CountOf(InputKind::Paint) <=
              1);  // the timer would send four; the system may ask for one itself
    }
}

TEST_CASE("a minimised window has no client area, and gets it back") {
    const TestWindow window;
    ShowWindow(MainWindow(), SW_MINIMIZE);
    CHECK(ComesToSize({0, 0}));
    ShowWindow(MainWindow(), SW_RESTORE);
    CHECK(ComesToSize({400, 300}));
}

TEST_CASE("without a window its questions have plain answers") {
    REQUIRE(MainWindow() == nullptr);
    CHECK(WindowClientSize() == ClientSize{0, 0});
    ChangeWindowTitle(L"nothing");
    CaptureMouse();
    ReleaseMouse();
    CHECK(GetCapture() == nullptr);
    CHECK(PumpMessages());
}

TEST_CASE("the window shows what was presented") {
    const TestWindow window;
    Pixel* pixels = CreateCanvas(400, 300);
    REQUIRE(pixels != nullptr);
    std::fill_n(pixels, 400 * 300, Pixel{0x204060});
    pixels[7 * 400 + 9] = Pixel{0xFF8000};
    PresentCanvas();
    const HDC device = GetDC(MainWindow());
    CHECK(GetPixel(device, 9, 7) == RGB(0xFF, 0x80, 0x00));
    CHECK(GetPixel(device, 399, 299) == RGB(0x20, 0x40, 0x60));
    ReleaseDC(MainWindow(), device);
    DestroyCanvas();
}

TEST_CASE("Ctrl, Shift and Alt are held as the system's key state says, AltGr as Ctrl and Alt") {
    struct {
        bool control, shift, alt;
    } cases[] = {{false, false, false}, {true, false, false}, {false, true, false}, {true, false, true}};
    BYTE before[256]{};
    REQUIRE(GetKeyboardState(before));
    for (const auto& [control, shift, alt] : cases) {
        BYTE keys[256]{};
        keys[VK_CONTROL] = keys[VK_LCONTROL] = control ? 0x80 : 0;
        keys[VK_SHIFT] = keys[VK_LSHIFT] = shift ? 0x80 : 0;
        keys[VK_MENU] = keys[VK_RMENU] = alt ? 0x80 : 0;
        REQUIRE(SetKeyboardState(keys));
        CHECK(IsControlHeld() == control);
        CHECK(IsShiftHeld() == shift);
        CHECK(IsAltHeld() == alt);
    }
    SetKeyboardState(before);
}

TEST_CASE("memory that does not suffice for an event ends the pumping, and no event follows") {
    const TestWindow testWindow;
    recordedInput.onEvent = [](const InputEvent& event) {
        if (event.kind == InputKind::KeyDown) throw std::bad_alloc();
    };
    Post(WM_KEYDOWN, 'A', 0);
    Post(WM_KEYDOWN, 'B', 0);
    CHECK_THROWS_AS(PumpMessages(), std::bad_alloc);
    CHECK(CountOf(InputKind::KeyDown) == 1);
    Post(WM_LBUTTONDOWN, 0, 0);
    CHECK_THROWS_AS(PumpMessages(), std::bad_alloc);
    CHECK(CountOf(InputKind::KeyDown) == 1);
    CHECK(CountOf(InputKind::LeftDown) == 0);
}

TEST_CASE("during work the window stays open and gives nothing of what the user does to the program") {
    const TestWindow window;
    Post(WM_KEYDOWN, 'G', 0);
    Post(WM_CHAR, 'g', 0);
    Post(WM_LBUTTONDOWN, 0, MAKELPARAM(10, 10));
    Post(WM_NCLBUTTONDOWN, HTCAPTION, MAKELPARAM(20, 5));  // would wait until the button comes up
    Post(WM_SYSCOMMAND, SC_MOVE, 0);
    Post(WM_SYSCOMMAND, SC_CLOSE, 0);
    Post(WM_CLOSE, 0, 0);
    InvalidateRect(MainWindow(), nullptr, FALSE);
    CHECK_FALSE(DropInput());
    CHECK(recordedInput.events.empty());
    CHECK(IsWindow(MainWindow()));
    CHECK(SendMessageW(MainWindow(), WM_QUERYENDSESSION, 0, 0) != 0);  // after the work

    Post(WM_KEYDOWN, VK_ESCAPE, 0);
    CHECK(DropInput());
    CHECK_FALSE(DropInput());
    CHECK(recordedInput.events.empty());

    CHECK(PumpMessages());
    CHECK(CountOf(InputKind::FocusLost) == 1);
    CHECK(CountOf(InputKind::KeyDown) == 0);
    CHECK(CountOf(InputKind::LeftDown) == 0);
    recordedInput = {};
    CHECK(PumpMessages());
    CHECK(CountOf(InputKind::FocusLost) == 0);
}

TEST_CASE("a request to quit made before long work is obeyed after it") {
    const TestWindow window;
    RequestQuit();
    DropInput();
    CHECK_FALSE(PumpMessages());
}

TEST_CASE("the task bar takes progress with a window and without") {
    ShowTaskProgress(0.5);
    const TestWindow window;
    for (const double share : {0.0, 0.5, 1.0, -1.0}) ShowTaskProgress(share);
    CHECK(IsWindow(MainWindow()));
}
