#include "play/play_pass.h"

#include "platform/files.h"
#include "state/editor_state.h"

#include <functional>

static std::wstring_view NameOf(int32_t index) { return editorState.scene[index].name; }

size_t FirstByName::Hash::operator()(int32_t index) const { return (*this)(NameOf(index)); }

size_t FirstByName::Hash::operator()(std::wstring_view name) const {
    return std::hash<std::wstring_view>{}(name);
}

bool FirstByName::Equal::operator()(int32_t a, int32_t b) const { return NameOf(a) == NameOf(b); }

bool FirstByName::Equal::operator()(std::wstring_view name, int32_t index) const {
    return name == NameOf(index);
}

bool FirstByName::Equal::operator()(int32_t index, std::wstring_view name) const {
    return NameOf(index) == name;
}

// Both tables are filled lazily: the first question reads the whole scene, later ones only what was added
// since. That is enough, because during a pass objects are only ever added at the end. The set of names
// holds object indices and hashes the names behind them, so that no name is copied. Without the tables each
// collector would compare its target with every name in every frame.
int32_t FirstObjectNamed(const std::wstring& name, SceneLookup& lookup) {
    FirstByName& names = lookup.names;
    for (; names.seen < editorState.scene.size(); ++names.seen) {
        names.indices.insert(static_cast<int32_t>(names.seen));  // a later one of the same name is not
    }
    const auto found = names.indices.find(std::wstring_view(name));
    return found == names.indices.end() ? -1 : *found;
}

std::span<const int32_t> InstancesOf(const std::wstring& prefab, SceneLookup& lookup) {
    InstancesByPrefab& instances = lookup.instances;
    for (; instances.seen < editorState.scene.size(); ++instances.seen) {
        const GameObject& object = editorState.scene[instances.seen];
        if (!object.active || object.prefabSource.empty()) continue;
        instances.indices[object.prefabSource].push_back(static_cast<int32_t>(instances.seen));
    }
    const auto found = instances.indices.find(prefab);
    if (found == instances.indices.end()) return {};
    return found->second;
}

bool IsFile(const std::wstring& path, SceneLookup& lookup) {
    if (path.empty()) return false;
    const auto [entry, isNew] = lookup.files.try_emplace(path, false);
    if (isNew) entry->second = KindOfPath(path) == PathKind::File;
    return entry->second;
}
