#include "render/panel_box.h"

#include "render/frame_buffer.h"

void DrawPanelBox(const Rect& rect, Pixel fill, Pixel light) {
    const auto [left, top, right, bottom] = rect;
    FillRect(rect, fill);
    FillRect({left, top, right, top + 1}, light);
    FillRect({left, top + 1, right, top + 2}, kBoxSecondLine);
    FillRect({left, bottom - 1, right, bottom}, kBoxDarkEdge);
    FillRect({left, top, left + 1, bottom}, light);
    FillRect({right - 1, top, right, bottom}, kBoxDarkEdge);
}
