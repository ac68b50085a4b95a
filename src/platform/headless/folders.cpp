#include "platform/folders.h"

#include "platform/headless/fault_injection.h"
#include "platform/headless/native_path.h"

std::wstring GetExecutablePath() { return folderAnswers.executablePath; }

std::wstring LocalDataFolder() { return folderAnswers.localDataFolder; }

std::wstring WorkingFolder() {
    if (!folderAnswers.workingFolder.empty()) return folderAnswers.workingFolder;
    std::error_code error;
    return ProgramPath(std::filesystem::current_path(error));
}
