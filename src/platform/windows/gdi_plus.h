// The flat calls of the system's imaging library.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <algorithm>

namespace Gdiplus {
using std::max;  // the library's own header expects the macros of these names
using std::min;
}  // namespace Gdiplus

#include <gdiplus.h>

// One row per call that the program makes.
#define ZEL_GDI_PLUS_CALLS(CALL)    \
    CALL(GdipCreateBitmapFromFile)  \
    CALL(GdipCreateBitmapFromScan0) \
    CALL(GdipLoadImageFromFile)     \
    CALL(GdipDisposeImage)          \
    CALL(GdipGetImageWidth)         \
    CALL(GdipGetImageHeight)        \
    CALL(GdipBitmapLockBits)        \
    CALL(GdipBitmapUnlockBits)      \
    CALL(GdipCreateFromHDC)         \
    CALL(GdipSetInterpolationMode)  \
    CALL(GdipDrawImageRectI)        \
    CALL(GdipDeleteGraphics)

struct GdiPlusCalls {
#define ZEL_GDI_PLUS_FIELD(name) decltype(&Gdiplus::DllExports::name) name = nullptr;
    ZEL_GDI_PLUS_CALLS(ZEL_GDI_PLUS_FIELD)
#undef ZEL_GDI_PLUS_FIELD
};

// The calls, after starting the library when this is their first use. Null when it is missing or does not
// start; it is not tried again.
const GdiPlusCalls* GdiPlus();

// Shuts the library down if it was started. Every image must have been disposed.
void StopGdiPlus();
