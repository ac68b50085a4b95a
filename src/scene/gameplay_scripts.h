// The scripts that the program itself carries out for the objects that name them.
#pragma once

#include "state/game_object.h"

#include <string_view>

inline constexpr const wchar_t* kPlayerController = L"PlayerController";
inline constexpr const wchar_t* kCollectOnTouch = L"CollectOnTouch";
inline constexpr const wchar_t* kPlanePrefabSpawner = L"PlanePrefabSpawner";

bool HasScript(const GameObject& object, std::wstring_view name);
