// Which screen fills the window.
#pragma once

#include <cstdint>

enum class Shown : int32_t {
    Hub,          // the Project Hub, before a project is open
    Blueprint,    // the Blueprint screen in place of the Scene editor
    Prefab,       // the Scene editor with a prefab's objects
    SceneEditor,  // Play mode included
    Game,         // the runtime: a built game without panels
};

Shown ShownScreen();
