#include "scene/gameplay_scripts.h"

#include <algorithm>

bool HasScript(const GameObject& object, std::wstring_view name) {
    return std::ranges::find(object.scripts, name) != object.scripts.end();
}
