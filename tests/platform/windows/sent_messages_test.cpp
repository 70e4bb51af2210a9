#include <atomic>

#include "platform/windows/window_test.h"

namespace {

class SentMessagesTest : public WindowTest {
 protected:
  HANDLE StartWorker(Step body) {
    worker_body = std::move(body);
    return CreateThread(
        nullptr, 0,
        [](LPVOID self) -> DWORD {
          static_cast<SentMessagesTest*>(self)->worker_body();
          return 0;
        },
        this, 0, nullptr);
  }

  Step worker_body;
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
