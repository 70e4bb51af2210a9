#include "themes/catalog.h"

#include "theme_test.h"

namespace {

constexpr LPCWSTR kApplicationData = TEXT("\\Application Data");

std::string Layout(const std::string& title) {
  return "<home><title>" + title + "</title></home>";
}

TEST(Catalog, ListsLayoutFilesOfEveryKind) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    const std::filesystem::path home = HomeFolder(folder);
    WriteBytes(home / "b.home.xml", Layout("Twin"));
    WriteBytes(home / "a.home.xml", "<?xml version='1.0'?><!--c--><?home?><Home><title>Twin</title></Home>");
    WriteBytes(home / "C.HOME.XML", "<HOME/>");
    WriteBytes(home / "d.home.xml", "<home><title>torn");
    WriteBytes(home / "e.home.xml", "<house><title>Other</title></house>");
    WriteBytes(home / "f.home.xml", "");
    WriteBytes(home / "g.xml", Layout("Not a layout's name"));
    WriteBytes(home / "sub" / "h.home.xml", Layout("Deeper"));
    std::filesystem::create_directories(home / "i.home.xml");
    WriteBytes(home / (std::string(230, 'j') + ".home.xml"), Layout("Too long a path"));
    Ring<ThemeRecord> ring;
    for (int pass = 0; pass < 2; ++pass) {
      EXPECT_EQ(LoadThemeCatalog(kApplicationData, ring.head), S_OK);
      EXPECT_EQ(Fields(ring, &ThemeRecord::title), (Texts{"Twin", "Twin", "Unknow"}));
    }
    EXPECT_EQ(Fields(ring, &ThemeRecord::fileName), (Texts{"a.home.xml", "b.home.xml", "C.HOME.XML"}));
    EXPECT_EQ(Utf8(ring.head->path.units), "\\Application Data\\Home\\a.home.xml");
    EXPECT_TRUE(ring.head->document);
  });
}

TEST(Catalog, KeepsWhatItFoundBeforeAFailure) {
  const struct {
    Operation operation;
    std::uint64_t after;
    HRESULT status;  // S_FALSE: any failure
    Texts titles;
  } cases[] = {
      {Operation::FindFirstFileW, 0, E_OUTOFMEMORY, {}},
      {Operation::Allocation, 1, E_OUTOFMEMORY, {"A"}},
      {Operation::load, 1, S_OK, {"A", "C"}},
      {Operation::CoCreateInstance, 0, S_OK, {"B", "C"}},
      {Operation::FindNextFileW, 1, S_OK, {"A", "B"}},
      {Operation::get_childNodes, 2, S_FALSE, {"A"}},
      {Operation::get_childNodes, 3, S_FALSE, {"A"}},
      {Operation::get_length, 4, S_FALSE, {"A"}},
      {Operation::get_text, 2, S_FALSE, {"A", "B"}},
  };
  OnPhone([&](TestHost&, const std::filesystem::path& folder) {
    for (const char* name : {"A", "B", "C"})
      WriteBytes(HomeFolder(folder) / (std::string(name) + ".home.xml"), Layout(name));
    Ring<ThemeRecord> ring;
    for (const auto& test : cases) {
      phone::SetFault(test.operation, 1, test.after);
      const HRESULT status = LoadThemeCatalog(kApplicationData, ring.head);
      if (test.status == S_FALSE)
        EXPECT_TRUE(FAILED(status)) << phone::OperationName(test.operation);
      else
        EXPECT_EQ(status, test.status) << phone::OperationName(test.operation);
      EXPECT_EQ(Fields(ring, &ThemeRecord::title), test.titles) << phone::OperationName(test.operation);
    }
  });
}

TEST(Catalog, IsEmptyWithoutItsFolder) {
  OnPhone([](TestHost&, const auto&) {
    Ring<ThemeRecord> ring;
    EXPECT_EQ(LoadThemeCatalog(kApplicationData, ring.head), S_OK);
    EXPECT_EQ(ring.head, nullptr);
    FixedText<MAX_PATH> folder;
    EXPECT_TRUE(FindApplicationData(nullptr, folder));
    EXPECT_EQ(Utf8(folder.units), Utf8(kApplicationData));
    phone::SetFault(Operation::SHGetSpecialFolderPath, 1, 0);
    EXPECT_FALSE(FindApplicationData(nullptr, folder));
  });
}

}  // namespace
