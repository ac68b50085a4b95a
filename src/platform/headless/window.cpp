#include "platform/window.h"

#include "platform/headless/headless.h"

#include <algorithm>
#include <utility>

void StartPlatform() { ++headless.starts; }
void StopPlatform() { ++headless.stops; }

bool OpenMainWindow(const std::wstring& title, ClientSize size) {
    if (!headless.windowOpens) return false;
    headless.windowIsOpen = true;
    headless.title = title;
    headless.clientSize = size;
    return true;
}

bool DropInput() {
    headless.workTookInput = true;
    if (headless.workInput.empty()) return false;
    const std::vector<InputEvent> events = std::move(headless.workInput.front());
    headless.workInput.pop_front();
    return std::ranges::any_of(events, [](const InputEvent& event) {
        return event.kind == InputKind::KeyDown && event.key == kKeyEscape;
    });
}

void ShowTaskProgress(double share) { headless.taskProgress.push_back(share); }

bool PumpMessages() {
    if (std::exchange(headless.workTookInput, false)) HandleInput({.kind = InputKind::FocusLost});
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
