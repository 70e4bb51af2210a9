#include "themes/apply.h"

#include "theme_test.h"

namespace {

constexpr char16_t kKey[] = u"ControlPanel\\Home";
constexpr LPCWSTR kPath = TEXT("\\Application Data\\Home\\x.home.xml");
constexpr char kPathText[] = "\\Application Data\\Home\\x.home.xml";

/// What was done to the outside: "tick text" for a registry write, "tick broadcast" for a broadcast.
Texts Deeds() {
  const phone::State state = phone::Look();
  Texts deeds;
  auto broadcast = state.broadcasts.begin();
  const auto tellBroadcasts = [&](DWORD until) {
    for (; broadcast != state.broadcasts.end() && broadcast->tick < until; ++broadcast) {
      EXPECT_EQ(broadcast->message, WM_WININICHANGE);
      EXPECT_EQ(broadcast->wparam, 0xF2u);
      deeds.push_back(std::to_string(broadcast->tick) + " broadcast");
    }
  };
  for (const phone::RegistryWrite& write : state.registry_writes) {
    tellBroadcasts(write.tick);
    deeds.push_back(std::to_string(write.tick) + " " + Utf8(write.text));
  }
  tellBroadcasts(0xFFFFFFFF);
  return deeds;
}

TEST(ApplyScheme, WritesAndBroadcasts) {
  const std::string path = kPathText;
  const struct {
    const char16_t* scheme;  // null: none
    Operation fault;
    std::uint64_t after;  // 9: no fault
    bool succeeds;
    Texts deeds;
    DWORD ends;
  } cases[] = {
      {u"\\other.home.xml", Operation::load, 9, true, {"1000 " + path, "1000 broadcast"}, 1000},
      {u"\\APPLICATION DATA\\home\\X.home.xml",
       Operation::load,
       9,
       true,
       {"1000 temp.home.xml", "1000 broadcast", "3000 " + path, "3000 broadcast"},
       5000},
      {nullptr, Operation::load, 9, false, {}, 1000},
      {u"\\other.home.xml", Operation::RegistryGetString, 0, false, {}, 1000},
      {u"\\other.home.xml", Operation::RegistrySetString, 0, false, {}, 1000},
      {kPath, Operation::RegistrySetString, 0, false, {}, 1000},
      {kPath, Operation::RegistrySetString, 1, false, {"1000 temp.home.xml", "1000 broadcast"}, 3000},
  };
  for (const auto& test : cases) {
    OnPhone([&](TestHost& host, const auto&) {
      if (test.scheme) phone::RegistrySet(kKey, u"Scheme", test.scheme);
      if (test.after != 9) phone::SetFault(test.fault, 1, test.after);
      EXPECT_EQ(SUCCEEDED(ApplyScheme(kPath)), test.succeeds);
      EXPECT_EQ(Deeds(), test.deeds);
      EXPECT_EQ(host.tick, test.ends);
      EXPECT_EQ(phone::Look().cursor, phone::Cursor::wait);
    });
  }
}

/// What the test's worker shares with the thread that started it.
struct Work {
  std::atomic<HANDLE> worker{nullptr};
  HANDLE waitHandle = nullptr;
  std::atomic<int> runs{0};
};

DWORD WINAPI Worker(LPVOID parameter) {
  Work& work = *static_cast<Work*>(parameter);
  if (!work.worker.load()) return 0;
  ++work.runs;
  Sleep(500);
  SendMessageW(HWND_BROADCAST, WM_WININICHANGE, 0, 0);
  EndApply(work.worker);
  return 0;
}

TEST(Worker, IsStoredBeforeItRunsAndCanBeWaitedFor) {
  OnPhone([](TestHost& host, const auto&) {
    Work work;
    for (int i = 1; i <= 2; ++i) {
      SetCursor(LoadCursorW(nullptr, IDC_WAIT));
      ASSERT_TRUE(StartWorker(Worker, &work, work.worker, work.waitHandle));
      EXPECT_NE(work.worker.load(), nullptr);
      EXPECT_NE(work.waitHandle, work.worker.load());
      WaitForWorker(work.waitHandle);
      EXPECT_EQ(work.worker.load(), nullptr);
      EXPECT_EQ(work.waitHandle, nullptr);
      EXPECT_EQ(work.runs, i);
      EXPECT_EQ(host.tick, 1000u + 500u * static_cast<unsigned>(i));
      MSG message;
      PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
      EXPECT_EQ(phone::Look().cursor, phone::Cursor::none);
    }
    WaitForWorker(work.waitHandle);
    phone::SetFault(Operation::CreateThread, 1, 0);
    EXPECT_FALSE(StartWorker(Worker, &work, work.worker, work.waitHandle));
    EXPECT_EQ(work.worker.load(), nullptr);
    EXPECT_EQ(work.waitHandle, nullptr);
  });
}

}  // namespace
