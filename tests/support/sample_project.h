// The sample projects, opened and played.
#pragma once

#include "support/game.h"

#include <initializer_list>
#include <string>
#include <string_view>

// A fresh editor that has opened a project of the folder sample/.
void OpenSample(const std::wstring& name);

// The path of a file of the open project.
std::wstring InSample(std::wstring_view file);

// The first object of the name. A test without one fails here.
GameObject& Named(std::wstring_view name);

// How many objects of the name have been collected.
int32_t Collected(std::wstring_view name);

// Plays a game twice, and compares the two scenes at its end to the last bit.
void CheckPlaysTheSameTwice(void (*play)());

// The frame times at which a game is played on Windows, in seconds: 64 and 32 pictures a second where a
// sleep of a millisecond ends with the system's next tick, 20 where the program allows no longer frame, and
// the 60 that most tests play at.
constexpr float kFrameTimes[] = {1.0f / 60, 1.0f / 64, 1.0f / 32, 1.0f / 20};

// The time of each frame that HoldFor plays, in seconds.
inline float frameTime = kFrameTimes[0];

// Plays as many sixtieths of a second, with keys held down.
void HoldFor(int32_t sixtieths, std::initializer_list<char> keys);
