// A library that an attacker might put beside the program under a system library's name: who loads it ends.
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) TerminateProcess(GetCurrentProcess(), 66);
    return TRUE;
}
