// Work beside the window's thread, for what may take long or never end.
#pragma once

#include <functional>

// Runs `work` on a thread of its own, to its end or to that of the program. It must not throw, and touches
// neither the state nor anything else of the window's thread. False when the system gives no thread; then it
// is not run.
bool RunAside(std::function<void()> work);
