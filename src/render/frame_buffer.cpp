#include "render/frame_buffer.h"

#include "base/enough_memory.h"
#include "render/damage.h"
#include "render/raster/kernels.h"
#include "render/raster/line.h"
#include "render/raster/mesh_batch.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <utility>
#include <variant>

FrameBuffer frameBuffer;

// Takes the memory for all depths at once, so that no later frame can run out of memory half way.
static bool MakeDepth() {
    FrameBuffer& fb = frameBuffer;
    fb.depth = {};  // not both at a time
    fb.owners = {};
    fb.depth.resize(static_cast<size_t>(fb.width) * static_cast<size_t>(fb.height));
    ClearDepth(fb.viewport, fb);
    return true;
}

// The pixels belong to the platform and the depths to this program, so both are replaced together. While
// this fails, `pixels` stays null and every primitive draws nothing, which keeps the program running in a
// window that is too large for the memory.
bool EnsureSize(int32_t width, int32_t height) {
    FrameBuffer& fb = frameBuffer;
    const bool isUsable = width >= 1 && height >= 1;
    if (isUsable && (width != fb.width || height != fb.height || fb.pixels == nullptr)) {
        fb.pixels = nullptr;
        fb.width = width;
        fb.height = height;
        fb.viewport = {0, 0, width, height};
        fb.systemDrew = false;
        fb.picture = {};
        if (WithEnoughMemory(MakeDepth)) fb.pixels = CreateCanvas(width, height);
    }
    return fb.pixels != nullptr;
}

void ReleaseFrameBuffer() {
    DestroyCanvas();
    frameBuffer = FrameBuffer{};
}

void Clear(Pixel color) {
    FillRect({0, 0, frameBuffer.width, frameBuffer.height}, color);
    ClearDepth({0, 0, frameBuffer.width, frameBuffer.height}, frameBuffer);
}

// Whole canvas.
static Rect Everything() { return {0, 0, frameBuffer.width, frameBuffer.height}; }

// ---- Steps, drawn as far as they lie in a rectangle of the canvas, or whole.

static void DrawStep(FillStep& step, const Rect& part) {
    const int32_t left = std::clamp(step.rect.left, part.left, part.right);
    const int32_t right = std::clamp(step.rect.right, part.left, part.right);
    const int32_t top = std::clamp(step.rect.top, part.top, part.bottom);
    const int32_t bottom = std::clamp(step.rect.bottom, part.top, part.bottom);
    if (left >= right || top >= bottom) return;

    PreparePixelAccess(frameBuffer);
    Pixel* first = frameBuffer.pixels + static_cast<ptrdiff_t>(top) * frameBuffer.width + left;
    KernelsOf(frameBuffer.simd)
        .clearBlock(first, frameBuffer.width, right - left, bottom - top, static_cast<uint32_t>(step.color));
}

static void DrawStep(RowsStep& step, const Rect& part) {
    PreparePixelAccess(frameBuffer);
    const int32_t middle = step.place.left + Width(step.place) / 2;
    int32_t y = step.place.top;
    for (const std::vector<Pixel>& row : *step.rows) {
        const auto width = static_cast<int32_t>(row.size());
        const int32_t left = middle - width / 2;
        const int32_t begin = std::clamp(left, part.left, part.right);
        const int32_t end = std::clamp(left + width, part.left, part.right);
        if (y >= part.top && y < part.bottom && begin < end) {
            std::copy_n(row.data() + (begin - left), end - begin,
                        frameBuffer.pixels + ptrdiff_t{y} * frameBuffer.width + begin);
        }
        ++y;
    }
}

// Text and images are the system's work, drawn straight into the pixels. It may finish later: the flag makes
// PreparePixelAccess wait before the program touches pixels itself, and only then.
static void DrawStep(ImageStep& step, const Rect&) {
    DrawCanvasImage(step.image, step.rect);
    frameBuffer.systemDrew = true;
}

static std::optional<Rect> DrawText(Point corner, const std::wstring& text, const TextStyle& style) {
    if (frameBuffer.cachesTexts) {
        if (const auto ink = DrawCachedText(corner, text, style, frameBuffer.texts, frameBuffer)) return ink;
    }
    DrawCanvasText(corner.x, corner.y, text, style.color, style.height, style.weight);
    frameBuffer.systemDrew = true;
    return {};
}

static void DrawStep(TextStep& step, const Rect&) {
    const std::wstring text = frameBuffer.picture.next.letters.substr(step.begin, step.length);
    if (const auto ink = DrawText(step.corner, text, step.style)) step.ink = *ink;
}

static void DrawStep(DepthStep&, const Rect&) { ClearDepth(frameBuffer.viewport, frameBuffer); }

static void DrawStep(LineStep& step, const Rect&) { DrawLine(step.from, step.to, step.color, frameBuffer); }

static void DrawStep(MeshStep& step, const Rect&) {
    DrawMeshes(std::span(frameBuffer.picture.next.meshes).subspan(step.begin, step.count), frameBuffer);
}

