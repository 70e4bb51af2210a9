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
  Play(begin, {[&] {
                 messages.clear();
                 phone::PressKey(VK_RETURN);
                 phone::TypeCharacter(u'x');
                 phone::ReleaseKey(VK_RETURN);
                 phone::SendCommand(7);
               },
               [&] { EXPECT_EQ(Messages(), "down char up command") << "in their order"; }});
}

TEST_F(Focus, LeavesAKeyOfTheBackgroundWithoutEffect) {
  Play([] { SHNavigateBack(); }, {[&] {
                                    EXPECT_EQ(host.left, 1);
                                    messages.clear();
                                    phone::PressKey(VK_RETURN);
                                    phone::PressKey(VK_TBACK);
                                    phone::TypeCharacter(u'x');
                                    phone::ComeBack();
                                  },
                                  [] {
                                    phone::ReleaseKey(VK_RETURN);
                                    phone::ReleaseKey(VK_TBACK);
                                  },
                                  [&] { EXPECT_EQ(Messages(), "focus"); }});
  EXPECT_EQ(phone::Look().back_navigations, 1);
}

}  // namespace
