#include "windows/edit_control.h"

#include <algorithm>

#include "windows/desktop.h"
#include "windows/drawing.h"
#include "windows/style.h"

namespace phone {

namespace {

using namespace style;

bool PressInField(EditText& content, WPARAM key) {
  switch (key) {
    case VK_BACK: return content.DeleteBefore();
    case VK_DELETE: return content.DeleteAfter();
    case VK_LEFT: return content.MoveLeft();
    case VK_RIGHT: return content.MoveRight();
    case VK_HOME: return content.MoveHome();
    case VK_END: return content.MoveEnd();
    default: return false;
  }
}

/// The smallest change of the scroll position that shows the caret, without a gap behind the text.
int ScrollTo(int scroll, int caret, int text_width, int room) {
  const int most = std::max(text_width + kCaretWidth - room, 0);
  scroll = std::min(scroll, caret);
  scroll = std::max(scroll, caret + kCaretWidth - room);
  return std::clamp(scroll, 0, most);
}

}  // namespace

LRESULT CALLBACK EditProcedure(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
  Window* window = TheDesktop().windows.Find(handle);
  if (window == nullptr || !window->edit) return 0;
  EditText& content = window->edit->content;
  switch (message) {
    case WM_CHAR:
      content.Type(static_cast<WCHAR>(wparam));
      MarkFieldStale(*window);
      return 0;
    case WM_KEYDOWN:
      if (PressInField(content, wparam)) MarkFieldStale(*window);
      return 0;
    default: return DefWindowProcW(handle, message, wparam, lparam);
  }
}

void DrawField(Window& field, bool focused) {
  const EditText& content = field.edit->content;
  Surface& surface = *field.surface;
  const RECT whole{0, 0, field.width(), field.height()};
  const RECT inside{kFieldPadding, 0, std::max(field.width() - kFieldPadding, kFieldPadding), field.height()};
  const std::vector<int> carets = CaretPositions(content.text(), kFieldStyle);
  const int caret = carets[content.caret()];
  int& scroll = field.edit->scroll;
  scroll = ScrollTo(scroll, caret, MeasureLine(content.text(), kFieldStyle), inside.right - inside.left);

  surface.Fill(whole, kFieldGround);
  DrawFrame(surface, whole, focused ? kSelection : kFieldFrame);
  if (focused) DrawFrame(surface, {1, 1, whole.right - 1, whole.bottom - 1}, kSelection);
  DrawLine(surface, inside, content.text(), kFieldStyle, scroll);
  if (!focused) return;
  const int x = inside.left + caret - scroll;
  surface.Fill({x, 5, x + kCaretWidth, whole.bottom - 5}, kSelection);
}

}  // namespace phone
