#include "support/golden_frame.h"

#include "app/frame.h"
#include "platform/headless/headless.h"
#include "render/icons.h"
#include "support/golden.h"
#include "support/source_path.h"

static CanvasImage Icon(const wchar_t* name) {
    return LoadCanvasImage(SourcePath(L"assets/" + std::wstring(name)));
}

void LoadTestIcons() {
    ReleaseCanvasImages();
    icons = {.camera = Icon(L"camera.png"),
             .entity = Icon(L"entity.png"),
             .light = Icon(L"light.png"),
             .files = Icon(L"files.png"),
             .script = Icon(L"c-plus-plus.png"),
             .scene = Icon(L"scene.png"),
             .model = Icon(L"obj.png"),
             .logo = Icon(L"pe.png")};
}

bool FrameMatchesGolden(const std::string& name) {
    headless.texts.clear();
    headless.images.clear();
    RenderFrame();
    const bool sameTexts = MatchesGoldenText(name);
    return MatchesGolden(name) && sameTexts;
}
