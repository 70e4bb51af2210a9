#include "themes/apply.h"

#include "theme_test.h"

namespace {

TEST(ApplyScheme, TellsTheLayoutInUseWhateverTheCase) {
  constexpr char16_t kKey[] = u"ControlPanel\\Home";
  const struct {
    const char16_t* scheme;  // null: none
    std::size_t writes;
    bool succeeds;
  } cases[] = {{u"\\other.home.xml", 1, true}, {u"\\HOME\\X.home.xml", 2, true}, {nullptr, 0, false}};
  for (const auto& test : cases) {
    OnPhone([&](TestHost&, const auto&) {
      if (test.scheme) phone::RegistrySet(kKey, u"Scheme", test.scheme);
      EXPECT_EQ(SUCCEEDED(ApplyScheme(TEXT("\\home\\x.home.xml"))), test.succeeds);
      EXPECT_EQ(phone::Look().registry_writes.size(), test.writes);
      EXPECT_EQ(phone::Look().broadcasts.size(), test.writes);
    });
  }
}

}  // namespace
