// The scripts of an object: those that the program itself carries out, and the list that names them all.
#pragma once

#include "state/game_object.h"

#include <string>
#include <string_view>

inline constexpr const wchar_t* kPlayerController = L"PlayerController";
inline constexpr const wchar_t* kCollectOnTouch = L"CollectOnTouch";
inline constexpr const wchar_t* kPlanePrefabSpawner = L"PlanePrefabSpawner";

bool HasScript(const GameObject& object, std::wstring_view name);

// What follows keeps `scriptCount` at the length of the list.

// Adds a script, also one of a name that is there already.
void AppendScript(GameObject& object, const std::wstring& name);

// Adds a script of a name that is not there yet.
void EnsureScript(GameObject& object, const std::wstring& name);

// A file may count scripts without naming them: then the count goes down by one.
void RemoveLastScript(GameObject& object);
