#include "platform/headless/fault_injection.h"

FileFaults fileFaults;
FolderAnswers folderAnswers;

bool TakeFileStep() {
    ++fileFaults.steps;
    if (fileFaults.onStep) fileFaults.onStep();
    if (fileFaults.failStep == 0 || fileFaults.steps < fileFaults.failStep) return true;
    return fileFaults.steps > fileFaults.failStep && !fileFaults.failFollowing;
}
