#include "platform/windows/window_test.h"

namespace {

using Painting = WindowTest;

TEST_F(Painting, WaitsForTheQueueAndTheHost) {
  Play({}, {[&] {
              EXPECT_EQ(painted, 1) << "UpdateWindow has painted at once";
              host.frames_are_due = false;
              phone::InvalidateAll();
              phone::PressKey(VK_DOWN);
            },
            [&] {
              EXPECT_EQ(painted, 1);
              EXPECT_TRUE(phone::Look().invalid);
              host.frames_are_due = true;
              phone::ReleaseKey(VK_DOWN);
              phone::InvalidateAll();
            },
            [&] {
              EXPECT_EQ(painted, 2) << "what became invalid twice is painted once";
              EXPECT_EQ(messages.back(), WM_KEYUP);
              EXPECT_FALSE(phone::Look().invalid);
            }});
  EXPECT_EQ(phone::FramesPainted(), 2u);
}

TEST_F(Painting, KeepsWhatBecomesInvalidMeanwhile) {
  int depth = 0;
  int again = 2;
  answer = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
    if (message != WM_PAINT) return {};
    EXPECT_EQ(++depth, 1);
    PAINTSTRUCT paint;
    EXPECT_NE(BeginPaint(main, &paint), nullptr);
    EXPECT_EQ(BeginPaint(main, &paint), nullptr) << "it is being painted already";
    if (again-- > 0) InvalidateRect(main, nullptr, FALSE);
    UpdateWindow(main);
    EndPaint(main, &paint);
    EXPECT_FALSE(EndPaint(main, &paint));
    --depth;
    return 0;
  };
  Play({}, {});
  EXPECT_EQ(phone::FramesPainted(), 3u);
}

TEST_F(Painting, IsOverForAWindowThatDoesNot) {
  int asked = 0;
  answer = [&](UINT message, WPARAM, LPARAM) { return message == WM_PAINT ? std::optional(++asked) : std::nullopt; };
  Play({}, {phone::InvalidateAll, [] { EXPECT_FALSE(phone::Look().invalid); }});
  EXPECT_EQ(asked, 2);
}

TEST_F(Painting, ShowsTheScreenOnceATurn) {
  int frames = 0;
  Play({}, {[&] {
              frames = host.frames;
              SetFocus(MakeField(60));
              for (const WCHAR unit : {u'a', u'b', u'c'}) phone::TypeCharacter(unit);
            },
            [&] { EXPECT_EQ(host.frames, frames + 1); },
            [&] { EXPECT_EQ(host.frames, frames + 1) << "nothing has changed"; }});
}

TEST_F(Painting, IsNotNeededForTheWaitMark) {
  const auto middle = [] { return phone::Client().pixels[139 * 240 + 120]; };
  Play({}, {[&] {
         const std::uint32_t before = middle();
         SetCursor(LoadCursorW(nullptr, IDC_WAIT));
         EXPECT_NE(middle(), before);
         SetCursor(nullptr);
         EXPECT_EQ(middle(), before);
       }});
  EXPECT_EQ(painted, 1);
}

}  // namespace
