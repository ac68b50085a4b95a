// The colours of a face's pixels, and the light of many faces at once.
//
// An ink is made for every face, but most faces have no visible pixel, so it starts empty. When the first
// pixel has passed the depth test, the ink finds the face's colour, or its texture coordinates and light,
// and keeps them in registers for the pixels that follow. Finding includes the exact test of whether the
// face turns its back to the eye, so a face may still turn out not to be drawn. The ink of a textured face
// takes the weights of the pixels, looks up the texels, tints and lights them, with the operations of
// face_ink.h in their order.
#pragma once

#include "render/raster/face_ink.h"
#include "render/raster/kernels.h"
#include "render/raster/lanes.h"

namespace {

// How much each corner counts at a pixel: its edge functions divided by the triangle's area.
struct Weights {
    Floats w0, w1, w2;
};

// The weighted sum of a value of the corners, summed from the left.
ZEL_INLINE Floats Weighted(const Weights& w, const Floats (&values)[3]) {
    return w.w0 * values[0] + w.w1 * values[1] + w.w2 * values[2];
}

// Calls code that was compiled for other vectors. Kept out of line, because it is rare beside the pixels
// that follow.
ZEL_APART bool FindInk(const MeshToDraw& mesh, size_t face, FaceInk& ink) {
    LeaveVectors();
    return mesh.findInk(mesh, face, ink);
}

struct FlatInk {
    const MeshToDraw& mesh;
    size_t face;
    bool isFound;
    Ints color;

    // False when the face is not to be drawn.
    ZEL_INLINE bool ColorsOf(const Weights&, Mask&, Ints& colors) {
        if (!isFound) {
            FaceInk ink{};
            if (!FindInk(mesh, face, ink)) return false;
            color = Splat(static_cast<int32_t>(ink.color));
            isFound = true;
        }
        colors = color;
        return true;
    }
};

// In 0 .. 1. A fraction is never above 1, but may not be a number.
ZEL_INLINE Floats Wrapped(Floats coordinate, bool repeat) {
    if (repeat) return Most(coordinate - Floor(coordinate), Splat(0.0f));
    return Limited(coordinate, 0, 1);
}

// A channel is lit where it stands: scaling by a power of two rounds nothing, and what truncating leaves
// below the channel is masked out.
template <int shift>
ZEL_INLINE Ints LitChannel(Ints colors, Floats brightness) {
    constexpr int32_t kChannel = 0xFF << shift;
    const Floats lit = Converted(colors & Splat(kChannel)) * brightness;
    const Ints channel = Truncated(Least(lit, Splat(static_cast<float>(kChannel))));
    return shift == 0 ? channel : channel & Splat(kChannel);
}

ZEL_INLINE Ints LitColors(Ints colors, Floats brightness) {
    return LitChannel<16>(colors, brightness) | LitChannel<8>(colors, brightness) |
           LitChannel<0>(colors, brightness);
}

// Lighting a channel by a whole factor, one multiplication and a shift, gives the same bytes as by a float
// for all but a few hundred values of brightness. Finds the factor, or 0 if there is none: it is tried with
// all 256 bytes.
ZEL_APART uint32_t ByteFactorOf(float brightness) {
    if (!(brightness < 1)) return 0;
    const auto below = static_cast<int32_t>(brightness * 65536.0f);
    Ints offBelow = Splat(0), offAbove = Splat(0);
    for (int32_t first = 0; first < 256; first += kLanes) {
        const Ints bytes = Splat(first) + LaneNumbers();
        const Ints lit = Truncated(Converted(bytes) * Splat(brightness)), product = bytes * Splat(below);
        offBelow = offBelow | (lit ^ ShiftedRight<16>(product));
        offAbove = offAbove | (lit ^ ShiftedRight<16>(product + bytes));
    }
    const Ints none = Splat(0);
    if (!IsAny(none < offBelow)) return static_cast<uint32_t>(below);
    return IsAny(none < offAbove) || below == 65535 ? 0 : static_cast<uint32_t>(below) + 1;
}

// The highest byte is not masked out: lighting ignores it.
ZEL_INLINE Ints TintedColors(Ints colors, uint32_t tint) {
    if (tint == 0) return colors;
    return AverageOfBytes(colors, Splat(static_cast<int32_t>(tint)));
}

// The texels at (u, v), v upwards; white without texels. Repeating takes the fractional parts, else both are
// limited to 0 .. 1. Reads nothing for lanes that are not seen.
ZEL_INLINE Ints SampleTexels(const TextureSource& texture, Floats u, Floats v, Mask seen) {
    if (texture.texels == nullptr) return Splat(0xFFFFFF);
    const Floats lastColumn = Number(texture.width - 1), lastRow = Number(texture.height - 1);
    Ints column = Truncated(Wrapped(u, texture.repeat) * lastColumn);
    Ints row = Truncated((Splat(1.0f) - Wrapped(v, texture.repeat)) * lastRow);
    if (texture.isVast) {
        column = Least(column, Splat(texture.width - 1));
        row = Least(row, Splat(texture.height - 1));
    }
    return Gather(texture.texels, row * Splat(texture.width) + column, seen);
}

// True when a mean of three numbers like this one is certainly more than kSmallestQ, if their weights add up
// to a half or more, and when no product of it overflows.
ZEL_INLINE bool IsFarFromZero(float inverseW) { return inverseW > 4 * kSmallestQ && inverseW < 1e6f; }

// Pixels of a box from which on looking for a factor pays.
constexpr int32_t kLargeFace = 1024;

// Perspective: 1 / w, u / w and v / w are linear on the screen, u and v are not. So the weights are
// multiplied by each corner's 1 / w first and divided by their sum afterwards.
struct TextureInk {
    const MeshToDraw& mesh;
    size_t face;
    bool isFound;
    Floats inverseW[3], u[3], v[3], brightness;
    bool mayVanish;  // 1 / w may be too near to zero to divide by
    bool hasFactor;
    ByteFactor factor;  // in place of the brightness

