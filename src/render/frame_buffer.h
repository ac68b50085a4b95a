// Every pixel that the program shows, and the primitives that write them. Nothing is blended: a primitive
// writes whole pixels.
//
// Between BeginPicture and ShowPicture a primitive only notes what it would draw. What the picture before did
// not show already is drawn then.
#pragma once

#include "platform/canvas.h"
#include "render/drawing_list.h"
#include "render/raster/surface.h"
#include "render/text_runs.h"
#include "state/cached_worlds.h"

#include <cstddef>
#include <cstdint>
#include <string>

// The picture on the canvas as a list of its steps, and the one that follows it.
struct CachedPicture {
    bool isNoting = false;  // primitives note their steps in `next`
    bool isShown = false;   // the canvas holds what `shown` draws, and nothing else
    DrawingList shown{}, next{};
    size_t drawnMeshes = 0;  // of next.meshes; the others are collected only
};

struct FrameBuffer : Surface {
    bool isInUse = false;        // a picture is being drawn
    bool cachesTexts = false;    // texts are drawn out of cached pixels where that changes nothing
    bool cachesPicture = false;  // a picture is drawn where it differs from the one before, else whole
    CachedPicture picture{};
    TextRunCache texts{};
    CachedWorlds worlds{};  // of the scene that was drawn or picked from last
};

extern FrameBuffer frameBuffer;

// Makes the buffer `width` x `height`, with every depth far, unless it has that size. A side below 1 leaves
// the old buffer: a minimised window keeps its picture. False when there is nothing to draw into, also when
// memory runs out; the next call tries again.
bool EnsureSize(int32_t width, int32_t height);

// Gives the memory back. The frame buffer is then as it was before it first had a size.
void ReleaseFrameBuffer();

// Fills everything and makes every depth far.
void Clear(Pixel color);

// Fills the part of a rectangle that lies inside the buffer. An empty rectangle fills nothing.
void FillRect(const Rect& rect, Pixel color);

// The two bevel colours that every panel box has.
constexpr Pixel kBoxSecondLine{0x443B36};
constexpr Pixel kBoxDarkEdge{0x14100D};

// The bevelled box that panels, menus and viewport labels share: `fill`, with `light` along the top and left
// edges.
void DrawPanelBox(const Rect& rect, Pixel fill, Pixel light);

// Text with its top left corner at (x, y). `height` is the cell height in pixels, `weight` 400 or 600.
void DrawText(int32_t x, int32_t y, const std::wstring& text, TextColor color, int32_t height,
              int32_t weight);

// An image scaled into the rectangle; its alpha is honoured. Nothing for a missing image.
void DrawImage(CanvasImage image, const Rect& rect);

// Rows of pixels, the first one at `top`, each around that column. `rows` never change again.
void DrawPixelRows(Point top, const PixelRows& rows);

// The three below stay within `frameBuffer.viewport`, which one picture sets once.

// Makes every depth of the viewport far, before the first mesh.
void ClearViewportDepth();

// A line from end to end, both included.
void DrawLine(Point from, Point to, Pixel color);

// Meshes are collected, and drawn as DrawMeshes does: all that came since the last time. A mesh that is
// selected is collected alone. Mesh and texture stay where they are until the picture is shown.
void CollectMesh(const MeshInstance& instance);
void DrawCollectedMeshes();

// Says what meshes and textures those of this picture are among.
void NoteLibrary(LibraryMarks library);

// Around the drawing of a picture. ShowPicture copies to the window what has changed.
void BeginPicture();
void ShowPicture();

// Copies the buffer to the window.
void Present();
