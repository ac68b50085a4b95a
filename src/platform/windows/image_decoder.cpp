#include "platform/image_decoder.h"

#include "platform/files.h"
#include "platform/image_header.h"
#include "platform/windows/gdi_plus.h"

#include <new>
#include <utility>

// False when there is no memory for as many pixels.
static bool Reserve(std::vector<uint32_t>& pixels, size_t count) {
    try {
        pixels.resize(count);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

// The library may take memory for all pixels, or wait for a device, as soon as it is given the file.
static bool PromisesReasonableImage(const std::wstring& path) {
    std::string bytes;
    ImageSize size;
    return ReadWholeFile(path, bytes) && ReadImageSize(bytes, size) && IsReasonable(size);
}

static bool ReadPixels(const GdiPlusCalls& gdiPlus, Gdiplus::GpBitmap* bitmap, DecodedImage& image) {
    UINT width = 0, height = 0;
    if (gdiPlus.GdipGetImageWidth(bitmap, &width) != Gdiplus::Ok) return false;
    if (gdiPlus.GdipGetImageHeight(bitmap, &height) != Gdiplus::Ok) return false;
    if (!IsReasonable({width, height})) return false;

    DecodedImage decoded{.width = static_cast<int32_t>(width), .height = static_cast<int32_t>(height)};
    if (!Reserve(decoded.argb, size_t{width} * height)) return false;

    // Locking writes the pixels where `target` says, row behind row.
    const Gdiplus::Rect whole(0, 0, decoded.width, decoded.height);
    constexpr UINT kMode = Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf;
    Gdiplus::BitmapData target{};
    target.Width = width;
    target.Height = height;
    target.Stride = static_cast<INT>(width * sizeof(uint32_t));
    target.PixelFormat = PixelFormat32bppARGB;
    target.Scan0 = decoded.argb.data();
    if (gdiPlus.GdipBitmapLockBits(bitmap, &whole, kMode, PixelFormat32bppARGB, &target) != Gdiplus::Ok) {
        return false;
    }
    gdiPlus.GdipBitmapUnlockBits(bitmap, &target);
    image = std::move(decoded);
    return true;
}

// The size is read from the file's first bytes by the program itself, before the library sees the file: a
// few bytes can promise billions of pixels. What the library then says of the size is checked again.
bool DecodeImageFile(const std::wstring& path, DecodedImage& image) {
    const GdiPlusCalls* gdiPlus = GdiPlus();
    if (!gdiPlus || !PromisesReasonableImage(path)) return false;

    Gdiplus::GpBitmap* bitmap = nullptr;
    if (gdiPlus->GdipCreateBitmapFromFile(path.c_str(), &bitmap) != Gdiplus::Ok) return false;
    const bool isRead = ReadPixels(*gdiPlus, bitmap, image);
    gdiPlus->GdipDisposeImage(bitmap);
    return isRead;
}
