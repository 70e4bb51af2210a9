/// \file
/// What all screens share: the background, the top and bottom bars, the caption and the labels. They are made once, for
/// the client rectangle of that moment.
#pragma once

#include <memory>

#include "visuals/image_visual.h"
#include "visuals/text_visual.h"

/// Where each picture of the chrome is kept.
struct ChromeImages {
  std::unique_ptr<CImageVisual>& background;
  std::unique_ptr<CImageVisual>& topBar;
  std::unique_ptr<CImageVisual>& bottomBar;
};

/// Where each text of the chrome is kept.
struct ChromeTexts {
  std::unique_ptr<CTextVisual>& caption;
  std::unique_ptr<CTextVisual>& themeTitleLabel;
  std::unique_ptr<CTextVisual>& fileNameLabel;
  std::unique_ptr<CTextVisual>& versionText;
  std::unique_ptr<CTextVisual>& pluginTitleLabel;
};

/// Makes the pictures and loads them from the program's folder; one that does not load draws nothing. E_OUTOFMEMORY
/// when a visual cannot be allocated; the later ones are not made then.
[[nodiscard]] HRESULT CreateChromeImages(LPCWSTR programFolder, const RECT& client, ChromeImages images) noexcept;

/// Makes the texts that do not exist yet and sets all of them up. E_OUTOFMEMORY as above.
[[nodiscard]] HRESULT CreateTextVisuals(const RECT& client, ChromeTexts texts) noexcept;

/// True for a client area that is wider than high.
inline bool IsLandscape(const RECT& client) noexcept {
  return client.right > client.bottom;
}
