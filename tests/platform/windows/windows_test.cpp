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
    EXPECT_EQ(phone::Look().windows, 1);
  };
  Play(begin, {});
}

TEST_F(Windows, FailWhenTold) {
  using phone::Operation;
  const auto begin = [&] {
    for (const Operation operation :
         {Operation::CreateWindowExW, Operation::SHCreateMenuBar, Operation::LoadStringW, Operation::RegisterClassW})
      phone::SetFault(operation, 1, 0);
    WCHAR text[8];
    WNDCLASSW description{};
    description.lpszClassName = TEXT("OTHER");
    description.lpfnWndProc = DefWindowProcW;
    EXPECT_EQ(MakeField(60), nullptr);
    EXPECT_EQ(MakeBar(kListBar), nullptr);
    EXPECT_EQ(LoadStringW(nullptr, 1, text, 8), 0);
    EXPECT_EQ(RegisterClassW(&description), 0);
    EXPECT_NE(MakeField(60), nullptr);
    EXPECT_NE(MakeBar(kListBar), nullptr);
    EXPECT_EQ(phone::CallCount(Operation::LoadStringW), 1u) << "a bar's labels are not the program's calls";
    EXPECT_EQ(phone::CallCount(Operation::CreateWindowExW), 3u) << "the main window and two fields; no bar";
  };
  Play(begin, {});
}

TEST_F(Windows, AreSiblingsInTheOrderOfTheirCreation) {
  const auto begin = [&] {
    const HWND upper = MakeField(60);
    const HWND lower = MakeField(140);
    EXPECT_EQ(GetWindow(upper, GW_HWNDNEXT), lower);
    EXPECT_EQ(GetWindow(lower, GW_HWNDNEXT), nullptr);
    EXPECT_EQ(GetWindow(lower, GW_HWNDPREV), upper);
    EXPECT_EQ(GetWindow(upper, GW_HWNDPREV), nullptr);
    EXPECT_EQ(GetWindow(lower, GW_HWNDFIRST), upper);
    EXPECT_EQ(GetWindow(upper, GW_HWNDLAST), lower);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(upper, GWL_STYLE)), 0x50010080u);
    EXPECT_EQ(GetWindowLongW(main, GWL_STYLE) & WS_CHILD, 0u);
  };
  Play(begin, {});
}

TEST_F(Windows, FillTheClientAreaAndFollowIt) {
  RECT rect{};
  const auto begin = [&] {
    GetClientRect(main, &rect);
    EXPECT_EQ(rect.right, 240);
    EXPECT_EQ(rect.bottom, 278);
  };
  Play(begin, {[&] { phone::ResizeClient(320, 198); },
               [&] {
                 GetClientRect(main, &rect);
                 EXPECT_EQ(rect.right, 320);
                 EXPECT_EQ(phone::Screen().width, 320);
                 EXPECT_EQ(phone::Screen().height, 240);
                 EXPECT_EQ(phone::Client().height, 198);
               }});
  EXPECT_EQ(painted, 2) << "a new size is painted anew";
}

TEST_F(Windows, FindTheRunningInstance) {
  const auto begin = [&] {
    EXPECT_EQ(FindWindowW(TEXT("TESTER"), TEXT("Tester")), main);
    EXPECT_EQ(FindWindowW(TEXT("TESTER"), TEXT("Other")), nullptr);
    EXPECT_TRUE(SetForegroundWindow(reinterpret_cast<HWND>(reinterpret_cast<std::uintptr_t>(main) | 1)));
    EXPECT_FALSE(SetForegroundWindow(nullptr));
  };
  Play(begin, {});
}

}  // namespace
