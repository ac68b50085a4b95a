// Unsaved work, kept in the user's data folder until it is saved or found again. Nothing here reports to the
// user: a recovery that cannot be written is tried again later.
#pragma once

// Called once per frame with the time in seconds. At most once a minute it begins to write the open scene,
// and the open prefab, if they differ from what was last loaded or saved and from their recovery. The
// objects become text a few per frame, and another thread writes the file. It never begins during Play mode,
// a gesture or an entry, and does nothing in the game.
void KeepRecovery(double now);

// Called at the end of the program and of the system's session: writes at once what KeepRecovery would have
// written. During Play mode that is the scene from before. Removes recoveries of what has been saved.
void WriteRecoveryNow();

// Remove the recovery of the open scene or prefab, because it was saved or the user dropped its changes.
void ForgetSceneRecovery();
void ForgetPrefabRecovery();
