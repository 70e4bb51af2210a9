#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>

#include "system/names.h"
#include "system_fixture.h"

namespace {

namespace fs = std::filesystem;
using Files = SystemTest;

std::string Read(std::u16string_view path) {
  std::vector<std::byte> content;
  const DWORD error = phone::ReadWholeFile(path, content);
  if (error != ERROR_SUCCESS) return "error " + std::to_string(error);
  return {reinterpret_cast<const char*>(content.data()), content.size()};
}

/// The names that a search gives, each with a blank after it, folders in brackets.
std::string Search(const std::u16string& pattern) {
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW(pattern.c_str(), &found);
  if (!search) return "no search";
  if (search == INVALID_HANDLE_VALUE) return "nothing " + std::to_string(GetLastError());
  std::string names;
  do {
    std::string name;
    for (const WCHAR* unit = found.cFileName; *unit; ++unit) name += static_cast<char>(*unit);
    names += (found.dwFileAttributes == FILE_ATTRIBUTE_DIRECTORY ? '[' + name + ']' : name) + ' ';
  } while (FindNextFileW(search, &found));
  EXPECT_EQ(GetLastError(), ERROR_NO_MORE_FILES);
  EXPECT_TRUE(FindClose(search));
  EXPECT_FALSE(FindClose(search));
  return names;
}

TEST_F(Files, NamesMatchWithoutRegardToCaseTheExactOneFirst) {
  WriteFile(folder / "Home/One.xml", "one");
  WriteFile(folder / "Home/b.xml", "small");
  WriteFile(folder / "Home/B.XML", "capital");
  EXPECT_EQ(Read(u"\\hOME\\oNE.xml"), "one");
  EXPECT_EQ(Read(u"\\Home\\b.xml"), "small");
  EXPECT_EQ(Read(u"\\Home\\B.XML"), "capital");
  EXPECT_EQ(Read(u"\\Home\\B.xml"), "capital");
  EXPECT_EQ(phone::HostPath(u"\\home\\ONE.XML"), fs::canonical(folder) / "Home/One.xml");
  EXPECT_EQ(Write(u"\\HOME\\ONE.XML", "new"), ERROR_SUCCESS);
  EXPECT_EQ(Content(folder / "Home/One.xml"), "new");
  EXPECT_EQ(CountIn(folder / "Home"), 3);
}

TEST_F(Files, ListingsFollowEveryChange) {
  WriteFile(folder / "Home/A", "1");
  std::this_thread::sleep_for(std::chrono::milliseconds(80));
  EXPECT_EQ(Read(u"\\Home\\a"), "1");  // the listing is kept from here on
  ASSERT_EQ(Write(u"\\Home\\New", "2"), ERROR_SUCCESS);
  EXPECT_EQ(Read(u"\\Home\\nEW"), "2");
  ASSERT_TRUE(DeleteFileW(TEXT("\\Home\\a")));
  EXPECT_EQ(Read(u"\\Home\\a"), "error 2");
  ASSERT_TRUE(CreateDirectoryW(TEXT("\\Home\\Sub\\"), nullptr));
  EXPECT_EQ(Write(u"\\home\\sub\\x", "3"), ERROR_SUCCESS);
  // Others change the folder within one tick of its clock.
  for (int i = 0; i < 50; ++i) {
    const std::string name = "OUTSIDE" + std::to_string(i);
    WriteFile(folder / "Home" / name, name);
    EXPECT_EQ(Read(u"\\Home\\outside" + std::u16string(name.begin() + 7, name.end())), name);
  }
}

TEST_F(Files, NoPathLeadsOut) {
  WriteFile(base / "secret", "secret");
  WriteFile(folder / "Home/in", "in");
  fs::create_symlink(base / "secret", folder / "Home/link");
  fs::create_directory_symlink(base, folder / "out");
  mkfifo((folder / "fifo").c_str(), 0600);
  fs::create_hard_link(folder / "Home/in", folder / (std::string(phone::kTemporaryPrefix) + "1-1"));
  const std::u16string long_name(200, u'x');
  const std::u16string paths[] = {u"\\..\\secret",
                                  u"\\Home\\..\\..\\secret",
                                  u"\\Home\\.\\in",
                                  u"/Home/in",
                                  u"\\Home/in",
                                  u"\\\\Home\\in",
                                  u"\\Home\\\\in",
                                  u"\\Home\\link",
                                  u"\\Home\\LINK",
                                  u"\\out\\secret",
                                  u"\\Home",
                                  u"\\Fifo",
                                  u"\\",
                                  u"",
                                  u"\\Home\\in\\",
                                  u"\\Home\\in\\x",
                                  u"\\Home\\CON:",
                                  u"\\Home\\i*",
                                  u"\\Home\\i\x01n",
                                  u"\\Home\\a\xD800",
                                  u"\\.~Writing-1-1",
                                  u"\\" + long_name + u"\\" + long_name,
                                  std::u16string(u"\\Home\\in\0", 9)};
  for (const std::u16string& path : paths) {
    EXPECT_TRUE(Read(path).starts_with("error ")) << testing::PrintToString(path);
    EXPECT_NE(Write(path, "bad"), ERROR_SUCCESS) << testing::PrintToString(path);
    EXPECT_FALSE(phone::HostPath(path));
  }
  EXPECT_EQ(Content(base / "secret"), "secret");
  EXPECT_FALSE(DeleteFileW(TEXT("\\Home\\link")));
  EXPECT_FALSE(DeleteFileW(TEXT("\\Home")));
  EXPECT_FALSE(CreateDirectoryW(TEXT("\\missing\\sub"), nullptr));
  EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
  EXPECT_FALSE(CreateDirectoryW(TEXT("\\home"), nullptr));
  EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
  EXPECT_EQ(Search(u"\\*"), "[Application Data] [Home] [Program Files] ");
  EXPECT_EQ(Search(u"\\Home\\*"), "in ");
}

TEST_F(Files, SearchesMatchAndSortFoldedNames) {
  for (const char* name :
       {"b.home.xml", "A.HOME.XML", "c.xml", "B.home.xml", "home.xml", "\xFF.home.xml", "q:.home.xml"})
    WriteFile(folder / "Home" / name, "x");
  fs::create_directory(folder / "Home/Z.home.xml");
  struct Row {
    std::u16string pattern;
    std::string names;
  };
  const Row rows[] = {{u"\\Home\\*.home.xml", "A.HOME.XML B.home.xml b.home.xml [Z.home.xml] "},
                      {u"\\home\\?.XML", "c.xml "},
                      {u"\\Home\\*h*m*.xml", "A.HOME.XML B.home.xml b.home.xml home.xml [Z.home.xml] "},
                      {u"\\Home\\C.xml", "c.xml "},
                      {u"\\Home\\*.plg", "nothing 2"},
                      {u"\\Missing\\*", "nothing 3"},
                      {u"\\Home\\c.xml\\*", "nothing 3"},
                      {u"\\Home\\..\\*", "no search"},
                      {u"\\Home\\", "no search"},
                      {u"\\Home\\<*", "no search"}};
  for (const Row& row : rows) EXPECT_EQ(Search(row.pattern), row.names);
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW(TEXT("\\Home\\*.home.xml"), &found);
  EXPECT_EQ(found.nFileSizeLow, 1u);
  ASSERT_TRUE(DeleteFileW(TEXT("\\Home\\b.home.xml")));
  phone::SetFault(phone::Operation::FindNextFileW, 1, 0);
  EXPECT_FALSE(FindNextFileW(search, &found));
  EXPECT_TRUE(FindNextFileW(search, &found));
  EXPECT_TRUE(FindNextFileW(search, &found));  // the search goes on over what was there when it began
  EXPECT_FALSE(CloseHandle(search));
  EXPECT_TRUE(FindClose(search));
  EXPECT_FALSE(FindNextFileW(search, &found));
  phone::SetFault(phone::Operation::FindFirstFileW, 1, 0);
  EXPECT_EQ(FindFirstFileW(TEXT("\\Home\\*"), &found), nullptr);
}

TEST_F(Files, ProgramDataIsSharedAndReadOnly) {
  WriteFile(base / "data/GFX/bg.png", "png");
  WriteFile(base / "data/help.html", "help");
  WriteFile(base / "data/secret.txt", "no");
  WriteFile(folder / "Program Files/App/Plugins/x.plg", "plg");
  EXPECT_EQ(Read(u"\\program files\\app\\gfx\\BG.png"), "png");
  EXPECT_EQ(Read(u"\\Program Files\\App\\HELP.html"), "help");
  EXPECT_EQ(Read(u"\\Program Files\\App\\secret.txt"), "error 2");
  EXPECT_EQ(Read(u"\\Program Files\\App\\Plugins\\x.plg"), "plg");
  EXPECT_EQ(Write(u"\\Program Files\\App\\GFX\\bg.png", "x"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(Write(u"\\Program Files\\App\\new.html", "x"), ERROR_ACCESS_DENIED);
  EXPECT_FALSE(DeleteFileW(TEXT("\\Program Files\\App\\help.html")));
  EXPECT_FALSE(CreateDirectoryW(TEXT("\\Program Files\\App\\GFX\\sub"), nullptr));
  EXPECT_EQ(Search(u"\\Program Files\\App\\*"), "[GFX] help.html [Plugins] ");
  EXPECT_EQ(Content(base / "data/GFX/bg.png"), "png");
  WCHAR module[MAX_PATH];
  EXPECT_EQ(GetModuleFileNameW(nullptr, module, MAX_PATH), 26u);
  EXPECT_EQ(GetModuleFileNameW(nullptr, module, 26), 0u);
}

TEST_F(Files, AFailedWriteLeavesTheOldFileAndNoStray) {
  WriteFile(folder / "Home/f", "old");
  chmod((folder / "Home/f").c_str(), 0640);
  phone::SetFault(phone::Operation::rename, 1, 0);
  EXPECT_NE(Write(u"\\Home\\f", "new"), ERROR_SUCCESS);
  EXPECT_EQ(Content(folder / "Home/f"), "old");
  EXPECT_EQ(CountIn(folder / "Home"), 1);
  EXPECT_EQ(Write(u"\\Home\\f", "new"), ERROR_SUCCESS);
  EXPECT_EQ(fs::status(folder / "Home/f").permissions(), fs::perms(0640));
  EXPECT_EQ(Write(u"\\Missing\\f", "new"), ERROR_PATH_NOT_FOUND);
}

TEST_F(Files, WhatMayNotBeWrittenToIsNeitherReplacedNorDeleted) {
  WriteFile(folder / "Home/f", "old");
  chmod((folder / "Home/f").c_str(), 0444);
  // The superuser may do everything, so another user tries it, who may write to the folder.
  constexpr uid_t kNobody = 65534;
  const uid_t user = geteuid();
  if (user == 0 && (chown((folder / "Home").c_str(), kNobody, kNobody) != 0 || seteuid(kNobody) != 0))
    GTEST_SKIP() << "there is no other user here";
  EXPECT_EQ(Write(u"\\Home\\f", "new"), ERROR_ACCESS_DENIED);
  EXPECT_FALSE(DeleteFileW(TEXT("\\Home\\f")));
  EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
  EXPECT_EQ(Write(u"\\Home\\g", "new"), ERROR_SUCCESS);
  EXPECT_TRUE(DeleteFileW(TEXT("\\Home\\g")));
  ASSERT_EQ(seteuid(user), 0);
  EXPECT_EQ(Content(folder / "Home/f"), "old");
}

TEST_F(Files, AFileThatClaimsAnImmenseSizeIsNotRead) {
  WriteFile(folder / "f", "x");
  fs::resize_file(folder / "f", 100 << 20);
  EXPECT_EQ(Read(u"\\f"), "error 8");
}

TEST_F(Files, StrayFilesAreRemovedAndNothingElse) {
  const std::string prefix(phone::kTemporaryPrefix);
  WriteFile(folder / "Home" / (prefix + "123-4"), "stray");
  WriteFile(folder / "Home" / (prefix + "notes"), "mine");
  WriteFile(base / (prefix + "1-1"), "outside");
  fs::create_directory_symlink(base, folder / "out");
  phone::RemoveStrayFiles();
  EXPECT_EQ(CountIn(folder / "Home"), 1);
  EXPECT_EQ(Content(base / (prefix + "1-1")), "outside");
}

class Streams : public SystemTest {
 protected:
  Streams() { WriteFile(folder / "f", "0123456789"); }
  static FILE* Open(const char16_t* mode) { return _wfopen(TEXT("\\F"), mode); }
  static int Calls(phone::Operation operation) { return static_cast<int>(phone::CallCount(operation)); }
};

TEST_F(Streams, OneCallOfTheProgramIsOneOperation) {
  char data[64];
  FILE* file = Open(TEXT("r"));
  ASSERT_TRUE(file);
  EXPECT_EQ(std::fread(data, 1, 4, file), 4u);
  EXPECT_EQ(std::fread(data, 1, sizeof data, file), 6u);
  EXPECT_EQ(Calls(phone::Operation::fread), 2);
  EXPECT_EQ(std::fwrite("x", 1, 1, file), 0u);
  EXPECT_EQ(std::fclose(file), 0);
  file = Open(TEXT("w+"));
  ASSERT_TRUE(file);
  EXPECT_EQ(std::fwrite(std::string(5000, 'a').data(), 1, 5000, file), 5000u);
  EXPECT_EQ(std::fwrite("bc", 1, 2, file), 2u);
  EXPECT_EQ(Calls(phone::Operation::fwrite), 2);
  EXPECT_EQ(Content(folder / "f"), "0123456789");
  EXPECT_EQ(std::fclose(file), 0);
  EXPECT_EQ(Content(folder / "f"), std::string(5000, 'a') + "bc");
  for (const char16_t* mode : {TEXT("a"), TEXT("x"), TEXT("")}) EXPECT_FALSE(Open(mode));
  EXPECT_FALSE(_wfopen(TEXT("\\Application Data"), TEXT("r")));
  EXPECT_FALSE(_wfopen(TEXT("\\missing\\f"), TEXT("w+")));
}

TEST_F(Streams, AFailureAtAnyStepLeavesTheOldFile) {
  using enum phone::Operation;
  for (const phone::Operation operation : {_wfopen, fwrite, fclose, rename}) {
    phone::SetFault(operation, 1, 0);
    FILE* const file = Open(TEXT("w+"));
    ASSERT_EQ(file == nullptr, operation == _wfopen);
    if (!file) continue;
    const bool written = std::fwrite("new", 1, 3, file) == 3;
    EXPECT_EQ(written, operation != fwrite);
    EXPECT_NE(std::fclose(file), 0) << phone::OperationName(operation);
    EXPECT_EQ(Content(folder / "f"), "0123456789");
    EXPECT_EQ(CountIn(folder), 3);
  }
  phone::SetFault(fread, 1, 0);
  FILE* const file = Open(TEXT("r"));
  char data[4];
  EXPECT_EQ(std::fread(data, 1, 4, file), 0u);
  EXPECT_EQ(std::fclose(file), 0);
}

}  // namespace
