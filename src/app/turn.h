// One turn of the program's loop, after the waiting messages: time passes, and the window gets a picture
// where its last one may be out of date.
#pragma once

#include "platform/window.h"
#include "play/play_mode.h"

#include <cstdint>

// What the loop keeps from turn to turn.
struct Turn {
    PlayCache playCache{};
    uint64_t shownEvents = UINT64_MAX;  // EditorState::handledEvents at the last picture
    ClientSize shownSize{};             // of the window at the last picture
};

// Flies the editor camera with the keys that are down, moves the selected object with its keys, lets the
// animation clock run, and plays the scene in Play mode. Behind a page that covers the window only the clock
// runs. `dt` in seconds, at most 0.05. False when this changed nothing that a picture shows.
bool UpdateFrame(float dt, PlayCache& cache);

// Lets `dt` seconds pass and draws when that is due. True when a picture was shown. A turn in which no event
// was handled, no key is down and no game plays at an unchanged size would draw the picture that is there
// already.
bool RunTurn(float dt, Turn& turn);
