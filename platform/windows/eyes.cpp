#include <algorithm>

#include "system/outside.h"
#include "windows/desktop.h"
#include "windows/painting.h"

namespace phone {

namespace {

std::vector<Window*> FieldsFromTheTop() {
  const auto top = [](const Window* field) { return field->rect.top; };
  std::vector<Window*> fields;
  for (const auto& window : TheDesktop().windows.all())
    if (window->edit) fields.insert(std::ranges::upper_bound(fields, window->rect.top, {}, top), window.get());
  return fields;
}

EditState LookAtField(Window& field) {
  const EditText& content = field.edit->content;
  RECT caret = CaretRect(field);
  for (LONG* x : {&caret.left, &caret.right}) *x += field.rect.left;
  for (LONG* y : {&caret.top, &caret.bottom}) *y += field.rect.top + kTitleStripHeight;
  return {.text = content.text(),
          .rect = field.rect,
          .focus = field.handle == TheDesktop().focus,
          .caret = static_cast<int>(content.caret()),
          .selection_start = static_cast<int>(content.selection_start()),
          .selection_end = static_cast<int>(content.selection_end()),
          .caret_rect = caret};
}

void LookAtFields(State& state) {
  for (Window* field : FieldsFromTheTop()) {
    state.edits.push_back(LookAtField(*field));
    if (state.edits.back().focus) state.focused_edit = static_cast<int>(state.edits.size()) - 1;
  }
}

void LookAtOpenThings(State& state) {
  const Desktop& desktop = TheDesktop();
  if (desktop.menu) {
    state.menu.emplace();
    for (const MenuItem& item : desktop.menu->items) state.menu->push_back(item.label);
  }
  if (desktop.boxes.empty()) return;
  const MessageBox& box = *desktop.boxes.back();
  state.box = BoxState{box.text, box.caption, box.style, {}};
  for (const BoxButton& button : box.buttons) state.box->buttons.push_back(button.label);
}

}  // namespace

State Look() {
  State state;
  if (!DesktopExists()) return state;
  Desktop& desktop = TheDesktop();
  const Window* main = desktop.windows.Main();
  const KeyLabels labels = VisibleKeyLabels();
  state.foreground = desktop.foreground;
  state.raised = desktop.raised;
  state.title = VisibleTitle();
  state.client_width = desktop.client_width;
  state.client_height = desktop.client_height;
  state.bar_left = labels.left;
  state.bar_right = labels.right;
  for (const auto& window : desktop.windows.all()) state.bars_visible += window->bar && window->visible ? 1 : 0;
  state.windows = static_cast<int>(desktop.windows.all().size());
  state.main_focused = main != nullptr && desktop.focus == main->handle;
  LookAtFields(state);
  LookAtOpenThings(state);
  state.cursor = desktop.shown_cursor;
  state.invalid = FirstInvalid() != nullptr;
  state.broadcasts = Broadcasts();
  state.launched = Launches();
  state.registry_writes = RegistryWrites();
  state.back_navigations = desktop.back_navigations;
  state.back_forwarded = desktop.back_forwarded;
  state.worker = WorkerRuns();
  return state;
}

ScreenImage Screen() {
  ComposeScreen();
  return TheDesktop().screen.whole.image();
}

ScreenImage Client() {
  ComposeScreen();
  ScreenImage image = TheDesktop().screen.whole.image();
  image.pixels += static_cast<std::ptrdiff_t>(kTitleStripHeight) * image.stride;
  image.height = TheDesktop().client_height;
  return image;
}

std::uint64_t FramesPainted() {
  return DesktopExists() ? TheDesktop().frames : 0;
}

}  // namespace phone
