#include "platform/aside.h"

#include <windows.h>

#include <process.h>

#include <memory>
#include <utility>

using Work = std::function<void()>;

static unsigned __stdcall Run(void* work) {
    const std::unique_ptr<Work> owned(static_cast<Work*>(work));
    (*owned)();
    return 0;
}

// Nobody waits for the thread, and the end of the program ends it: so work aside must leave the disk whole at
// every moment.
bool RunAside(std::function<void()> work) {
    auto owned = std::make_unique<Work>(std::move(work));
    const uintptr_t thread = _beginthreadex(nullptr, 0, Run, owned.get(), 0, nullptr);
    if (thread == 0) return false;
    owned.release();  // the thread's from here on
    CloseHandle(reinterpret_cast<HANDLE>(thread));
    return true;
}
