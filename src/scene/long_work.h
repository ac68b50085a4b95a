// Work that may take long: the window shows how far it is, and goes on answering the system.
#pragma once

#include <cstdint>

// Lives as long as the work, and is told now and then how far that is. Nothing is shown for the first 0.3 s.
// Then a bar with the count is drawn over the picture that is there, and the task bar shows the same. The
// state may be half changed meanwhile, so nothing of the program is called: pictures are shown again, and
// input is dropped. Work within work shows its own bar.
class LongWork {
public:
    enum class Esc { Nothing, Cancels };

    // Both texts are literals.
    LongWork(const wchar_t* whatIsDone, const wchar_t* whatIsCounted, Esc esc = Esc::Nothing);
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

    // To be called at least every tenth of a second; calls in between cost little. `total` 0 shows no count.
    // False when the user has cancelled the work: it is to be taken back.
    bool Continue(int64_t done, int64_t total);

    // The same without news.
    bool Continue() { return Continue(lastDone, lastTotal); }

    bool IsCancelled() const { return isCancelled; }

private:
    const wchar_t* label;
    const wchar_t* unit;
    bool mayCancel;
    bool isShown = false;
    bool isCancelled = false;
    double nextTurn;  // seconds; the bar is not drawn before
    int64_t lastDone = 0, lastTotal = 0;
};

// What work counts that goes through bytes: whole megabytes, rounded up.
constexpr int64_t Megabytes(int64_t bytes) { return (bytes + 999'999) / 1'000'000; }
