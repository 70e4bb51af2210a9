#include <new>

#include "app/controller.h"
#include "base/paths.h"
#include "base/status.h"
#include "visuals/chrome.h"

namespace {

using ListField = std::unique_ptr<CScrollList> CAppController::*;
using ImageField = std::unique_ptr<CImageVisual> CAppController::*;
using TextVisualField = std::unique_ptr<CTextVisual> CAppController::*;

/// What a screen shows over the background, in drawing order. Lists come first, so that the bars cover the rows that
/// slide under them.
struct ScreenElements {
  LONG screen;
  ListField list;
  ImageField images[2];
  TextVisualField texts[3];
};

constexpr ImageField TOP = &CAppController::topBar;
constexpr ImageField BOTTOM = &CAppController::bottomBar;
constexpr TextVisualField CAPTION = &CAppController::caption;

constexpr ScreenElements SCREEN_ELEMENTS[] = {
    {SCREEN_THEME_LIST, &CAppController::themeList, {TOP, BOTTOM}, {CAPTION}},
    {SCREEN_EDITOR, &CAppController::pluginList, {TOP, BOTTOM}, {CAPTION}},
    {SCREEN_SAVE_THEME,
     nullptr,
     {TOP, BOTTOM},
     {CAPTION, &CAppController::themeTitleLabel, &CAppController::fileNameLabel}},
    {SCREEN_CHOOSER, &CAppController::favoriteList, {TOP, BOTTOM}, {CAPTION}},
    {SCREEN_ADD_FAVORITE, nullptr, {TOP, BOTTOM}, {CAPTION, &CAppController::pluginTitleLabel}},
    {SCREEN_ABOUT, nullptr, {&CAppController::aboutImage}, {&CAppController::versionText}},
};

/// Draws whatever of the screen exists; what fails to draw is left out.
void DrawElements(const CAppController& controller, const ScreenElements& elements, HDC dc) noexcept {
  if (elements.list && controller.*elements.list) (controller.*elements.list)->Draw(dc);
  for (const ImageField image : elements.images)
    if (image && controller.*image) Unexamined((controller.*image)->Draw(dc, VALUE_ABSOLUTE));
  for (const TextVisualField text : elements.texts)
    if (text && controller.*text) (controller.*text)->Draw(dc);
}

/// Loads the picture of the About screen for the client area as it is now.
HRESULT CreateAboutImage(CAppController& controller, const RECT& client) noexcept {
  std::unique_ptr<CImageVisual>& image = controller.aboutImage;
  image.reset(new (std::nothrow) CImageVisual);
  if (!image) return E_OUTOFMEMORY;
  image->SetPosition(client.left, client.top);
  image->SetSize(client.bottom - client.top, client.right - client.left);
  TextField path;
  const LPCWSTR file = IsLandscape(client) ? TEXT("GFX\\aboutL.png") : TEXT("GFX\\about.png");
  if (!ProgramPath(controller.instance, file, path)) return E_FAIL;
  return image->Load(path);
}

/// A memory device context with a bitmap of the client area's size.
struct OffscreenBuffer {
  OwnedBitmap bitmap;  // before the context, so that it outlives its selection
  OwnedDC dc;
};

HRESULT CreateBuffer(HDC paintDC, const RECT& client, OffscreenBuffer& buffer) noexcept {
  buffer.dc.Reset(CreateCompatibleDC(paintDC));
  if (!buffer.dc) return E_OUTOFMEMORY;
  buffer.bitmap.Reset(CreateCompatibleBitmap(paintDC, client.right - client.left, client.bottom - client.top));
  if (!buffer.bitmap) return E_OUTOFMEMORY;
  SelectObject(buffer.dc.get(), buffer.bitmap.get());
  return S_OK;
}

/// Makes both buffers or, so that the next frame tries again, none.
HRESULT CreateBuffers(CAppController& controller, HDC paintDC, const RECT& client) noexcept {
  OffscreenBuffer background;
  OffscreenBuffer compose;
  RETURN_IF_FAILED(CreateBuffer(paintDC, client, background));
  if (controller.background) Unexamined(controller.background->Draw(background.dc.get(), VALUE_ABSOLUTE));
  RETURN_IF_FAILED(CreateBuffer(paintDC, client, compose));
  controller.backgroundDC = std::move(background.dc);
  controller.backgroundBitmap = std::move(background.bitmap);
  controller.composeDC = std::move(compose.dc);
  controller.composeBitmap = std::move(compose.bitmap);
  return S_OK;
}

/// The buffers keep their size when the client area changes its own.
void CopyBackground(const CAppController& controller) noexcept {
  BITMAP size = {};
  GetObjectW(controller.backgroundBitmap.get(), sizeof size, &size);
  BitBlt(controller.composeDC.get(), 0, 0, size.bmWidth, size.bmHeight, controller.backgroundDC.get(), 0, 0, SRCCOPY);
}

/// Composes a frame; without the About picture there is none.
HRESULT ComposeFrame(CAppController& controller, const RECT& client) noexcept {
  CopyBackground(controller);
  if (controller.screenId == SCREEN_ABOUT && !controller.aboutImage)
    RETURN_IF_FAILED(CreateAboutImage(controller, client));
  for (const ScreenElements& elements : SCREEN_ELEMENTS)
    if (elements.screen == controller.screenId) DrawElements(controller, elements, controller.composeDC.get());
  return S_OK;
}

HRESULT PaintFrame(CAppController& controller, HWND window, HDC paintDC) noexcept {
  RECT client = {};
  GetClientRect(window, &client);
  if (!controller.backgroundDC) RETURN_IF_FAILED(CreateBuffers(controller, paintDC, client));
  RETURN_IF_FAILED(ComposeFrame(controller, client));
  BitBlt(paintDC, 0, 0, client.right - client.left, client.bottom - client.top, controller.composeDC.get(), 0, 0,
         SRCCOPY);
  return S_OK;
}

}  // namespace

void CAppController::OnPaint(HWND window) noexcept {
  PAINTSTRUCT paint = {};
  if (const HDC dc = BeginPaint(window, &paint)) Unexamined(PaintFrame(*this, window, dc));
  EndPaint(window, &paint);
}
