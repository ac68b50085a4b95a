// Any bytes load as a prefab, stand in a scene twice, and are written, read and written again as the same
// bytes.
#include "formats/prefab.h"
#include "fuzz_input.h"
#include "platform/files.h"
#include "scene/default_scenes.h"

#include <cstdlib>

static std::string WrittenBytes(const std::wstring& path, const Scene& objects) {
    std::string bytes;
    if (!WritePrefab(path, objects) || !ReadWholeFile(path, bytes)) std::abort();
    return bytes;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::wstring path = PutFuzzInput(data, size, "in.prefab");
    resetScene(true);
    if (!InstantiatePrefab(path, -1) || !SpawnPrefab(path, {})) std::abort();
    const auto count = static_cast<int32_t>(editorState.scene.size());
    for (int32_t i = 6; i < count; ++i) {
        const int32_t parent = editorState.scene[i].parentIndex;
        if (parent < -1 || parent >= count || (parent >= 0 && parent < 6)) std::abort();
        if (i % 16 == 6 && CollectPrefab(editorState.scene, i).empty()) std::abort();
    }

    Scene objects;
    if (!LoadPrefab(path, objects)) std::abort();
    const std::string first = WrittenBytes(path, objects);
    if (!FitsReader(first)) return 0;
    if (!LoadPrefab(path, objects) || WrittenBytes(path, objects) != first) std::abort();
    return 0;
}
