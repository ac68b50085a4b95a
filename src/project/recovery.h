// Work that was not saved, kept in the user's data folder until it is saved or found again. Nothing here says
// anything to the user: a recovery that cannot be written is tried again later.
#pragma once

// Called once per frame with the time in seconds. At most once a minute it begins to write the open scene,
// and the open prefab, when they differ from what was last loaded or saved and from their recovery: the
// objects are put into words a few per frame, and a thread aside writes the file. Never during Play mode, a
// gesture or an entry, and never in a game.
void KeepRecovery(double now);

// At the end of the program, and of the system's session: writes at once what KeepRecovery would have
// written. During Play mode the scene of before is meant. What has been saved needs no recovery any more.
void WriteRecoveryNow();

// The open scene, or the open prefab, was saved, or the user let its changes go.
void ForgetSceneRecovery();
void ForgetPrefabRecovery();
