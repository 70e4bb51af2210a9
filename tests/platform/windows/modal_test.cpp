#include "platform/windows/window_test.h"

namespace {

constexpr WORD kOpen = 101;
constexpr WORD kDelete = 102;

using Menus = WindowTest;

/// Keys after the menu was opened, and the commands the program gets besides the soft key's own.
TEST_F(Menus, AreWorkedWithTheKeys) {
  // The letters are keys: down, up, action, back, the left and the right soft key; digits and x are typed.
  struct Case {
    std::string keys;
    std::vector<WORD> commands;
    bool stays_open;
  };
  const Case cases[] = {
      {"a", {kOpen}, false},    {"l", {kOpen}, false}, {"da", {kDelete}, false}, {"uua", {kDelete}, false},
      {"ddda", {kOpen}, false}, {"ua", {}, true},      {"b", {}, false},         {"r", {}, false},
      {"2", {kDelete}, false},  {"9", {}, true},       {"x", {}, true},
  };
  const std::map<char, UINT> keys = {{'d', VK_DOWN},  {'u', VK_UP},     {'a', VK_RETURN},
                                     {'b', VK_TBACK}, {'l', VK_TSOFT1}, {'r', VK_TSOFT2}};
  for (const Case& each : cases) {
    SCOPED_TRACE(&each - cases);
    commands.clear();
    messages.clear();
    std::vector<Step> steps{Tap(VK_TSOFT1), [&] {
                              messages.clear();
                              EXPECT_EQ(phone::Look().bar_right, u"Cancel");
                              EXPECT_FALSE(phone::ChooseMenuItem(2)) << "it is disabled";
                            }};
    for (const char key : each.keys) {
      const auto named = keys.find(key);
      steps.push_back(Tap(named != keys.end() ? named->second : static_cast<UINT>(key)));
      if (named == keys.end()) steps.push_back([key] { phone::TypeCharacter(static_cast<WCHAR>(key)); });
    }
    steps.push_back([&] { EXPECT_EQ(phone::Look().menu.has_value(), each.stays_open); });
    Play([] { MakeBar(kListBar); }, steps);
    EXPECT_EQ(std::vector<WORD>(commands.begin() + 1, commands.end()), each.commands);
    for (const char* kind : {"down", "up", "char", "hotkey"})
      EXPECT_EQ(Messages().find(kind), std::string::npos) << "the menu's keys are its own";
  }
}

TEST_F(Menus, ScrollWhenTheyDoNotFitAndGoWithTheirBar) {
  HWND bar = nullptr;
  Play([&] { bar = MakeBar(kListBar); }, {Tap(VK_TSOFT1), [] { phone::ResizeClient(100, 30); },
                                          [&] {
                                            phone::Screen();
                                            phone::PressKey(VK_UP);
                                          },
                                          [&] {
                                            phone::Screen();
                                            EXPECT_TRUE(phone::Look().menu);
                                            DestroyWindow(bar);
                                            EXPECT_FALSE(phone::Look().menu);
                                          }});
}

class Boxes : public WindowTest {
 protected:
  Boxes() {
    answer = [this](UINT message, WPARAM wparam, LPARAM) -> std::optional<LRESULT> {
      if (message != WM_COMMAND) return {};
      if (wparam == 1) answers.push_back(MessageBoxW(main, TEXT("Sure?"), TEXT("Alert"), MB_YESNO | MB_ICONQUESTION));
      if (wparam == 2) answers.push_back(MessageBoxW(main, TEXT("No!"), TEXT("Alert"), MB_OK | MB_ICONEXCLAMATION));
      // One box from within another, as an error while asking would be.
      if (wparam == 3) {
        SendMessageW(main, WM_COMMAND, 1, 0);
        SendMessageW(main, WM_COMMAND, 2, 0);
      }
      return {};
    };
  }
  static Step Ask(int command) {
    return [command] { EXPECT_TRUE(phone::SendCommand(command)); };
  }

