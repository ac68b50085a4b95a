// The program's one window: its messages become input events.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Virtual-key codes. Letters and digits are their upper-case ASCII codes.
enum Key : uint32_t {
    kKeyBackspace = 8,
    kKeyTab = 9,
    kKeyEnter = 13,
    kKeyShift = 16,
    kKeyControl = 17,
    kKeyEscape = 27,
    kKeySpace = 32,
    kKeyLeft = 37,
    kKeyUp = 38,
    kKeyRight = 39,
    kKeyDown = 40,
    kKeyDelete = 46,
    kKeyF1 = 112,
    kKeyF2 = 113,
    kKeyF3 = 114,
};

enum class InputKind {
    Paint,      // the window needs its picture now
    KeyDown,    // key, isRepeat
    KeyUp,      // key
    Character,  // character: one UTF-16 unit
    MouseMove,  // x, y from here on down to RightUp
    LeftDown,
    LeftUp,
    LeftDoubleClick,
    RightDown,
    RightUp,
    FilesDropped,  // files, and x, y where they were dropped
    FocusLost,     // keys that are down will not be reported up
    CaptureLost,   // a drag ends here without effect
    SessionEnds,   // the user signs out: the program may be ended as soon as this is handled
};

struct InputEvent {
    InputKind kind = InputKind::Paint;
    int32_t x = 0, y = 0;   // client pixels; negative beyond the left and top edges during a capture
    uint32_t key = 0;       // virtual-key code
    bool isRepeat = false;  // the key was down already
    wchar_t character = 0;
    std::vector<std::wstring> files{};  // full paths
};

// The one function that the program gives to the platform.
void HandleInput(const InputEvent& event);

struct ClientSize {
    int32_t width = 0, height = 0;  // pixels; 0 while the window is minimised

    friend constexpr bool operator==(const ClientSize&, const ClientSize&) = default;
};

// Before anything else of the platform, and after everything else.
void StartPlatform();
void StopPlatform();

// Opens the window with a client area of the given size at the system's default place: dark caption, file
// drops accepted, double clicks reported, shown as the program was asked to be shown. False when it fails.
bool OpenMainWindow(const std::wstring& title, ClientSize size);

// Handles every waiting message. False once the program is to end. Throws std::bad_alloc when HandleInput
// has: nothing reaches it from then on.
bool PumpMessages();

// Handles the waiting messages while work holds the frame loop up: the window shows its last picture again,
// and nothing reaches HandleInput. What the user does is dropped, closing the window included; the next
// PumpMessages reports that the focus was lost. True when Esc was pressed.
bool DropInput();

// The progress that the task bar shows for the window, 0 .. 1; none for a negative one.
void ShowTaskProgress(double share);

// Ends the program after the messages that are waiting.
void RequestQuit();

ClientSize WindowClientSize();
void ChangeWindowTitle(const std::wstring& title);

// While the mouse is captured, its events arrive from outside the window too.
void CaptureMouse();
void ReleaseMouse();

void ShowArrowCursor();

// Whether keys may be composed into characters by the system's input method, which takes them away meanwhile.
// Allowed when the window opens.
void AllowTextInput(bool isAllowed);

// Modifier keys as they are now.
bool IsControlHeld();
bool IsShiftHeld();
bool IsAltHeld();  // AltGr counts as Ctrl and Alt
