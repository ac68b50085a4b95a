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

// Frames of a sixtieth of a second, with keys held down.
void HoldFor(int32_t frames, std::initializer_list<char> keys);
