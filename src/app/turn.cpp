#include "app/turn.h"

#include "app/frame.h"
#include "project/project_hub.h"
#include "scene/editor_camera.h"
#include "scene/keyboard_transform.h"
#include "scene/shown_screen.h"
#include "state/editor_state.h"

#include <algorithm>

// The Project Hub and the Blueprint screen take the keys for themselves.
static bool PageCoversWindow() { return ShownScreen() == Shown::Hub || ShownScreen() == Shown::Blueprint; }

static bool AnyKeyIsDown() {
    return std::ranges::find(editorState.keyDown, true) != editorState.keyDown.end();
}

// Time moves nothing but what keys hold and what a game moves. What they do is not asked: whether a key
// flies, transforms or does nothing, it counts while it is down.
bool UpdateFrame(float dt, PlayCache& cache) {
    editorState.animationTime += dt;
    if (PageCoversWindow()) return false;
    const bool moves = AnyKeyIsDown() || editorState.playMode;
    FlyWithKeys(dt);
    KeyboardTransformStep(dt);
    if (editorState.playMode) {
        PlayStep(dt, cache);
    } else {
        cache = {};
    }
    return moves;
}

// The one place that decides whether a turn draws. It asks from outside: every handled event counts, whatever
// it did, and so does time for whatever moves by it. No command has to say that it changed something.
bool RunTurn(float dt, Turn& turn) {
    const bool moved = UpdateFrame(dt, turn.playCache);
    const bool answered = ShownScreen() == Shown::Hub && CheckListedProjects();
    const ClientSize size = WindowClientSize();
    if (size.width < 1 || size.height < 1) return false;  // minimised; the game goes on unseen
    const uint64_t events = editorState.handledEvents;
    const bool isDue = moved || answered || events != turn.shownEvents || size != turn.shownSize;
    if (!isDue || !RenderFrame()) return false;  // what failed, for want of memory, say, stays due
    turn.shownEvents = events;
    turn.shownSize = size;
    return true;
}
