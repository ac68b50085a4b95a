#include "formats/mesh_reference.h"

#include "formats/project_paths.h"
#include "render/builtin_meshes.h"
#include "state/editor_state.h"

constexpr std::wstring_view kBuiltinPrefix = L"builtin:";
constexpr std::wstring_view kFilePrefix = L"file:";

int32_t MeshIndexFromReference(std::wstring_view reference) {
    KnownModels known = ModelsInLibrary();
    return MeshIndexFromReference(reference, known);
}

int32_t MeshIndexFromReference(std::wstring_view reference, KnownModels& known) {
    if (reference.starts_with(kFilePrefix)) {
        const std::wstring_view stored = reference.substr(kFilePrefix.size());
        return LoadObjIntoLibrary(stored.empty() ? std::wstring{} : JoinProjectPath(stored), known);
    }
    if (reference.starts_with(kBuiltinPrefix)) {
        const std::wstring_view name = reference.substr(kBuiltinPrefix.size());
        for (int32_t i = 0; i < kBuiltinMeshCount; ++i) {
            if (name == kBuiltinMeshNames[i]) return i;
        }
    }
    return kCubeMesh;
}

std::wstring MeshReferenceFromIndex(int32_t meshIndex) {
    const auto builtin = [](int32_t index) {
        return std::wstring(kBuiltinPrefix) + kBuiltinMeshNames[index];
    };
    if (meshIndex >= 0 && meshIndex < kBuiltinMeshCount) return builtin(meshIndex);

    const auto& meshes = editorState.meshes;
    const bool isImported = meshIndex >= 0 && static_cast<size_t>(meshIndex) < meshes.size() &&
                            !meshes[static_cast<size_t>(meshIndex)].source.empty();
    if (!isImported) return builtin(kCubeMesh);
    return std::wstring(kFilePrefix) + MakeProjectRelative(meshes[static_cast<size_t>(meshIndex)].source);
}
