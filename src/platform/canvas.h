// The surface behind the frame buffer: memory that the program writes pixels into, and that the system draws
// texts and icons into and copies to the window.
#pragma once

#include "base/color.h"
#include "base/rect.h"
#include "platform/image_decoder.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

// Makes the surface at a size (both at least 1) in place of the old one. The result is the top left pixel;
// rows follow each other without a gap. Null when there is no memory: nothing may be drawn then.
Pixel* CreateCanvas(int32_t width, int32_t height);
void DestroyCanvas();

// Draws text with its top left corner at (x, y): face "Segoe UI", cell height in pixels, weight 400 or 600,
// transparent background, ClearType.
void DrawCanvasText(int32_t x, int32_t y, const std::wstring& text, TextColor color, int32_t height,
                    int32_t weight);

// How far a text reaches to the right of its corner, pixels. 0 when it cannot be told.
int32_t MeasureCanvasText(const std::wstring& text, int32_t height, int32_t weight);

// What a text leaves on a background of one colour. The text's corner lies `margin` pixels inside.
struct TextPicture {
    int32_t width = 0, height = 0;  // pixels: the text's own cell and a margin on all four sides
    std::vector<Pixel> pixels{};
};

// Draws a text as DrawCanvasText does, beside the canvas. False, with `picture` unchanged, when it fails.
bool RasterizeText(const std::wstring& text, TextColor color, int32_t height, int32_t weight,
                   Pixel background, int32_t margin, TextPicture& picture);

// Must come between the system's drawing and the program's own access to the pixels.
void FlushCanvas();

// Copies the surface to the window: the whole, or those parts of it that have changed since the last time. A
// window that has lost what it showed gets the whole.
void PresentCanvas();
void PresentCanvas(std::span<const Rect> changed);

// An image that the system scales and blends into the canvas. Negative when there is none.
using CanvasImage = int32_t;

// Loads an image file for drawing. -1 when it cannot be loaded.
CanvasImage LoadCanvasImage(const std::wstring& path);

// Takes decoded pixels for drawing: what the image file would have given. -1 when there is no memory.
CanvasImage MakeCanvasImage(const DecodedImage& pixels);

// Scales the image into `rect` with nearest-neighbour sampling; its alpha is honoured. Nothing for -1.
void DrawCanvasImage(CanvasImage image, const Rect& rect);

// Makes the window's icon from an image file. Without it, or when it fails, the system's default is shown.
void LoadWindowIcon(const std::wstring& path);
void MakeWindowIcon(const DecodedImage& pixels);

// Releases every canvas image and the window's icon.
void ReleaseCanvasImages();
