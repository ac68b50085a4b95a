// Any bytes open as a project with a scene.
#include "formats/project_file.h"
#include "fuzz_input.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    PutFuzzInput(data, size, "project.zel");
    if (!ReadProjectFile(editorState.projectRoot) || editorState.scene.empty()) std::abort();
    if (!WriteProjectFile(editorState.projectRoot)) std::abort();
    if (!ReadProjectFile(editorState.projectRoot)) std::abort();
    return 0;
}
