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
    const std::pair<std::string, std::string> files[] = {
        {"b.home.xml", Layout("Twin")},
        {"a.home.xml", "<?xml version='1.0'?><!--c--><?home?><Home><title>Twin</title></Home>"},
        {"f.home.xml", ""},
        {"sub/h.home.xml", Layout("Deeper")},
        {std::string(230, 'j') + ".home.xml", Layout("Too long a path")},
    };
    for (const auto& [name, content] : files) WriteFile(home / name, content);
    std::filesystem::create_directories(home / "i.home.xml");
    Ring<ThemeRecord> ring;
    for (int pass = 0; pass < 2; ++pass) {
      EXPECT_EQ(LoadThemeCatalog(kApplicationData, ring.head), S_OK);
      EXPECT_EQ(Fields(ring, &ThemeRecord::fileName), (Texts{"a.home.xml", "b.home.xml"}));
    }
    EXPECT_EQ(Fields(ring, &ThemeRecord::title), (Texts{"Twin", "Twin"}));
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
      {Operation::get_length, 4, S_FALSE, {"A"}},
      {Operation::get_text, 2, S_FALSE, {"A", "B"}},
  };
  OnPhone([&](TestHost&, const std::filesystem::path& folder) {
    for (const char* name : {"A", "B", "C"})
      WriteFile(HomeFolder(folder) / (std::string(name) + ".home.xml"), Layout(name));
    Ring<ThemeRecord> ring;
    for (const auto& test : cases) {
      phone::SetFault(test.operation, 1, test.after);
      const HRESULT status = LoadThemeCatalog(kApplicationData, ring.head);
      EXPECT_TRUE(test.status == S_FALSE ? FAILED(status) : status == test.status)
          << phone::OperationName(test.operation);
      EXPECT_EQ(Fields(ring, &ThemeRecord::title), test.titles) << phone::OperationName(test.operation);
    }
  });
}

}  // namespace
