#include "visuals/chrome.h"

#include "app/controller.h"
#include "base/paths.h"

HRESULT CAppController::CreateChromeImages(const RECT& client) noexcept {
  return ::CreateChromeImages(ProgramFolder(instance), client,
                              {.background = background, .topBar = topBar, .bottomBar = bottomBar});
}

HRESULT CAppController::CreateTextVisuals(const RECT& client) noexcept {
  return ::CreateTextVisuals(client, {.caption = caption,
                                      .themeTitleLabel = themeTitleLabel,
                                      .fileNameLabel = fileNameLabel,
                                      .versionText = versionText,
                                      .pluginTitleLabel = pluginTitleLabel});
}
