// The program's eight icons.
#pragma once

#include "platform/canvas.h"

struct Icons {
    CanvasImage camera = -1;
    CanvasImage entity = -1;
    CanvasImage light = -1;
    CanvasImage files = -1;
    CanvasImage script = -1;
    CanvasImage scene = -1;
    CanvasImage model = -1;
    CanvasImage logo = -1;
};

extern Icons icons;

// Loads the icons and the icon of the window from the folder "assets" beside the executable, or else from
// the one in the working folder. An icon whose file is missing stays -1 and is not drawn.
void LoadIcons();
