#include "windows/screen.h"

#include <utility>

#include "system/outside.h"
#include "windows/desktop.h"
#include "windows/drawing.h"
#include "windows/style.h"

namespace phone {

namespace {

using namespace style;

void DrawTitle(Surface& screen) {
  DrawRamp(screen, {0, 0, screen.width(), kTitleStripHeight - 1}, kTitleGround);
  screen.Fill({0, kTitleStripHeight - 1, screen.width(), kTitleStripHeight}, kSeam);
  DrawLine(screen, {kLabelPadding, 0, screen.width(), kTitleStripHeight - 1}, VisibleTitle(), kTitleStyle);
}

/// A soft key's label over the mark that tells there is something to press.
void DrawKey(Surface& screen, const RECT& rect, std::u16string_view label) {
  if (label.find_first_not_of(u' ') == std::u16string_view::npos) return;
  DrawCentred(screen, {rect.left, rect.top, rect.right, rect.bottom - 1}, label, kKeyStyle);
  const int left = (rect.left + rect.right - kKeyMarkWidth) / 2;
  screen.Fill({left, rect.bottom - 2, left + kKeyMarkWidth, rect.bottom - 1}, kAccent);
}

void DrawKeys(Surface& screen) {
  const int top = screen.height() - kSoftKeyBarHeight;
  const int middle = screen.width() / 2;
  screen.Fill({0, top, screen.width(), top + 1}, kSeam);
  DrawRamp(screen, {0, top + 1, screen.width(), screen.height()}, kKeysGround);
  screen.Fill({middle, top + 6, middle + 1, screen.height() - 6}, kPanelFrame);
  const KeyLabels labels = VisibleKeyLabels();
  DrawKey(screen, {0, top + 1, middle, screen.height()}, labels.left);
  DrawKey(screen, {middle + 1, top + 1, screen.width(), screen.height()}, labels.right);
}

void DrawChildren(Surface& client, HWND parent, int x, int y) {
  Desktop& desktop = TheDesktop();
  for (const auto& window : desktop.windows.all()) {
    if (window->parent != parent || !window->visible || !window->surface) continue;
    if (window->edit && window->update) {
      DrawField(*window, desktop.focus == window->handle);
      window->update.reset();
    }
    client.Copy(*window->surface, x + window->rect.left, y + window->rect.top);
    if (!window->edit) DrawChildren(client, window->handle, x + window->rect.left, y + window->rect.top);
  }
}

void DrawClient(Surface& client) {
  Desktop& desktop = TheDesktop();
  const Window* main = desktop.windows.Main();
  const bool covered = main != nullptr && main->visible && main->width() == client.width();
  if (!covered) client.Fill({0, 0, client.width(), client.height()}, kShade);
  DrawChildren(client, nullptr, 0, 0);
  // What is open over the screen stays readable, so that the mark lies below.
  if (desktop.shown_cursor == Cursor::wait) DrawWaitMark(client);
  if (desktop.menu) DrawMenu(*desktop.menu, client);
  for (MessageBox* box : desktop.boxes) DrawMessageBox(*box, client);
}

}  // namespace

ScreenState::ScreenState(int client_width, int client_height)
    : whole(client_width, kTitleStripHeight + client_height + kSoftKeyBarHeight), client(client_width, client_height) {}

void MarkTitleStale() {
  TheDesktop().screen.title_stale = true;
  TheDesktop().screen.presented = false;
}

void MarkKeysStale() {
  TheDesktop().screen.keys_stale = true;
  TheDesktop().screen.presented = false;
}

void MarkClientStale() {
  TheDesktop().screen.client_stale = true;
  TheDesktop().screen.presented = false;
}

void MarkAllStale() {
  MarkTitleStale();
  MarkKeysStale();
  MarkClientStale();
}

void MarkFieldStale(Window& field) {
  field.update = RECT{0, 0, field.width(), field.height()};
  MarkClientStale();
}

KeyLabels VisibleKeyLabels() {
  Desktop& desktop = TheDesktop();
  if (!desktop.boxes.empty()) {
    const auto& buttons = desktop.boxes.back()->buttons;
    return {buttons.front().label, buttons.size() > 1 ? std::u16string_view(buttons.back().label) : u""};
  }
  if (desktop.menu) return {kMenuSelectLabel, kMenuCancelLabel};
  const Window* bar = desktop.windows.VisibleBar();
  if (bar == nullptr) return {};
  return {bar->bar->left.label, bar->bar->right.label};
}

std::u16string_view VisibleTitle() {
  const Window* main = TheDesktop().windows.Main();
  return main != nullptr ? std::u16string_view(main->text) : u"";
}

void ComposeScreen() {
  ScreenState& screen = TheDesktop().screen;
  if (std::exchange(screen.title_stale, false)) DrawTitle(screen.whole);
  if (std::exchange(screen.keys_stale, false)) DrawKeys(screen.whole);
  if (!std::exchange(screen.client_stale, false)) return;
  DrawClient(screen.client);
  screen.whole.Copy(screen.client, 0, kTitleStripHeight);
}

void PresentScreen() {
  ScreenState& screen = TheDesktop().screen;
  if (screen.presented) return;
  ComposeScreen();
  screen.presented = true;
  CurrentHost().Present(screen.whole.image());
}

}  // namespace phone