// What is drawn outside of a picture is part of none: the next one is drawn whole.
template <typename Step>
static void NoteOrDraw(Step step) {
    if (frameBuffer.pixels == nullptr) return;
    CachedPicture& picture = frameBuffer.picture;
    if (picture.isNoting) {
        picture.next.steps.emplace_back(std::move(step));
        return;
    }
    picture.isShown = false;
    DrawStep(step, Everything());
}

// ---- The primitives.

void FillRect(const Rect& rect, Pixel color) { NoteOrDraw(FillStep{rect, color}); }

void DrawPanelBox(const Rect& rect, Pixel fill, Pixel light) {
    const auto [left, top, right, bottom] = rect;
    FillRect(rect, fill);
    FillRect({left, top, right, top + 1}, light);
    FillRect({left, top + 1, right, top + 2}, kBoxSecondLine);
    FillRect({left, bottom - 1, right, bottom}, kBoxDarkEdge);
    FillRect({left, top, left + 1, bottom}, light);
    FillRect({right - 1, top, right, bottom}, kBoxDarkEdge);
}

void DrawText(int32_t x, int32_t y, const std::wstring& text, TextColor color, int32_t height,
              int32_t weight) {
    if (frameBuffer.pixels == nullptr) return;
    CachedPicture& picture = frameBuffer.picture;
    const TextStyle style{color, height, weight};
    if (picture.isNoting) {
        picture.next.steps.emplace_back(TextStep{{x, y}, style, picture.next.letters.size(), text.size()});
        picture.next.letters += text;
        return;
    }
    picture.isShown = false;
    DrawText({x, y}, text, style);
}

void DrawImage(CanvasImage image, const Rect& rect) {
    if (image >= 0) NoteOrDraw(ImageStep{image, rect});
}

void DrawPixelRows(Point top, const PixelRows& rows) {
    size_t widest = 0;
    for (const std::vector<Pixel>& row : rows) widest = std::max(widest, row.size());
    const auto width = static_cast<int32_t>(widest), height = static_cast<int32_t>(rows.size());
    const int32_t left = top.x - width / 2;
    NoteOrDraw(RowsStep{{left, top.y, left + width, top.y + height}, &rows});
}

void ClearViewportDepth() { NoteOrDraw(DepthStep{}); }

void DrawLine(Point from, Point to, Pixel color) { NoteOrDraw(LineStep{from, to, color}); }

void CollectMesh(const MeshInstance& instance) { frameBuffer.picture.next.meshes.push_back(instance); }

void DrawCollectedMeshes() {
    CachedPicture& picture = frameBuffer.picture;
    const size_t begin = picture.drawnMeshes, end = picture.next.meshes.size();
    if (begin == end) return;
    NoteOrDraw(MeshStep{begin, end - begin});
    picture.drawnMeshes = end;
    if (picture.isNoting) return;
    picture.next.meshes.clear();
    picture.drawnMeshes = 0;
}

void NoteLibrary(LibraryMarks library) { frameBuffer.picture.next.library = std::move(library); }

// ---- Pictures.

static void Empty(DrawingList& list) {
    list.steps.clear();
    list.letters.clear();
    list.meshes.clear();
    list.library = {};
}

void BeginPicture() {
    CachedPicture& picture = frameBuffer.picture;
    Empty(picture.next);
    picture.drawnMeshes = 0;
    picture.isNoting = frameBuffer.cachesPicture;
}

// Draws the steps that touch a part of the canvas, each as far as it lies there.
static void DrawPart(DrawingList& list, const Rect& part) {
    for (DrawingStep& step : list.steps) {
        const Rect bounds = BoundsOf(step, list, part);
        if (Width(bounds) <= 0 || Height(bounds) <= 0) continue;
        std::visit([&part](auto& drawn) { DrawStep(drawn, part); }, step);
    }
}

// The steps of the new picture are compared with those of the one that the canvas shows, and what differs is
// drawn, from back to front, into the rectangles that it touches. Nothing is kept beside the canvas but the
// two lists: where nothing differs, its pixels are the picture. A canvas that holds anything else, because it
// is new or because something was drawn outside of a picture, is drawn whole.
void ShowPicture() {
    CachedPicture& picture = frameBuffer.picture;
    if (!std::exchange(picture.isNoting, false)) return Present();
    picture.next.viewport = frameBuffer.viewport;
    std::vector<Rect> damage{Everything()};
    if (std::exchange(picture.isShown, false)) {
        damage = DamageBetween(picture.shown, picture.next, Everything());
    } else {
        FindInks(picture.next, Everything());
    }
    for (const Rect& part : damage) DrawPart(picture.next, part);
    std::swap(picture.shown, picture.next);
    picture.isShown = true;
    PresentCanvas(damage);
}

void Present() {
    if (frameBuffer.pixels == nullptr) return;
    PresentCanvas();
}
