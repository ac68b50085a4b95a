// What the user is in the middle of with an object.
#pragma once

// False while the right button looks around: only one drag runs at a time.
bool DragMayStart();

// Ends drags of the gizmo and in the Hierarchy with their hold on the mouse, the held keys' undo step, name
// and number entry, and the object menu, and lets no click mean an object that the last frame drew. Called
// when objects change their indices or are replaced.
void EndGestures();
