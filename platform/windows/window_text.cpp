#include <algorithm>

#include "system/text.h"
#include "windows/desktop.h"
#include "windows/lifetime.h"

namespace phone {

std::u16string_view WindowText(const Window& window) {
  return window.edit ? std::u16string_view(window.edit->content.text()) : std::u16string_view(window.text);
}

void SetWindowText(Window& window, std::u16string_view text) {
  if (window.edit) {
    window.edit->content.Set(text);
    MarkFieldStale(window);
    return;
  }
  window.text = text;
  MarkTitleStale();
}

}  // namespace phone

using namespace phone;

int GetWindowTextW(HWND handle, LPWSTR text, int size) {
  if (text == nullptr || size <= 0) return 0;
  *text = 0;
  const Window* window = OnUiThread() ? TheDesktop().windows.Find(handle) : nullptr;
  if (window == nullptr) return 0;
  const std::u16string_view whole = WindowText(*window);
  const std::size_t length = CutLength(whole, static_cast<std::size_t>(size) - 1);
  std::copy_n(whole.data(), length, text);
  text[length] = 0;
  return static_cast<int>(length);
}

LRESULT DefWindowProcW(HWND handle, UINT message, WPARAM, LPARAM lparam) {
  Window* window = OnUiThread() ? TheDesktop().windows.Find(handle) : nullptr;
  if (window == nullptr) return 0;
  return Guarded<LRESULT>(0, [&]() -> LRESULT {
    switch (message) {
      case WM_CLOSE: Destroy(handle); return 0;
      case WM_PAINT: window->update.reset(); return 0;
      case WM_SETTEXT:
        SetWindowText(*window, lparam != 0 ? std::u16string_view(reinterpret_cast<LPCWSTR>(lparam)) : u"");
        return TRUE;
      default: return 0;
    }
  });
}
