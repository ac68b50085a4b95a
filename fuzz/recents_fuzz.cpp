// Any bytes are read as a list of at most twelve projects, and the list that was saved reads as the same.
#include "formats/recent_projects.h"
#include "fuzz_input.h"

#include <cstdlib>

static std::vector<std::wstring> Paths() {
    std::vector<std::wstring> paths;
    for (const RecentProject& project : editorState.recentProjects) paths.push_back(project.path);
    return paths;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    PutFuzzInput(nullptr, 0, "a/project.zel");
    PutFuzzInput(data, size, "ZelEngine/recent-projects.txt");
    LoadRecentProjects();
    const std::vector<std::wstring> first = Paths();
    if (first.size() > kMaxRecentProjects) std::abort();
    LoadRecentProjects();
    if (Paths() != first) std::abort();
    return 0;
}
