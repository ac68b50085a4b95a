#include "platform/windows/gdi_plus.h"

#include "platform/windows/system_library.h"

namespace {

struct GdiPlusLibrary {
    GdiPlusCalls calls{};
    bool wasTried = false;
    ULONG_PTR token = 0;  // 0 while it is not running
};

GdiPlusLibrary gdiPlus;

}  // namespace

// False when one of the calls is missing.
static bool FindCalls(HMODULE library, GdiPlusCalls& calls) {
    bool foundAll = true;
#define ZEL_GDI_PLUS_FIND(name)               \
    FindFunction(library, #name, calls.name); \
    foundAll = foundAll && calls.name;
    ZEL_GDI_PLUS_CALLS(ZEL_GDI_PLUS_FIND)
#undef ZEL_GDI_PLUS_FIND
    return foundAll;
}

static ULONG_PTR StartLibrary(HMODULE library) {
    decltype(&Gdiplus::GdiplusStartup) startUp = nullptr;
    FindFunction(library, "GdiplusStartup", startUp);
    if (!startUp) return 0;
    const Gdiplus::GdiplusStartupInput input;
    ULONG_PTR token = 0;
    return startUp(&token, &input, nullptr) == Gdiplus::Ok ? token : 0;
}

// Loaded when the first image is drawn or decoded: a start that shows none does not wait for it. Tried once;
// a system without the library shows no images and says so where a texture is loaded.
const GdiPlusCalls* GdiPlus() {
    if (!gdiPlus.wasTried) {
        gdiPlus.wasTried = true;
        const HMODULE library = LoadSystemLibrary(L"gdiplus.dll");
        if (library && FindCalls(library, gdiPlus.calls)) gdiPlus.token = StartLibrary(library);
    }
    return gdiPlus.token ? &gdiPlus.calls : nullptr;
}

void StopGdiPlus() {
    if (!gdiPlus.token) return;
    decltype(&Gdiplus::GdiplusShutdown) shutDown = nullptr;
    FindFunction(LoadSystemLibrary(L"gdiplus.dll"), "GdiplusShutdown", shutDown);
    if (shutDown) shutDown(gdiPlus.token);
    gdiPlus = {};
}
