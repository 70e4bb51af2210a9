#include "windows/painting.h"

#include <algorithm>

#include "graphics/trace.h"
#include "windows/desktop.h"

namespace phone {

namespace {

bool IsShown(const Window& window) {
  if (!window.visible || !window.surface) return false;
  const Window* parent = window.is_child() ? TheDesktop().windows.Find(window.parent) : nullptr;
  return !window.is_child() || (parent != nullptr && parent->visible);
}

bool Covers(const RECT& outer, const RECT& inner) noexcept {
  return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
         outer.bottom >= inner.bottom;
}

}  // namespace

void Invalidate(Window& window, const RECT* rect) {
  RECT area{0, 0, window.width(), window.height()};
  if (window.update && Covers(*window.update, area)) return;
  if (rect != nullptr) {
    area.left = std::max(area.left, rect->left);
    area.top = std::max(area.top, rect->top);
    area.right = std::min(area.right, rect->right);
    area.bottom = std::min(area.bottom, rect->bottom);
  }
  if (area.left >= area.right || area.top >= area.bottom) return;
  if (window.update) {
    area.left = std::min(area.left, window.update->left);
    area.top = std::min(area.top, window.update->top);
    area.right = std::max(area.right, window.update->right);
    area.bottom = std::max(area.bottom, window.update->bottom);
  }
  window.update = area;
}

Window* FirstInvalid() {
  for (const auto& window : TheDesktop().windows.all())
    if (window->update && window->paints() && !window->painting && IsShown(*window)) return window.get();
  return nullptr;
}

LRESULT SendPaint(HWND handle) {
  WindowTable& windows = TheDesktop().windows;
  Window* window = windows.Find(handle);
  if (window == nullptr) return 0;
  window->painted = false;
  const LRESULT result = Send(handle, WM_PAINT, 0, 0);
  window = windows.Find(handle);
  if (window != nullptr && !window->painted) window->update.reset();
  return result;
}

void ResizeWindowSurface(Window& window) {
  window.paint_dc.reset();
  window.surface.emplace(std::max(window.width(), 1), std::max(window.height(), 1));
  window.update.reset();
  Invalidate(window, nullptr);
}

}  // namespace phone

using namespace phone;

BOOL InvalidateRect(HWND handle, const RECT* rect, BOOL) {
  Window* window = OnUiThread() ? TheDesktop().windows.Find(handle) : nullptr;
  if (window == nullptr) return FALSE;
  if (window->paints()) Invalidate(*window, rect);
  return TRUE;
}

BOOL UpdateWindow(HWND handle) {
  Window* window = OnUiThread() ? TheDesktop().windows.Find(handle) : nullptr;
  if (window == nullptr) return FALSE;
  if (window->update && window->paints() && !window->painting && IsShown(*window)) SendPaint(window->handle);
  return TRUE;
}

HDC BeginPaint(HWND handle, PAINTSTRUCT* paint) {
  Window* window = OnUiThread() ? TheDesktop().windows.Find(handle) : nullptr;
  if (window == nullptr || paint == nullptr || !window->surface || window->painting) return nullptr;
  return Guarded<HDC>(nullptr, [&]() -> HDC {
    if (window == TheDesktop().windows.Main()) BeginTrace();
    if (window->paint_dc == nullptr) window->paint_dc.reset(CreateSurfaceDC(*window->surface, "window"));
    if (window->paint_dc == nullptr) return nullptr;
    *paint = {};
    paint->hdc = window->paint_dc.get();
    if (window->update) paint->rcPaint = *window->update;
    window->update.reset();
    window->painting = window->painted = true;
    return paint->hdc;
  });
}

BOOL EndPaint(HWND handle, const PAINTSTRUCT* paint) {
  Window* window = OnUiThread() ? TheDesktop().windows.Find(handle) : nullptr;
  if (window == nullptr || paint == nullptr || !window->painting) return FALSE;
  window->painting = false;
  if (window == TheDesktop().windows.Main()) ++TheDesktop().frames;
  MarkClientStale();
  return TRUE;
}
