// The window's button in the task bar.
#include "platform/window.h"
#include "platform/windows/main_window.h"

#include <windows.h>

#include <shobjidl.h>

constexpr ULONGLONG kWhole = 1000;  // the steps of the progress

// Made at each call, twenty times a second at most: so nobody has to give it back at the end.
void ShowTaskProgress(double share) {
    ITaskbarList3* taskBar = nullptr;
    if (!MainWindow() ||
        FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&taskBar)))) {
        return;
    }
    if (SUCCEEDED(taskBar->HrInit())) {
        if (share < 0) {
            taskBar->SetProgressState(MainWindow(), TBPF_NOPROGRESS);
        } else {
            taskBar->SetProgressValue(MainWindow(), static_cast<ULONGLONG>(share * kWhole), kWhole);
        }
    }
    taskBar->Release();
}
