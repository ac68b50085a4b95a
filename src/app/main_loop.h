// The program from its start to its end.
#pragma once

// Starts, runs frames until the program is asked to end, and cleans up. The result is the exit code: 1 when
// the window could not be opened, and when memory did not suffice for something that no command could report.
// The program then says so and ends without saving: what a command has left half done must not reach a file.
int RunProgram();

// The time that a frame simulates for a measured time, both in seconds: at most 0.05, so that a stall does
// not throw things through walls.
float FrameTime(double measured);
