#include "platform/headless/fault_injection.h"

#include <algorithm>

FileFaults fileFaults;
FolderAnswers folderAnswers;

static size_t CutSize(size_t size) {
    switch (fileFaults.cut) {
        case Cut::Nothing: return 0;
        case Cut::OneByte: return std::min<size_t>(size, 1);
        case Cut::Half: return size / 2;
        default: return size - std::min<size_t>(size, 1);
    }
}

bool TakeFileStep() {
    ++fileFaults.steps;
    if (fileFaults.onStep) fileFaults.onStep();
    if (fileFaults.failStep == 0 || fileFaults.steps < fileFaults.failStep) return true;
    return fileFaults.steps > fileFaults.failStep && !fileFaults.failFollowing;
}

size_t TakeWrite(size_t size) {
    ++fileFaults.writes;
    if (fileFaults.writes == fileFaults.cutWrite) size = CutSize(size);
    if (fileFaults.writtenAtOnce >= 0) size = std::min(size, static_cast<size_t>(fileFaults.writtenAtOnce));
    if (fileFaults.freeBytes >= 0) {
        size = std::min(size, static_cast<size_t>(fileFaults.freeBytes));
        fileFaults.freeBytes -= static_cast<int64_t>(size);
    }
    return size;
}
