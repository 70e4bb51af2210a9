#include "platform/windows/window_test.h"

namespace {

class Keys : public WindowTest {
 protected:
  Keys() {
    answer = [this](UINT message, WPARAM, LPARAM lparam) -> std::optional<LRESULT> {
      if (message == WM_HOTKEY) hotkeys.push_back(lparam);
      if (message == WM_HOTKEY && forwards) SHSendBackToFocusWindow(message, 0, lparam);
      return {};
    };
  }
  static void OverrideBack(HWND bar) { SendMessageW(bar, SHCMBM_OVERRIDEKEY, VK_TBACK, 0x00030003); }

  std::vector<LPARAM> hotkeys;
  bool forwards = false;
};

TEST_F(Keys, GoToTheWindowWithTheFocusInOrder) {
  Play({}, {[&] {
              messages.clear();
              phone::PressKey(VK_RETURN);
              phone::TypeCharacter(u'x');
              phone::ReleaseKey(VK_RETURN);
              phone::SendCommand(7);
            },
            [&] { EXPECT_EQ(Messages(), "down char up command"); }});
}

TEST_F(Keys, SoftKeysPressTheVisibleBar) {
  HWND list_bar = nullptr;
  const auto begin = [&] {
    list_bar = MakeBar(kListBar);
    ShowWindow(list_bar, SW_HIDE);
    MakeBar(kFormBar);
  };
  Play(begin, {Tap(VK_TSOFT1), Tap(VK_TSOFT2), [&] {
                 EXPECT_EQ(commands, (std::vector<WORD>{kLeftCommand, kRightCommand}));
                 EXPECT_FALSE(phone::Look().menu);
                 EXPECT_EQ(phone::Look().bars_visible, 1);
                 EXPECT_EQ(Messages().find("down"), std::string::npos);
               }});
}

TEST_F(Keys, SoftKeysAreRelabelled) {
  const auto begin = [&] {
    TBBUTTONINFO info{};
    WCHAR label[] = u"Back";
    info.cbSize = sizeof info;
    info.dwMask = TBIF_TEXT;
    info.pszText = label;
    const HWND bar = MakeBar(kFormBar);
    EXPECT_EQ(phone::Look().bar_right, u"Exit");
    EXPECT_TRUE(SendMessageW(bar, TB_SETBUTTONINFO, kRightCommand, reinterpret_cast<LPARAM>(&info)));
    EXPECT_FALSE(SendMessageW(bar, TB_SETBUTTONINFO, 7, reinterpret_cast<LPARAM>(&info)));
    EXPECT_EQ(phone::Look().bar_left, u"Save");
    EXPECT_EQ(phone::Look().bar_right, u"Back");
  };
  Play(begin, {});
}

TEST_F(Keys, BackIsTheProgramsWhereItAsksForIt) {
  Play([] { OverrideBack(MakeBar(kFormBar)); }, {Tap(VK_TBACK)});
  EXPECT_EQ(hotkeys, (std::vector<LPARAM>{MAKELPARAM(0, VK_TBACK), MAKELPARAM(MOD_KEYUP, VK_TBACK)}));
  EXPECT_EQ(phone::Look().back_navigations, 0);
}

TEST_F(Keys, BackIsTheShellsElsewhereOnRelease) {
  const auto begin = [] {
    ShowWindow(MakeBar(kListBar), SW_HIDE);
    OverrideBack(MakeBar(kListBar));
    MakeBar(kFormBar);
  };
  Play(begin, {Press(VK_TBACK), [] { EXPECT_EQ(phone::Look().back_navigations, 0); },
               [] { phone::ReleaseKey(VK_TBACK); }, [] { EXPECT_FALSE(phone::Look().foreground); }});
  EXPECT_TRUE(hotkeys.empty());
  EXPECT_EQ(phone::Look().back_navigations, 1);
  EXPECT_EQ(host.left, 1);
}

TEST_F(Keys, BackDeletesOneCharacterInAField) {
  forwards = true;
  const auto begin = [&] {
    OverrideBack(MakeBar(kFormBar));
    const HWND field = MakeField(60);
    SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(TEXT("abc")));
    SetFocus(field);
  };
  Play(begin, {Tap(VK_TBACK), [] {
                 EXPECT_EQ(phone::Look().edits.at(0).text, u"ab");
                 EXPECT_EQ(phone::Look().back_forwarded, 2);
               }});
}

}  // namespace
