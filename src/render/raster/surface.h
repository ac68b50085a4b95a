// The memory that is drawn into: pixels and their depths.
//
// The depths are kept in tiles, for two reasons: tiles that nothing is drawn to are never cleared, and
// what lies behind all that a tile shows is never drawn.
#pragma once

#include "base/color.h"
#include "base/rect.h"
#include "render/raster/mesh_to_draw.h"
#include "render/raster/simd_level.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

// A number for each pixel. Those of a new list are what lies in memory: rows that nobody draws to, as those
// beside the viewport, are never written, and so the system gives them no memory.
template <typename Value>
struct UnwrittenMemory : std::allocator<Value> {
    template <typename Other>
    struct rebind {
        using other = UnwrittenMemory<Other>;
    };
    template <typename Other>
    void construct(Other* place) noexcept {
        ::new (static_cast<void*>(place)) Other;
    }
};
template <typename Value>
using PixelValues = std::vector<Value, UnwrittenMemory<Value>>;

// Likewise, but those of a new list are zero: the system gives zeroed memory where it is first touched.
template <typename Value>
struct ZeroedMemory : std::allocator<Value> {
    template <typename Other>
    struct rebind {
        using other = ZeroedMemory<Other>;
    };
    Value* allocate(size_t count) {
        void* memory = std::calloc(count, sizeof(Value));
        if (memory == nullptr) throw std::bad_alloc();
        return static_cast<Value*>(memory);
    }
    void deallocate(Value* memory, size_t) noexcept { std::free(memory); }
    template <typename Other>
    void construct(Other*) noexcept {}
};

// The depth of a pixel that nothing was drawn to.
constexpr float kFarDepth = 1.0f;

// Tiles begin at the top left corner of their area; those at its right and bottom may be cut.
constexpr int32_t kTileWidth = 16, kTileHeight = 8;  // pixels

struct DepthTiles {
    Rect area{};  // of the surface
    int32_t columns = 0, rows = 0;
    std::vector<float> farthest{};     // by tile, row by row: no pixel's depth is greater
    std::vector<uint8_t> isChanged{};  // 1 if `farthest` may be greater than any pixel's depth
    std::vector<uint8_t> isStale{};    // 1 if the depths are those of an earlier frame: all count as far
    size_t staleCount = 0;
};

// The object whose depth each pixel holds, for as long as objects are drawn in another order than the
// scene's. No number is given twice: when they run out, the list begins anew with zeros. So what a batch or a
// frame has left behind is smaller than every number that follows, and need not be cleared.
struct PixelOwners {
    bool areKept = false;
    int32_t first = 1;    // the number of the scene's first object; the others follow in its order
    int32_t next = 1;     // the first number that was not given yet
    int32_t current = 0;  // of the object at hand
    std::vector<int32_t, ZeroedMemory<int32_t>> numbers{};  // width x height; 0 where nobody ever drew
};

struct Surface {
    Pixel* pixels = nullptr;        // width x height, row 0 at the top; null: nothing may be drawn
    int32_t width = 0, height = 0;  // pixels
    PixelValues<float> depth{};     // width x height; 1 is far, nothing drawn yet: see PrepareDepth
    DepthTiles depthTiles{};
    PixelOwners owners{};
    Rect viewport{};                   // what lines and 3D drawing are confined to; inside the surface
    SimdLevel simd = BestSimdLevel();  // how triangles are filled
    bool systemDrew = false;           // the system drew last: see PreparePixelAccess
    MeshScratch scratch{};
};

// Call it before pixels are read or written directly: it waits until what the system drew is in them.
void PreparePixelAccess(Surface& surface);

// Makes every depth of the area far. Depths outside the area are not used until the next call.
void ClearDepth(const Rect& area, Surface& surface);

// Call it before depths are read or written inside a rectangle: it writes what ClearDepth has only marked.
void PrepareDepth(const Rect& rect, Surface& surface);

// Gives pixels owners until ForgetOwners, and numbers to so many objects. What was drawn before wins every
// tie.
void KeepOwners(size_t objects, Surface& surface);
void ForgetOwners(Surface& surface);

// Call it after depths were written inside a rectangle.
void DepthChanged(const Rect& rect, Surface& surface);

// A depth that no pixel of the rectangle exceeds. It is the farthest one of all tiles that the rectangle
// touches.
float FarthestDepth(const Rect& rect, Surface& surface);
