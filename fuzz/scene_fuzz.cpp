// Any bytes load as a scene, and what was loaded is saved, loaded and saved again as the same bytes.
#include "formats/scene_file.h"
#include "fuzz_input.h"
#include "platform/files.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::wstring path = PutFuzzInput(data, size, "in.scene");
    if (!LoadScene(path) || editorState.scene.empty()) std::abort();
    std::string first, second;
    if (!SaveScene(path) || !ReadWholeFile(path, first)) std::abort();
    if (!FitsReader(first)) return 0;
    if (!LoadScene(path) || !SaveScene(path) || !ReadWholeFile(path, second)) std::abort();
    if (first != second) std::abort();
    return 0;
}
