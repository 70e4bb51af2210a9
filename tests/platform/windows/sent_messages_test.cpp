#include <atomic>

#include "platform/windows/window_test.h"

namespace {

class SentMessagesTest : public WindowTest {
 protected:
  using Body = std::function<void()>;

  HANDLE StartWorker(Body body) {
    worker_body = std::move(body);
    return CreateThread(
        nullptr, 0,
        [](LPVOID self) -> DWORD {
          static_cast<SentMessagesTest*>(self)->worker_body();
          return 0;
        },
        this, 0, nullptr);
  }

  Body worker_body;
};

TEST_F(SentMessagesTest, AreHandledByTheThreadOfTheWindow) {
  std::atomic<LRESULT> result{0};
  bool handled_by_worker = false;
  answer = [&](UINT message, WPARAM wparam, LPARAM) -> std::optional<LRESULT> {
    if (message != WM_HOTKEY) return {};
    // Only the window's thread may paint, so this tells whose turn it is.
    handled_by_worker = !InvalidateRect(main, nullptr, FALSE);
    return static_cast<LRESULT>(wparam) + 1;
  };
  HANDLE worker = nullptr;
  Play([&] { worker = StartWorker([&] { result = SendMessageW(main, WM_HOTKEY, 41, 0); }); },
       {[] { EXPECT_TRUE(phone::LetThreadsRun()); }, [&] { phone::LetThreadsRun(); },
        [&] {
          EXPECT_EQ(result, 42);
          EXPECT_FALSE(handled_by_worker);
          CloseHandle(worker);
        }});
}

/// The program waits for its worker, which sleeps and sends, before it ends.
TEST_F(SentMessagesTest, AreHandledWhileTheProgramWaitsForItsThread) {
  int settings = 0;
  DWORD waited = 0;
  answer = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
    settings += message == WM_WININICHANGE;
    return {};
  };
  const auto begin = [&] {
    const HANDLE worker = StartWorker([&] {
      Sleep(2000);
      SendMessageW(HWND_BROADCAST, WM_WININICHANGE, 0xF2, 0);
      SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    });
    EXPECT_EQ(MsgWaitForMultipleObjectsEx(1, &worker, 500, QS_SENDMESSAGE, 0), WAIT_TIMEOUT);
    MSG message;
    while (MsgWaitForMultipleObjectsEx(1, &worker, INFINITE, QS_SENDMESSAGE, 0) != WAIT_OBJECT_0) {
      PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
      ++waited;
    }
    CloseHandle(worker);
    EXPECT_EQ(MsgWaitForMultipleObjectsEx(1, &worker, INFINITE, QS_SENDMESSAGE, 0), WAIT_FAILED);
    EXPECT_EQ(settings, 1);
    EXPECT_EQ(phone::Look().broadcasts.at(0).wparam, 0xF2u);
    EXPECT_GE(GetTickCount(), 3000u) << "the clock ran on by itself";
  };
  Play(begin, {[&] { EXPECT_EQ(host.cursor, phone::Cursor::wait) << "shown by the window's thread"; }});
  EXPECT_GE(waited, 1u);
}

TEST_F(SentMessagesTest, AreRefusedOnceTheProgramHasEnded) {
  std::atomic<int> answers{0};
  Play(
      [&] {
        CloseHandle(StartWorker([&] {
          for (int i = 0; i < 3; ++i) {
            Sleep(1000);
            answers += SendMessageW(main, WM_COMMAND, 1, 0) == 0;
          }
        }));
      },
      {});
  EXPECT_EQ(answers, 3) << "nobody waits for ever";
  EXPECT_EQ(commands.size(), 0u);
}

}  // namespace
