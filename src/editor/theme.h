// The editor's colours, named by their use. Fills are pixels, texts take the platform's order: see
// base/color.h.
#pragma once

#include "base/color.h"

// Frame.
constexpr Pixel kWindowFill{0x221B16};
constexpr Pixel kTopBarFill{0x1F1A17};
constexpr Pixel kPanelFill{0x251F1C};
constexpr Pixel kBottomPanelFill{0x211B18};
constexpr Pixel kPanelLightEdge{0x4A3E36};
constexpr Pixel kSplitter{0x544941};
constexpr Pixel kAccent{0xE6AA50};  // dragged splitter, selected row's bar, active tab, slider, open search

// Buttons.
constexpr Pixel kButtonFill{0x36312F};
constexpr Pixel kButtonEdge{0x494340};
constexpr Pixel kSaveFill{0xE18E43};
constexpr Pixel kSaveEdge{0xD2792D};
constexpr Pixel kUnsavedFill{0xF5A85C};
constexpr Pixel kUnsavedEdge{0xE18836};
constexpr Pixel kButtonOuterShadow{0x131110};
constexpr Pixel kButtonInnerShadow{0x181514};
constexpr Pixel kButtonDarkEdge{0x161413};

// Tabs.
constexpr Pixel kActiveTabFill{0x805C30};
constexpr Pixel kIdleTabFill{0x342C27};
constexpr Pixel kIdleTabEdge{0x564A42};
constexpr Pixel kActiveTabMark{0x5CD2FF};

// Hierarchy.
constexpr Pixel kSelectedRowFill{0x62482E};
constexpr Pixel kDropChildFill{0x4C5423};
constexpr Pixel kDropLine{0x5CD2FF};
constexpr Pixel kTextBadgeFill{0x4C423A};

// Inspector.
constexpr Pixel kStripFill{0x2D2622};
constexpr Pixel kInputEdge{0x4C423A};
constexpr Pixel kNameBoxFill{0x1F1A17};
constexpr Pixel kValueBoxFill{0x251F1B};
constexpr Pixel kSectionFill{0x312924};
constexpr Pixel kEnabledMark{0x86B04C};
constexpr Pixel kDisabledMark{0x6C625C};
constexpr Pixel kSectionBottomLine{0x161210};
constexpr Pixel kSliderTrack{0x413832};
constexpr Pixel kSliderKnob{0xFCF8F4};
constexpr Pixel kSearchEdge{0x564A42};
constexpr Pixel kResultFill{0x312B27};
constexpr Pixel kResultEdge{0x4E4640};
constexpr Pixel kEntityChip{0x76D260};
constexpr Pixel kTextChip{0xF4EEEB};
constexpr Pixel kLightChip{0x56E2FF};
constexpr Pixel kObjectChip{0xE09E56};

// Files page.
constexpr Pixel kPathBarFill{0x2F2722};
constexpr Pixel kPathBarEdge{0x5E5249};
constexpr Pixel kBackButtonFill{0x342C27};
constexpr Pixel kBackButtonEdge{0x564A42};
constexpr Pixel kSelectedFileFill{0x684A36};
constexpr Pixel kSelectedFileEdge{0xFFAA69};

// Menus and entries.
constexpr Pixel kMenuFill{0x312924};
constexpr Pixel kMenuLightEdge{0x786A60};
constexpr Pixel kLitFill{0x3A302A};  // under the pointer
constexpr Pixel kLitEdge{0xE6AA50};
constexpr Pixel kMenuItemFill{0x342C27};
constexpr Pixel kMenuItemEdge{0x564A42};
constexpr Pixel kEntryBackdrop{0x181412};
constexpr Pixel kEntryFieldFill{0x1E1916};
constexpr Pixel kEntryFieldEdge{0xFFAA69};

// Texts.
constexpr TextColor kProgramTitle{0xEBF2EE};
constexpr TextColor kPanelTitle{0xE6EEEB};
constexpr TextColor kButtonText{0xE9E5E2};
constexpr TextColor kSaveText{0xFCFAF8};
constexpr TextColor kPrefabText{0x78E2FF};
constexpr TextColor kKeyHint{0xA69A91};
constexpr TextColor kPlayModeText{0x91DC69};
constexpr TextColor kEditModeText{0xD2C6BE};
constexpr TextColor kConsoleText{0xD2C6BE};
constexpr TextColor kRowText{0xDCD5CD};
constexpr TextColor kSelectedRowText{0x78E2FF};
constexpr TextColor kObjectNameText{0xE8E8E8};
constexpr TextColor kLabelText{0xBEB8B2};
constexpr TextColor kValueText{0xDEDAD6};
constexpr TextColor kAxisText{0xCAC4BE};
constexpr TextColor kGlyphText{0xD7CFC6};
constexpr TextColor kEnabledText{0xD2E6D2};
constexpr TextColor kDisabledText{0x9C9691};
constexpr TextColor kSectionTitle{0xE0E2E0};
constexpr TextColor kHintText{0xB0A49A};
constexpr TextColor kActiveTabText{0xFCF8F4};
constexpr TextColor kIdleTabText{0xE6DED6};
constexpr TextColor kFilesText{0xE6DED6};
constexpr TextColor kSearchText{0xF4EEE8};
constexpr TextColor kEmptySearchText{0xA69E96};
constexpr TextColor kResultText{0xECE6E1};
constexpr TextColor kBadgeText{0xFCF8F5};
constexpr TextColor kMenuTitle{0x78E2FF};
constexpr TextColor kMenuText{0xE6DED6};
constexpr TextColor kEntrySubtitle{0xD2C6BE};
constexpr TextColor kEntryText{0xF4EEE8};

// Weights of texts.
constexpr int32_t kNormal = 400, kSemiBold = 600;
