// The commands that give a component to the selected object.
#pragma once

#include "state/game_object.h"

#include <cstdint>
#include <span>

struct ComponentCommand {
    const wchar_t* title;     // as the search shows it
    const wchar_t* keywords;  // what the search finds it by, beside the title
    int32_t action;           // number of the Inspector action that adds it
    const char* undoLabel;
    void (*add)(GameObject& object);
    const wchar_t* message;
};

// In the order in which the search lists them.
std::span<const ComponentCommand> ComponentCommands();

// Adds the component to the selected object. False, without a message, when nothing is selected or no
// component has this action number.
bool AddComponent(int32_t action);
