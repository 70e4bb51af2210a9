#include "windows/edit_control.h"

#include <algorithm>

#include "system/outside.h"
#include "windows/desktop.h"
#include "windows/drawing.h"
#include "windows/style.h"

namespace phone {

namespace {

using namespace style;

constexpr int kCaretMargin = 5;  ///< px above and below the caret

// --- Keys ---

bool Copy(const EditText& content) {
  if (!content.selected().empty()) CurrentHost().SetClipboardText(content.selected());
  return false;
}

bool Cut(EditText& content) {
  if (content.selected().empty()) return false;
  Copy(content);
  return content.Delete(Place::before);
}

bool Paste(EditText& content) {
  return content.Insert(CurrentHost().ClipboardText());
}

/// What the arrow keys mean follows the text: in one that is read from right to left, what comes next stands to the
/// left.
bool MoveSideways(EditText& content, bool rightwards, KeyModifiers modifiers, Selecting selecting) {
  const bool onwards = rightwards != content.runs_leftwards();
  if (modifiers.control) return content.Move(onwards ? Place::word_after : Place::word_before, selecting);
  return content.Move(onwards ? Place::after : Place::before, selecting);
}

bool PressWithControl(EditText& content, WPARAM key) {
  switch (key) {
    case u'A': return content.SelectAll();
    case u'C':
    case VK_INSERT: return Copy(content);
    case u'X': return Cut(content);
    case u'V': return Paste(content);
    default: return false;
  }
}

/// True when the field looks different afterwards.
bool PressInField(EditText& content, WPARAM key, KeyModifiers modifiers) {
  const Selecting selecting = modifiers.shift ? Selecting::yes : Selecting::no;
  switch (key) {
    case VK_BACK: return content.Delete(modifiers.control ? Place::word_before : Place::before);
    case VK_DELETE:
      if (modifiers.shift) return Cut(content);
      return content.Delete(modifiers.control ? Place::word_after : Place::after);
    case VK_LEFT: return MoveSideways(content, /*rightwards=*/false, modifiers, selecting);
    case VK_RIGHT: return MoveSideways(content, /*rightwards=*/true, modifiers, selecting);
    case VK_HOME: return content.Move(Place::home, selecting);
    case VK_END: return content.Move(Place::end, selecting);
    case VK_INSERT:
      if (modifiers.shift) return Paste(content);
      break;
    default: break;
  }
  return modifiers.control && PressWithControl(content, key);
}

// --- Drawing ---

/// The part of a field in which its text is drawn, px in the field.
RECT TextArea(const Window& field) {
  return {kFieldPadding, 0, std::max(field.width() - kFieldPadding, kFieldPadding), field.height()};
}

/// The smallest change of the scroll position that shows the caret, without a gap behind the text.
int ScrollTo(int scroll, int caret, int text_width, int room) {
  const int most = std::max(text_width + kCaretWidth - room, 0);
  scroll = std::min(scroll, caret);
  scroll = std::max(scroll, caret + kCaretWidth - room);
  return std::clamp(scroll, 0, most);
}

void DrawSelection(Surface& surface, const EditControl& edit, const RECT& area, bool focused) {
  const EditText& content = edit.content;
  LineStyle style = kFieldStyle;
  if (focused) style.color = kText;
  for (const Stretch& stretch :
       CoveredStretches(content.text(), content.selection_start(), content.selection_end(), kFieldStyle)) {
    const int left = area.left - edit.scroll;
    const RECT part{std::max<LONG>(left + stretch.left, area.left), area.top + kCaretMargin,
                    std::min<LONG>(left + stretch.right, area.right), area.bottom - kCaretMargin};
    if (part.left >= part.right) continue;
    surface.Fill(part, focused ? kSelection : kQuietSelection);
    // The whole line again, of which only the part is seen.
    DrawLine(surface, {part.left, area.top, part.right, area.bottom}, content.text(), style, part.left - left);
  }
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
      if (PressInField(content, wparam, TheDesktop().input.modifiers)) MarkFieldStale(*window);
      return 0;
    default: return DefWindowProcW(handle, message, wparam, lparam);
  }
}

void PutCaretAt(Window& field, int x, Selecting selecting) {
  EditText& content = field.edit->content;
  const int in_line = x - TextArea(field).left + field.edit->scroll;
  const std::size_t caret = CaretAt(content.text(), in_line, kFieldStyle);
  if (content.MoveTo(caret, selecting)) MarkFieldStale(field);
}

RECT CaretRect(Window& field) {
  const EditText& content = field.edit->content;
  const RECT area = TextArea(field);
  const int caret = CaretPosition(content.text(), content.caret(), kFieldStyle);
  int& scroll = field.edit->scroll;
  scroll = ScrollTo(scroll, caret, MeasureLine(content.text(), kFieldStyle), area.right - area.left);
  const LONG x = area.left + caret - scroll - kCaretWidth / 2;
  return {x, area.top + kCaretMargin, x + kCaretWidth, area.bottom - kCaretMargin};
}

void DrawField(Window& field, bool focused) {
  Surface& surface = *field.surface;
  const RECT whole{0, 0, field.width(), field.height()};
  const RECT area = TextArea(field);
  const RECT caret = CaretRect(field);

  surface.Fill(whole, kFieldGround);
  DrawFrame(surface, whole, focused ? kAccent : kFieldFrame);
  if (focused) DrawFrame(surface, {1, 1, whole.right - 1, whole.bottom - 1}, kAccent);
  DrawLine(surface, area, field.edit->content.text(), kFieldStyle, field.edit->scroll);
  DrawSelection(surface, *field.edit, area, focused);
  if (focused) surface.Fill(caret, kSelection);
}

}  // namespace phone
