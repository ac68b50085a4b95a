// The memory behind the canvas, for the system's own drawing.
#pragma once

#include <windows.h>

// The one memory device context, with the canvas selected into it. Null while there is no canvas.
HDC CanvasDevice();
