#include "windows/message_box.h"

#include <algorithm>

#include "aygshell.h"
#include "windows/desktop.h"
#include "windows/focus.h"
#include "windows/message_queue.h"

namespace phone {

namespace {

constexpr UINT kButtonsMask = 0x000F;  ///< the bits of a style that name the buttons

std::vector<BoxButton> ButtonsOf(UINT style) {
  if ((style & kButtonsMask) == MB_YESNO) return {{IDYES, u"Yes"}, {IDNO, u"No"}};
  return {{IDOK, u"OK"}};
}

/// The program is on its way out, so that nobody is asked any more.
bool AskingIsOver(HWND owner) {
  Desktop& desktop = TheDesktop();
  const auto holds_owner = [&](HWND doomed) { return desktop.windows.BelongsTo(owner, doomed); };
  return desktop.closing || desktop.quit || std::ranges::any_of(desktop.doomed, holds_owner);
}

void AnswerFrom(std::size_t index) {
  auto& boxes = TheDesktop().boxes;
  for (std::size_t i = index; i < boxes.size(); ++i)
    if (!boxes[i]->answer) boxes[i]->answer = boxes[i]->buttons.back().answer;
}

/// A message box while it is on the screen, whatever is thrown meanwhile.
class OpenBox {
 public:
  explicit OpenBox(MessageBox& box) : box_(&box) {
    CloseMenu();
    TheDesktop().boxes.push_back(&box);
    HoldFocus();
    MarkAllStale();
  }
  OpenBox(OpenBox&&) = delete;
  ~OpenBox() {
    std::erase(TheDesktop().boxes, box_);
    MarkAllStale();
    ReleaseHeldFocus();
  }

 private:
  MessageBox* box_;
};

int Ask(MessageBox& box) {
  const OpenBox open(box);
  while (!box.answer) {
    TurnInBox();
    if (TheDesktop().quit) AnswerFrom(0);
  }
  return *box.answer;
}

}  // namespace

void PressInBox(UINT key) {
  const MessageBox& box = *TheDesktop().boxes.back();
  switch (key) {
    case VK_RETURN:
    case VK_TSOFT1: return AnswerTopBox(box.buttons.front().answer);
    case VK_TSOFT2:
      if (box.buttons.size() > 1) AnswerTopBox(box.buttons.back().answer);
      return;
    case VK_TBACK: return AnswerTopBox(box.buttons.back().answer);
    default: return;
  }
}

void AnswerTopBox(int answer) {
  auto& boxes = TheDesktop().boxes;
  if (boxes.empty() || boxes.back()->answer) return;
  const auto is_it = [answer](const BoxButton& button) { return button.answer == answer; };
  if (std::ranges::any_of(boxes.back()->buttons, is_it)) boxes.back()->answer = answer;
}

bool AnswerBoxesOf(HWND window) {
  Desktop& desktop = TheDesktop();
  const auto found = std::ranges::find_if(
      desktop.boxes, [&](const MessageBox* box) { return desktop.windows.BelongsTo(box->owner, window); });
  if (found == desktop.boxes.end()) return false;
  AnswerFrom(static_cast<std::size_t>(found - desktop.boxes.begin()));
  return true;
}

void CloseAll() {
  CloseMenu();
  AnswerFrom(0);
  TheDesktop().closing = true;
}

}  // namespace phone

using namespace phone;

int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
  if (!OnUiThread()) return 0;
  return Guarded<int>(0, [&] {
    MessageBox box{.owner = owner,
                   .text = text != nullptr ? text : u"",
                   .caption = caption != nullptr ? caption : u"",
                   .style = type,
                   .buttons = ButtonsOf(type),
                   .answer = {},
                   .picture = {}};
    return AskingIsOver(owner) ? box.buttons.back().answer : Ask(box);
  });
}
