#include "visuals/chrome.h"

#include <iterator>
#include <new>

#include "base/paths.h"
#include "base/status.h"

namespace {

constexpr COLORREF WHITE = 0x00FFFFFF;
constexpr BYTE TRANSPARENT_BACKGROUND = 1;
constexpr INT BACKGROUND_EXTENT = 320;  // px, covers the client area in either orientation
constexpr INT TOP_BAR_HEIGHT = 57;      // px
constexpr INT BOTTOM_BAR_HEIGHT = 25;   // px
constexpr INT TEXT_HEIGHT = 27;         // px
constexpr INT TEXT_WIDTH = 220;         // px
constexpr INT TEXT_INSET = 3;           // px

/// Where one picture stands, in pixels.
struct Placement {
  LPCWSTR file;
  INT x;
  INT y;
  INT height;
  INT width;
};

/// What one text says and where it stands, in pixels from the client area's top left corner.
struct Wording {
  LPCWSTR text;
  INT x;
  INT y;
  INT landscapeY;
  INT points;
};

constexpr Wording WORDINGS[] = {
    {TEXT("Select Theme"), 10, 5, 5, 12},        {TEXT("Theme Title"), 10, 35, 35, 12},
    {TEXT("Theme File Name"), 10, 115, 115, 12}, {TEXT("Version: 1.01 Build: 1053"), 85, 15, 10, 10},
    {TEXT("Plugin Title"), 10, 35, 35, 12},
};

HRESULT CreateChromeImage(LPCWSTR programFolder, const Placement& placement,
                          std::unique_ptr<CImageVisual>& slot) noexcept {
  slot.reset(new (std::nothrow) CImageVisual);
  if (!slot) return E_OUTOFMEMORY;
  slot->SetPosition(placement.x, placement.y);
  slot->SetSize(placement.height, placement.width);
  LongPath path;
  [[maybe_unused]] const bool whole = JoinPath(path, programFolder, placement.file);
  Unexamined(slot->Load(path));
  return S_OK;
}

HRESULT SetUpText(const RECT& client, const Wording& wording, std::unique_ptr<CTextVisual>& slot) noexcept {
  if (!slot) slot.reset(new (std::nothrow) CTextVisual);
  if (!slot) return E_OUTOFMEMORY;
  slot->SetPosition(client.left + wording.x, client.top + (IsLandscape(client) ? wording.landscapeY : wording.y));
  slot->SetSize(TEXT_HEIGHT, TEXT_WIDTH);
  slot->SetInset(TEXT_INSET);
  slot->SetText(wording.text);
  slot->SetColor(WHITE);
  slot->SetTransparent(TRANSPARENT_BACKGROUND);
  slot->SetFontFace(TEXT("Verdana"));
  slot->SetFormat(TEXT_FORMAT, wording.points);
  return S_OK;
}

}  // namespace

HRESULT CreateChromeImages(LPCWSTR programFolder, const RECT& client, ChromeImages images) noexcept {
  const INT width = client.right - client.left;
  const INT height = client.bottom - client.top;
  const Placement placements[] = {
      {TEXT("GFX\\bg.png"), 0, 0, BACKGROUND_EXTENT, BACKGROUND_EXTENT},
      {TEXT("GFX\\pTop.png"), client.left, client.top, TOP_BAR_HEIGHT, width},
      {TEXT("GFX\\pBottom.png"), client.left, height - BOTTOM_BAR_HEIGHT, BOTTOM_BAR_HEIGHT, width},
  };
  std::unique_ptr<CImageVisual>* const slots[] = {&images.background, &images.topBar, &images.bottomBar};
  static_assert(std::size(placements) == std::size(slots));
  for (std::size_t i = 0; i < std::size(slots); ++i)
    RETURN_IF_FAILED(CreateChromeImage(programFolder, placements[i], *slots[i]));
  return S_OK;
}

HRESULT CreateTextVisuals(const RECT& client, ChromeTexts texts) noexcept {
  std::unique_ptr<CTextVisual>* const slots[] = {&texts.caption, &texts.themeTitleLabel, &texts.fileNameLabel,
                                                 &texts.versionText, &texts.pluginTitleLabel};
  static_assert(std::size(WORDINGS) == std::size(slots));
  for (std::size_t i = 0; i < std::size(slots); ++i) RETURN_IF_FAILED(SetUpText(client, WORDINGS[i], *slots[i]));
  return S_OK;
}
