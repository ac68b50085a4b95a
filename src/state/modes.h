// Which screen, tool and tab the user has chosen. The values are the numbers that the documents use.
#pragma once

#include <cstdint>

enum class Screen : int32_t { SceneEditor = 0, BlueprintEditor = 1, PrefabEditor = 2 };
enum class Tool : int32_t { Move = 0, Rotate = 1, Scale = 2 };
enum class BottomTab : int32_t { Files = 0, Console = 1 };
