// Any bytes are read as at least one node with an id, and what was saved reads and is written as the same.
#include "blueprint/blueprint_file.h"
#include "fuzz_input.h"
#include "platform/files.h"

#include <cstdlib>

// The bytes of the nodes shown, once saved.
static std::string Saved(const std::wstring& path) {
    std::string bytes;
    if (!SaveBlueprint(path) || !ReadWholeFile(path, bytes)) std::abort();
    return bytes;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::wstring path = PutFuzzInput(data, size, "a.blueprint");
    LoadBlueprint(path);
    const size_t count = editorState.blueprintNodes.size();
    if (count == 0) std::abort();
    for (const BlueprintNode& node : editorState.blueprintNodes) {
        if (node.id < 1 || node.title.empty()) std::abort();
    }
    const std::string first = Saved(path);
    LoadBlueprint(path);
    if (editorState.blueprintNodes.size() != count || Saved(path) != first) std::abort();
    return 0;
}
