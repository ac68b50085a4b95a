#include "platform/aside.h"

#include "platform/headless/headless.h"

#include <utility>

// The test says when it runs, so that no test depends on which thread is faster.
bool RunAside(std::function<void()> work) {
    if (headless.hasNoThread) return false;
    headless.aside.push_back(std::move(work));
    return true;
}
