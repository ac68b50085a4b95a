#include "platform/window.h"

#include "platform/headless/headless.h"

void StartPlatform() { ++headless.starts; }
void StopPlatform() { ++headless.stops; }

bool OpenMainWindow(const std::wstring& title, ClientSize size) {
    if (!headless.windowOpens) return false;
    headless.windowIsOpen = true;
    headless.title = title;
    headless.clientSize = size;
    return true;
}

bool PumpMessages() {
    if (headless.input.empty()) return false;
    const std::vector<InputEvent> events = std::move(headless.input.front());
    headless.input.pop_front();
    for (const InputEvent& event : events) HandleInput(event);
    return !headless.quitRequested;
}

void RequestQuit() { headless.quitRequested = true; }

ClientSize WindowClientSize() { return headless.clientSize; }
void ChangeWindowTitle(const std::wstring& title) { headless.title = title; }

void CaptureMouse() { headless.mouseIsCaptured = true; }
void ReleaseMouse() { headless.mouseIsCaptured = false; }

void ShowArrowCursor() {}
void AllowTextInput(bool isAllowed) { headless.textInputIsAllowed = isAllowed; }

bool IsControlHeld() { return headless.controlIsHeld; }
bool IsShiftHeld() { return headless.shiftIsHeld; }
bool IsAltHeld() { return headless.altIsHeld; }
