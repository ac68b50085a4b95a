// What a test makes go wrong with files, and where it says that the program stands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// How much of a write that is cut short still reaches the disk.
enum class Cut { Nothing, OneByte, Half, AllButOne };

// Every step that can fail on a real disk is counted: asking for a file's kind, opening, reading, writing,
// flushing, renaming, removing, making and listing. Undoing what a failed call has begun is not counted and
// does not fail.
struct FileFaults {
    int32_t failStep = 0;        // the step that fails, counted from 1; 0 none
    bool failFollowing = false;  // and every step after it
    int64_t freeBytes = -1;      // how much may still be written to the disk; -1 without limit
    int64_t writtenAtOnce = -1;  // a write of more ends early without an error; -1 without limit
    int32_t cutWrite = 0;        // the write that is cut short without an error, counted from 1; 0 none
    Cut cut = Cut::Nothing;      // what of it is written
    int32_t steps = 0;           // taken so far
    int32_t writes = 0;          // begun so far
    void (*onStep)() = nullptr;  // looks at the disk before each step
    std::wstring lateDrive{};    // what lies at or below it may answer late; so does every server
    int32_t lateQuestions = 0;   // asked about such paths so far
};
extern FileFaults fileFaults;

// What folders.h answers. Relative paths start from `workingFolder`, from the process's own where it is
// empty.
struct FolderAnswers {
    std::wstring executablePath{};
    std::wstring localDataFolder{};
    std::wstring workingFolder{};
};
extern FolderAnswers folderAnswers;

// Counts a step. False when it shall fail.
bool TakeFileStep();

// Counts a write of `size` bytes. How many of them reach the disk.
size_t TakeWrite(size_t size);
