#include "platform/windows/window_test.h"

namespace {

using Focus = WindowTest;

TEST_F(Focus, MovesAndIsHandedOn) {
  const auto begin = [&] {
    const HWND field = MakeField(60);
    messages.clear();
    EXPECT_EQ(SetFocus(field), main);
    EXPECT_EQ(Messages(), "unfocus");
    EXPECT_EQ(phone::Look().focused_edit, 0);
    EXPECT_EQ(SetFocus(field), field);
    DestroyWindow(field);
    EXPECT_EQ(Messages(), "unfocus focus") << "the parent of a destroyed field gets its focus";
    EXPECT_TRUE(phone::Look().main_focused);
  };
  Play(begin, {});
}

TEST_F(Focus, GoesOnFromTheMainWindowToAField) {
  HWND field = nullptr;
  answer = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
    if (message == WM_SETFOCUS && field != nullptr) SetFocus(field);
    return {};
  };
  Play([&] { field = MakeField(60); }, {[] { phone::ComeBack(); },
                                        [] {
                                          EXPECT_EQ(phone::Look().focused_edit, 0)
                                              << "coming back is heard also by a window that has the focus";
                                          phone::TypeCharacter(u'x');
                                        },
                                        [] { EXPECT_EQ(phone::Look().edits.at(0).text, u"x"); }});
}

TEST_F(Focus, IsElsewhereWhileTheProgramIsInTheBackground) {
  const auto begin = [&] { SHNavigateBack(); };
  Play(begin, {[&] {
                 EXPECT_FALSE(phone::Look().foreground);
                 EXPECT_FALSE(phone::Look().main_focused);
                 EXPECT_EQ(host.left, 1);
                 messages.clear();
                 phone::PressKey(VK_RETURN);
                 phone::PressKey(VK_TBACK);
                 phone::TypeCharacter(u'x');
                 phone::ComeBack();
               },
               [&] {
                 EXPECT_EQ(Messages(), "focus");
                 phone::ReleaseKey(VK_RETURN);
                 phone::ReleaseKey(VK_TBACK);
               },
               [&] { EXPECT_EQ(Messages(), "focus") << "keys pressed in the background stay without effect"; }});
  EXPECT_EQ(phone::Look().back_navigations, 1);
}

}  // namespace
