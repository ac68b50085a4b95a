#include "platform/image_decoder.h"

#include "platform/windows/gdi_plus.h"

#include <cstring>

// The pixels of a locked bitmap, its rows closed up.
static std::vector<uint32_t> CopyRows(const Gdiplus::BitmapData& locked) {
    std::vector<uint32_t> argb(size_t{locked.Width} * locked.Height);
    const auto* firstRow = static_cast<const uint8_t*>(locked.Scan0);
    for (UINT y = 0; y < locked.Height; ++y) {
        const uint8_t* row = firstRow + static_cast<ptrdiff_t>(y) * locked.Stride;
        std::memcpy(&argb[size_t{y} * locked.Width], row, size_t{locked.Width} * sizeof(uint32_t));
    }
    return argb;
}

static bool ReadPixels(const GdiPlusCalls& gdiPlus, Gdiplus::GpBitmap* bitmap, DecodedImage& image) {
    UINT width = 0, height = 0;
    if (gdiPlus.GdipGetImageWidth(bitmap, &width) != Gdiplus::Ok) return false;
    if (gdiPlus.GdipGetImageHeight(bitmap, &height) != Gdiplus::Ok) return false;
    if (width < 1 || height < 1 || uint64_t{width} * height > uint64_t{kMaxImagePixels}) return false;

    const Gdiplus::Rect whole(0, 0, static_cast<INT>(width), static_cast<INT>(height));
    Gdiplus::BitmapData locked{};
    if (gdiPlus.GdipBitmapLockBits(bitmap, &whole, Gdiplus::ImageLockModeRead, PixelFormat32bppARGB,
                                   &locked) != Gdiplus::Ok) {
        return false;
    }
    image = {static_cast<int32_t>(width), static_cast<int32_t>(height), CopyRows(locked)};
    gdiPlus.GdipBitmapUnlockBits(bitmap, &locked);
    return true;
}

bool DecodeImageFile(const std::wstring& path, DecodedImage& image) {
    const GdiPlusCalls* gdiPlus = GdiPlus();
    if (!gdiPlus) return false;

    Gdiplus::GpBitmap* bitmap = nullptr;
    if (gdiPlus->GdipCreateBitmapFromFile(path.c_str(), &bitmap) != Gdiplus::Ok) return false;
    const bool isRead = ReadPixels(*gdiPlus, bitmap, image);
    gdiPlus->GdipDisposeImage(bitmap);
    return isRead;
}
