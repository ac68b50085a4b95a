// Any bytes are read as a list of at most twelve projects, and the list that was saved reads as the same.
#include "formats/recent_projects.h"
#include "fuzz_input.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    PutFuzzInput(nullptr, 0, "a/project.zel");
    PutFuzzInput(data, size, "ZelEngine/recent-projects.txt");
    LoadRecentProjects();
    const size_t count = editorState.recentProjects.size();
    if (count > kMaxRecentProjects) std::abort();
    LoadRecentProjects();
    if (editorState.recentProjects.size() != count) std::abort();
    return 0;
}
