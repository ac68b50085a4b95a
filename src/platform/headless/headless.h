// What a test sees of the program, and what it lets the program see. The headless answers keep pixels in
// memory, texts and images in lists, and take dialogs and input from queues.
#pragma once

#include "base/color.h"
#include "base/rect.h"
#include "platform/dialogs.h"
#include "platform/image_decoder.h"
#include "platform/window.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

struct DrawnText {
    int32_t x = 0, y = 0;
    std::wstring text{};
    TextColor color{};
    int32_t height = 0, weight = 0;

    friend bool operator==(const DrawnText&, const DrawnText&) = default;
};

struct DrawnImage {
    std::wstring path{};
    Rect rect{};

    friend bool operator==(const DrawnImage&, const DrawnImage&) = default;
};

struct HeadlessPlatform {
    // The window.
    bool windowOpens = true;  // false: opening it fails
    bool windowIsOpen = false;
    std::wstring title{};
    ClientSize clientSize{};  // the test may change it between frames
    bool quitRequested = false;
    bool mouseIsCaptured = false;
    bool textInputIsAllowed = true;
    bool controlIsHeld = false, shiftIsHeld = false, altIsHeld = false;
    std::deque<std::vector<InputEvent>> input{};  // one batch per frame; the program ends after the last one
    int32_t presents = 0;                         // finished frames
    void (*onPresent)() = nullptr;                // what the system does while a frame is shown
    int32_t starts = 0, stops = 0;                // of the platform

    // The canvas.
    bool canvasFails = false;  // true: there is no memory for a canvas
    int32_t canvasesMade = 0;
    ClientSize canvasSize{};
    std::vector<Pixel> pixels{};
    bool hasWindowPixels = false;       // true: what is shown is copied, as a window does
    std::vector<Pixel> windowPixels{};  // what the window shows then
    bool paintsTexts = false;           // true: texts leave marks in the pixels
    std::vector<DrawnText> texts{};     // since the test last emptied it
    std::vector<DrawnImage> images{};   // likewise
    int32_t flushes = 0;
    std::wstring windowIcon{};               // path it was made from
    std::vector<DecodedImage> madeImages{};  // pixels that became images; drawn as "made 1", "made 2" ...
    std::vector<uint32_t> madeWindowIcon{};  // 0xAARRGGBB that became the window's icon

    // The clock: as the machine's until a test sets a time.
    std::deque<double> clock{};  // seconds; each question takes the first one
    double workTime = 0;         // seconds, as WorkSeconds() tells them
    double workTimeStep = 0;     // that pass until the next question
    uint64_t slept = 0;          // milliseconds that the program asked for; none passed

    // Work that the frame loop waits for.
    std::deque<std::vector<InputEvent>> workInput{};  // what arrives during it: one batch per DropInput
    bool workTookInput = false;                       // the next PumpMessages reports the lost focus
    std::vector<double> taskProgress{};               // as shown by the task bar

    // Work beside the window's thread: the test runs it.
    std::deque<std::function<void()>> aside{};
    bool hasNoThread = false;  // for any more of it

    // Dialogs, answered in order. Without an answer left they are cancelled.
    std::deque<std::wstring> folderAnswers{};
    std::deque<Answer> questionAnswers{};
    std::vector<std::wstring> prompts{};   // what was asked
    std::vector<std::wstring> captions{};  // of the questions and errors
    void (*onDialog)() = nullptr;          // what happens while one is open
    std::vector<std::wstring> recycled{};  // folders moved to the bin
    bool recycleWorks = true;
    std::vector<std::wstring> opened{};  // files opened with the system
    bool openWorks = true;
};

extern HeadlessPlatform headless;
