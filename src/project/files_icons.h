// The icons of the Files page.
#pragma once

#include "base/rect.h"
#include "state/asset_entry.h"

// The image for the kind; a drawn sheet with a sign for kinds that have none.
void DrawFileIcon(AssetKind kind, const Rect& place);
