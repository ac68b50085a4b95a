#include "platform/canvas.h"
#include "platform/window.h"
#include "platform/windows/gdi_plus.h"

#include <windows.h>

#include <ole2.h>

void StartPlatform() {
    // First of all: whatever is loaded from here on comes from the system folder.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    // A recent project on a drive without a disk is missing; it does not raise a message box.
    SetErrorMode(SEM_FAILCRITICALERRORS);
    OleInitialize(nullptr);
}

void StopPlatform() {
    DestroyCanvas();
    ReleaseCanvasImages();
    StopGdiPlus();
    OleUninitialize();
}
