#include <sys/wait.h>

#include <new>

#include "objbase.h"
#include "shellapi.h"
#include "shlobj.h"
#include "system/com.h"
#include "system/instance.h"
#include "system_fixture.h"

namespace {

using Outside = SystemTest;
using Faults = SystemTest;

TEST_F(Outside, DocumentsAreOpenedByTheHost) {
  WriteFile(folder / "Home/page.html", "page");
  struct Row {
    const WCHAR* parameters;
    bool opened;
    std::string document;
  };
  const Row rows[] = {
      {TEXT("\\home\\PAGE.html"), true, (std::filesystem::canonical(folder) / "Home/page.html").string()},
      {TEXT("https://example.org/a?b"), true, "https://example.org/a?b"},
      {TEXT("\\missing.html"), false, (std::filesystem::canonical(folder) / "missing.html").string()},
      {TEXT("/etc/passwd"), false, ""},
      {TEXT("file:///etc/passwd"), false, ""},
      {nullptr, false, ""}};
  for (const Row& row : rows) {
    SHELLEXECUTEINFOW info = {};
    info.lpFile = TEXT("\\Windows\\viewer.exe");
    info.lpParameters = row.parameters;
    EXPECT_EQ(ShellExecuteEx(&info), row.opened ? TRUE : FALSE);
    EXPECT_EQ(host.opened.back(), std::pair(std::string("\\Windows\\viewer.exe"), row.document));
    host.opens_documents = false;
    EXPECT_FALSE(ShellExecuteEx(&info));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    host.opens_documents = true;
  }
  ASSERT_EQ(phone::Launches().size(), 2 * std::size(rows));
  EXPECT_EQ(phone::Launches()[0].parameters, u"\\home\\PAGE.html");
}

TEST_F(Outside, SpecialFoldersAndComponents) {
  WCHAR path[MAX_PATH];
  EXPECT_EQ(SHGetSpecialFolderPath(nullptr, path, CSIDL_APPDATA, FALSE), TRUE);
  EXPECT_EQ(std::u16string(path), u"\\Application Data");
  EXPECT_FALSE(SHGetSpecialFolderPath(nullptr, path, 5, FALSE));
  const CLSID class_id = {1, 2, 3, {4}};
  void* object = &path;
  EXPECT_EQ(CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &object), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(object, nullptr);
  phone::RegisterComponent(class_id, [](REFIID, void**) noexcept { return E_NOINTERFACE; });
  phone::RegisterComponent(class_id, [](REFIID, void** made) noexcept {
    *made = made;
    return S_OK;
  });
  EXPECT_EQ(CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &object), S_OK);
  EXPECT_NE(object, nullptr);
}

TEST_F(Faults, StrikeTheCallsThatWereMeant) {
  using enum phone::Operation;
  WCHAR path[MAX_PATH];
  const auto call = [&] { return ::SHGetSpecialFolderPath(nullptr, path, CSIDL_APPDATA, FALSE); };
  EXPECT_TRUE(call());
  phone::SetFault(SHGetSpecialFolderPath, 2, 1);
  const bool expected[] = {true, false, false, true};
  for (const bool result : expected) EXPECT_EQ(call() == TRUE, result);
  phone::SetFault(SHGetSpecialFolderPath, ~std::uint64_t{0}, 0);
  EXPECT_FALSE(call());
  phone::SetFault(SHGetSpecialFolderPath, 0, 0);
  EXPECT_TRUE(call());
  EXPECT_EQ(phone::CallCount(SHGetSpecialFolderPath), 7u);
  for (std::size_t i = 0; i < phone::kOperationCount; ++i) {
    const auto operation = static_cast<phone::Operation>(i);
    EXPECT_EQ(phone::OperationByName(phone::OperationName(operation)), operation);
  }
  EXPECT_EQ(phone::OperationByName("new"), Allocation);
  EXPECT_FALSE(phone::OperationByName("Allocation"));
  phone::SetFault(Allocation, 1, 1);
  delete new (std::nothrow) int;
  EXPECT_EQ(new (std::nothrow) int[4], nullptr);
  EXPECT_EQ(phone::CallCount(Allocation), 2u);
}

TEST(Instance, IsFoundByOtherProcessesAndDroppedWithItsProcess) {
  const std::string name = "test/" + std::to_string(getpid());
  ASSERT_TRUE(phone::ClaimInstance(name));
  EXPECT_FALSE(phone::RaiseOtherInstance("C\tT"));
  // Two other processes: one asks this one, the other takes the name over and dies with it.
  const auto in_child = [](auto action) {
    const pid_t child = fork();
    if (child == 0) _exit(action() ? 0 : 1);
    int status = -1;
    waitpid(child, &status, 0);
    return status == 0;
  };
  EXPECT_TRUE(in_child([&] { return !phone::ClaimInstance(name) && phone::RaiseOtherInstance("Class\tTïtle"); }));
  EXPECT_EQ(phone::TakeRaiseRequests(), std::vector<std::string>{"Class\tTïtle"});
  EXPECT_TRUE(phone::TakeRaiseRequests().empty());
  phone::ReleaseInstance();
  EXPECT_EQ(phone::RaiseDescriptor(), -1);
  EXPECT_TRUE(in_child([&] { return phone::ClaimInstance(name); }));
  EXPECT_TRUE(phone::ClaimInstance(name));
  phone::ReleaseInstance();
}

}  // namespace
