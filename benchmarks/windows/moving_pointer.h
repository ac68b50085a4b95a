// A pointer that moves over a window every few milliseconds, whatever the window's thread is doing.
#pragma once

#include <atomic>
#include <string>
#include <thread>

// Moves from its making to its end, to and fro by a pixel. One move waits at a time.
class MovingPointer {
public:
    explicit MovingPointer(const std::wstring& windowTitle);
    ~MovingPointer();
    MovingPointer(const MovingPointer&) = delete;
    MovingPointer& operator=(const MovingPointer&) = delete;

    // When the move that waits was made, in seconds of MonotonicSeconds, and lets the next one come. 0 for
    // none.
    double TakeMove() { return moved.exchange(0); }

private:
    void Run(const std::wstring& windowTitle);

    std::atomic<double> moved = 0;
    std::atomic<bool> ends = false;
    std::thread thread;
};
