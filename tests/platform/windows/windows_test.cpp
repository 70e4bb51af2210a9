#include "platform/windows/window_test.h"

namespace {

using Windows = WindowTest;

TEST_F(Windows, LiveThroughCreationAndDestructionInOrder) {
  HWND field = nullptr;
  HWND bar = nullptr;
  const auto begin = [&] {
    EXPECT_EQ(Messages(), "create focus");
    bar = MakeBar(kListBar);
    field = MakeField(60);
    SetFocus(field);
    EXPECT_EQ(Messages(), "create focus unfocus");
  };
  bool alive_in_destroy = false;
  answer = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
    RECT rect;
    if (message == WM_DESTROY) alive_in_destroy = GetClientRect(field, &rect) && GetClientRect(bar, &rect);
    return {};
  };
  EXPECT_EQ(Play(begin, {[] { EXPECT_EQ(phone::Look().windows, 3); }}), 0);
  EXPECT_TRUE(alive_in_destroy) << "children and owned windows go after their window has heard of it";
  EXPECT_EQ(Messages(), "create focus unfocus close destroy");
  EXPECT_EQ(phone::Look().windows, 0);
}

TEST_F(Windows, RefuseWhatCannotBe) {
  const auto make = [this](LPCWSTR name, DWORD style, HWND parent) {
    return CreateWindowExW(0, name, nullptr, style, 0, 0, 10, 10, parent, nullptr, nullptr, nullptr);
  };
  const auto begin = [&] {
    const HWND gone = MakeField(60);
    EXPECT_TRUE(DestroyWindow(gone));
    RECT rect;
    EXPECT_FALSE(DestroyWindow(gone));
    EXPECT_FALSE(GetClientRect(gone, &rect));
    EXPECT_EQ(SendMessageW(gone, WM_SETTEXT, 0, 0), 0);
    EXPECT_EQ(SetFocus(gone), nullptr);
    EXPECT_EQ(make(TEXT("EDIT"), WS_CHILD, gone), nullptr);
    EXPECT_EQ(make(TEXT("EDIT"), WS_CHILD, nullptr), nullptr);
    EXPECT_EQ(make(TEXT("UNKNOWN"), 0, nullptr), nullptr);
    EXPECT_EQ(MakeBar(99), nullptr);
    WNDCLASSW description{};
    description.lpszClassName = TEXT("tester");
    description.lpfnWndProc = DefWindowProcW;
    EXPECT_EQ(RegisterClassW(&description), 0) << "the class exists, whatever the case";
    description.lpszClassName = TEXT("SHY");
    description.lpfnWndProc = [](HWND, UINT message, WPARAM, LPARAM) -> LRESULT {
      return message == WM_CREATE ? -1 : 0;
    };
    EXPECT_NE(RegisterClassW(&description), 0);
    EXPECT_EQ(make(TEXT("SHY"), 0, nullptr), nullptr) << "its procedure refuses to be created";
    const HWND field = MakeField(60);
    SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(TEXT("text")));
    WCHAR text[4];
    EXPECT_EQ(GetWindowTextW(field, text, 4), 3);
    EXPECT_EQ(std::u16string(text), u"tex") << "what fits";
    EXPECT_EQ(phone::Look().windows, 2);
  };
  Play(begin, {});
}

}  // namespace
