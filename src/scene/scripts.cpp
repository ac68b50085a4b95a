#include "scene/scripts.h"

#include <algorithm>

static void CountScripts(GameObject& object) {
    object.scriptCount = static_cast<int32_t>(object.scripts.size());
}

bool HasScript(const GameObject& object, std::wstring_view name) {
    return std::ranges::find(object.scripts, name) != object.scripts.end();
}

void AppendScript(GameObject& object, const std::wstring& name) {
    object.scripts.push_back(name);
    CountScripts(object);
}

void EnsureScript(GameObject& object, const std::wstring& name) {
    if (!HasScript(object, name)) object.scripts.push_back(name);
    CountScripts(object);
}

void RemoveLastScript(GameObject& object) {
    if (object.scripts.empty()) {
        --object.scriptCount;
        return;
    }
    object.scripts.pop_back();
    CountScripts(object);
}
