// An entry of the per-user list of projects.
#pragma once

#include <string>

struct RecentProject {
    std::wstring name{};  // last component of the folder's path; "ZelEngineProject" when that is empty
    std::wstring path{};  // full path of the project folder
};
