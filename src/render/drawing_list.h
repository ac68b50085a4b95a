// What a picture is drawn from, in the order of drawing: by it two pictures are compared.
#pragma once

#include "base/color.h"
#include "base/rect.h"
#include "platform/canvas.h"
#include "render/raster/mesh_to_draw.h"
#include "state/mesh.h"
#include "state/texture_image.h"

#include <cstddef>
#include <memory>
#include <string>
#include <variant>
#include <vector>

struct TextStyle {
    TextColor color{};
    int32_t height = 0, weight = 0;  // cell height in pixels; 400 or 600

    friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

// Rows of pixels below one another, each around the same column.
using PixelRows = std::vector<std::vector<Pixel>>;

// The steps: one record for each primitive of the frame buffer.

struct FillStep {
    Rect rect{};
    Pixel color{};

    friend bool operator==(const FillStep&, const FillStep&) = default;
};

struct RowsStep {
    Rect place{};                     // around all rows
    const PixelRows* rows = nullptr;  // which never change

    friend bool operator==(const RowsStep&, const RowsStep&) = default;
};

struct ImageStep {
    CanvasImage image = -1;
    Rect rect{};

    friend bool operator==(const ImageStep&, const ImageStep&) = default;
};

struct TextStep {
    Point corner{};
    TextStyle style{};
    size_t begin = 0, length = 0;  // in the list's letters
    Rect ink{};                    // around all that it leaves in the picture, or more
};

// Makes the depths of the viewport far.
struct DepthStep {};

struct LineStep {
    Point from{}, to{};
    Pixel color{};

    friend bool operator==(const LineStep&, const LineStep&) = default;
};

struct MeshStep {
    size_t begin = 0, count = 0;  // in the list's meshes
};

using DrawingStep = std::variant<FillStep, RowsStep, ImageStep, TextStep, DepthStep, LineStep, MeshStep>;

// Which meshes and textures the steps refer to. Two lists with equal marks, none of them null, mean the same
// geometry and the same texels by the same pointers: the marks are held, so no address can be used again.
struct LibraryMarks {
    const void* meshes = nullptr;    // where they lie in memory
    const void* textures = nullptr;  // likewise
    std::vector<std::shared_ptr<const MeshMark>> meshMarks{};
    std::vector<std::shared_ptr<const TextureMark>> textureMarks{};

    friend bool operator==(const LibraryMarks&, const LibraryMarks&) = default;
};

struct DrawingList {
    Rect viewport{};  // of lines, depths and meshes
    std::vector<DrawingStep> steps{};
    std::wstring letters{};              // of all texts
    std::vector<MeshInstance> meshes{};  // of all mesh steps, which lie one behind the other
    LibraryMarks library{};
};