    ZEL_INLINE bool Find() {
        FaceInk ink{};
        if (!FindInk(mesh, face, ink)) return false;
        const auto* indices = reinterpret_cast<const int32_t*>(mesh.triangles + mesh.faces[face].triangle);
        mayVanish = !mesh.faces[face].isOrdinary;
        for (int i = 0; i < 3; ++i) {
            const float ofCorner = mesh.corners[indices[i]].inverseW;
            mayVanish = mayVanish || !IsFarFromZero(ofCorner);
            inverseW[i] = Splat(ofCorner);
            u[i] = Splat(ink.points[i].u);
            v[i] = Splat(ink.points[i].v);
        }
        // Written so that a value that is not a number becomes the darkest.
        float limited = ink.brightness > kDarkest ? ink.brightness : kDarkest;
        limited = limited < kBrightest ? limited : kBrightest;
        brightness = Splat(limited);
        const Rect& box = mesh.faces[face].box;
        const bool isLarge = (box.right - box.left) * (box.bottom - box.top) >= kLargeFace;
        const uint32_t found = isLarge ? ByteFactorOf(limited) : 0;
        hasFactor = found != 0;
        factor = PrepareByteFactor(found);
        isFound = true;
        return true;
    }

    // Takes lanes out of `seen` in which there is no texel. False when the face is not to be drawn.
    ZEL_INLINE bool ColorsOf(const Weights& w, Mask& seen, Ints& colors) {
        if (!isFound && !Find()) return false;
        const Weights q{w.w0 * inverseW[0], w.w1 * inverseW[1], w.w2 * inverseW[2]};
        const Floats sum = q.w0 + q.w1 + q.w2;
        if (mayVanish) seen = seen & (Magnitude(sum) > Splat(kSmallestQ));
        const Floats atU = Weighted(q, u) / sum, atV = Weighted(q, v) / sum;
        const Ints texels = SampleTexels(mesh.texture, atU, atV, seen);
        const Ints tinted = TintedColors(texels, mesh.texture.tint);
        colors = hasFactor ? ScaledBytes(tinted, factor) : LitColors(tinted, brightness);
        return true;
    }
};

// ---- Lighting many flat faces before any is filled, one face in each lane. In go the faces that the scan
// has left. Out come three cosines for each: with the eye, which decides exactly whether the face is
// drawn, with the light, and with the direction half way between them. The operations are those of
// LightOfFace, which lights one face alone, so it does not matter which of the two a face went through.
// The power of the highlight is left to FindFlatInk: only faces that show a pixel pay for it.

// The triangle indices of a vector of faces.
struct FaceGroup {
    uint32_t triangles[kLanes];
};

ZEL_INLINE Points LoadPositions(const MeshToDraw& mesh, const FaceGroup& group, int corner) {
    Points loaded;
    Floats color;
    const auto* indices = reinterpret_cast<const int32_t*>(mesh.triangles);
    const auto positionOf = [&](int lane) {
        const size_t at = 3 * static_cast<size_t>(group.triangles[lane]) + static_cast<size_t>(corner);
        return &mesh.vertices[indices[at]].position.x;
    };
    LoadRecords(positionOf, loaded.x, loaded.y, loaded.z, color);
    return loaded;
}

// The last face of the list fills up the last vector.
void LightAll(const MeshToDraw& mesh, FaceLight* out) {
    const MeshDraw& draw = *mesh.draw;
    const Points light = Splat(draw.light), eye = Splat(draw.eye);
    for (size_t i = 0; i < mesh.faceCount; i += kLanes) {
        FaceGroup group;
        for (size_t lane = 0; lane < static_cast<size_t>(kLanes); ++lane) {
            const size_t face = i + lane < mesh.faceCount ? i + lane : mesh.faceCount - 1;
            group.triangles[lane] = mesh.faces[face].triangle;
        }
        const Points a = Transformed(draw.world, LoadPositions(mesh, group, 0));
        const Points b = Transformed(draw.world, LoadPositions(mesh, group, 1));
        const Points c = Transformed(draw.world, LoadPositions(mesh, group, 2));
        const Points normal = Normalise(Cross(b - a, c - a)), toEye = Normalise(eye - a);
        float cosines[3][kLanes];
        Store(cosines[0], Dot(toEye, normal));
        Store(cosines[1], Dot(normal, light));
        Store(cosines[2], Dot(normal, Normalise(light + toEye)));
        for (size_t lane = 0; lane < static_cast<size_t>(kLanes); ++lane)
            out[i + lane] = {cosines[0][lane], cosines[1][lane], cosines[2][lane]};
    }
    LeaveVectors();
}

}  // namespace
