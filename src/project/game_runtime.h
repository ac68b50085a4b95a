// Starting as the game instead of the editor.
#pragma once

// True when a "project.zel" lies beside the executable: its project is then loaded and plays. To be called
// once, before the window opens. A project that cannot be read plays the scene that is there.
bool DetectRuntimeProject();
