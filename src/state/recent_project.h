// An entry of the per-user list of projects.
#pragma once

#include <atomic>
#include <memory>
#include <string>

// What the disk says about a folder that is to be a project.
enum class ProjectAnswer {
    None,       // nothing yet
    Project,    // or it does not tell, for want of rights or by a failure
    NoProject,  // for sure
    Silent,     // its drive or server is not there, or does not answer
};

struct RecentProject {
    std::wstring name{};  // last component of the folder's path; "ZelEngineProject" when that is empty
    std::wstring path{};  // full path of the project folder
    ProjectAnswer answer = ProjectAnswer::Project;
    std::shared_ptr<std::atomic<ProjectAnswer>> question{};  // while the disk is asked aside
};