  std::vector<int> answers;
};

TEST_F(Boxes, AreAnsweredWithTheirKeys) {
  struct Case {
    int command;
    UINT key;
    int answer;  ///< 0: the box stays open
  };
  const Case cases[] = {{1, VK_RETURN, IDYES}, {1, VK_TSOFT1, IDYES}, {1, VK_TSOFT2, IDNO},
                        {1, VK_TBACK, IDNO},   {2, VK_RETURN, IDOK},  {2, VK_TSOFT1, IDOK},
                        {2, VK_TBACK, IDOK},   {2, VK_TSOFT2, 0},     {1, VK_DOWN, 0}};
  for (const Case& each : cases) {
    SCOPED_TRACE(&each - cases);
    answers.clear();
    messages.clear();
    Play({}, {Ask(each.command), Tap(each.key), [&] { EXPECT_EQ(phone::Look().box.has_value(), each.answer == 0); }});
    const int expected = each.answer != 0 ? each.answer : each.command == 1 ? IDNO : IDOK;
    EXPECT_EQ(answers, std::vector<int>{expected}) << "closing the phone answers what is still open";
    EXPECT_EQ(Messages().find("up"), std::string::npos);
  }
}

TEST_F(Boxes, GiveTheFocusBackAndLetPaintingGoOn) {
  Play([] { SetFocus(MakeField(60)); }, {Ask(1),
                                         [] {
                                           EXPECT_FALSE(phone::Look().focused_edit);
                                           phone::TypeCharacter(u'x');
                                           phone::InvalidateAll();
                                         },
                                         [&] {
                                           EXPECT_EQ(painted, 2);
                                           EXPECT_TRUE(phone::AnswerBox(IDYES));
                                         },
                                         [] {
                                           EXPECT_EQ(phone::Look().focused_edit, 0);
                                           EXPECT_EQ(phone::Look().edits.at(0).text, u"");
                                         }});
}

TEST_F(Boxes, IgnoreAKeyHeldSinceBeforeTheyOpened) {
  answer = [&](UINT message, WPARAM wparam, LPARAM) -> std::optional<LRESULT> {
    if (message == WM_KEYDOWN && wparam == VK_RETURN)
      answers.push_back(MessageBoxW(main, TEXT("Sure?"), TEXT("Alert"), MB_YESNO));
    return {};
  };
  Play({}, {Press(VK_RETURN), Press(VK_RETURN), [] { EXPECT_TRUE(phone::Look().box); },
            [] { phone::ReleaseKey(VK_RETURN); }, Press(VK_RETURN)});
  EXPECT_EQ(answers, std::vector<int>{IDYES});
}

/// However the program ends, a box is answered and its caller returns before the window goes.
TEST_F(Boxes, UnwindBeforeTheWindowGoes) {
  std::size_t answers_before_destroy = 0;
  const auto ask = answer;
  answer = [&](UINT message, WPARAM wparam, LPARAM lparam) -> std::optional<LRESULT> {
    if (message == WM_DESTROY) answers_before_destroy = answers.size();
    return ask(message, wparam, lparam);
  };
  for (const Step& end : {Step(phone::Close), Step([this] { DestroyWindow(main); })}) {
    answers.clear();
    EXPECT_EQ(Play({}, {Ask(3), end}), 0);
    EXPECT_EQ(answers, (std::vector<int>{IDNO, IDOK})) << "the second one is not even shown";
    EXPECT_EQ(answers_before_destroy, 2u);
  }
}

TEST_F(Boxes, UnwindOneWithinAnother) {
  answer = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
    if (message == WM_COMMAND || message == WM_HOTKEY)
      answers.push_back(MessageBoxW(main, TEXT("?"), TEXT("Alert"), message == WM_COMMAND ? MB_YESNO : MB_OK));
    return {};
  };
  Play({}, {Ask(1), [] { phone::SendHotKey(VK_TBACK, false); }, phone::Close});
  EXPECT_EQ(answers, (std::vector<int>{IDOK, IDNO})) << "the inner one first";
}

}  // namespace
