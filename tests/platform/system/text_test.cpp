#include "system/text.h"

#include <gtest/gtest.h>

#include <climits>

#include "shlwapi.h"
#include "strsafe.h"

namespace {

TEST(Text, ConvertsOnlyWhatIsValid) {
  for (const std::string text : {"", "abc", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x99\x82"})
    EXPECT_EQ(phone::ToUtf8(phone::ToUtf16(text).value()), text);
  for (const std::string text : {"\xFF", "a\xC3", "\xED\xA0\x80", "\xC0\x80"})
    EXPECT_FALSE(phone::ToUtf16(text)) << text;
  EXPECT_FALSE(phone::ToUtf8(u"a\xD83D"));
  EXPECT_EQ(phone::ToUtf8Lossy(u"a\xD83Dz"), "a\xEF\xBF\xBDz");
}

TEST(Text, ComparesWithoutRegardToCase) {
  struct Row {
    std::u16string_view a, b;
    int order;
  };
  const Row rows[] = {{u"ABC.Home", u"abc.hOME", 0},
                      {u"ÄÖÜ Ж Σ", u"äöü ж ς", 0},
                      {u"\U00010400", u"\U00010428", 0},
                      {u"ab", u"abc", -1},
                      {u"", u"a", -1},
                      {u"b", u"A", 1},
                      {u"\xFFFD", u"\U0001F642", 1}};
  for (const Row& row : rows) {
    EXPECT_EQ(phone::CompareFolded(row.a, row.b), row.order);
    // The order is that of folded texts, which listings are sorted by.
    const int folded = phone::FoldCase(row.a).compare(phone::FoldCase(row.b));
    EXPECT_EQ((folded > 0) - (folded < 0), row.order);
  }
}

TEST(Text, CutsNeverInsideASurrogatePair) {
  EXPECT_EQ(phone::CutLength(u"a\U0001F642b", 2), 1u);
  EXPECT_EQ(phone::CutLength(u"a\U0001F642b", 3), 3u);
  EXPECT_EQ(phone::CutLength(u"\U0001F642", 0), 0u);
  WCHAR text[4] = {};
  EXPECT_EQ(StringCchCopyW(text, 4, TEXT("ab\U0001F642")), STRSAFE_E_INSUFFICIENT_BUFFER);
  EXPECT_EQ(std::u16string(text), u"ab");
  EXPECT_EQ(StringCchCatW(text, 4, TEXT("c")), S_OK);
  EXPECT_EQ(StringCchCatW(text, 4, TEXT("d")), STRSAFE_E_INSUFFICIENT_BUFFER);
  EXPECT_EQ(std::u16string(text), u"abc");
  EXPECT_EQ(StringCchCopyW(text, 0, TEXT("x")), STRSAFE_E_INVALID_PARAMETER);
}

TEST(Arithmetic, MulDivRoundsHalvesAwayFromZero) {
  EXPECT_EQ(MulDiv(5, 1, 2), 3);
  EXPECT_EQ(MulDiv(-5, 1, 2), -3);
  EXPECT_EQ(MulDiv(5, 1, -2), -3);
  EXPECT_EQ(MulDiv(7, 100, 300), 2);
  EXPECT_EQ(MulDiv(INT_MIN, INT_MIN, INT_MIN), INT_MIN);
  EXPECT_EQ(MulDiv(INT_MAX, 2, 1), -1);
  EXPECT_EQ(MulDiv(1, 1, 0), -1);
}

TEST(Paths, AreTakenApart) {
  struct Row {
    std::u16string path, folder, bare;
  };
  const Row rows[] = {{u"\\Program Files\\App\\app.exe", u"\\Program Files\\App", u"\\Program Files\\App\\app"},
                      {u"\\a.b.plg", u"\\", u"\\a.b"},
                      {u"name", u"", u"name"},
                      {u"\\dotted.folder\\name", u"\\dotted.folder", u"\\dotted.folder\\name"},
                      {u"", u"", u""}};
  for (const Row& row : rows) {
    std::u16string folder = row.path, bare = row.path;
    PathRemoveFileSpecW(folder.data());
    EXPECT_EQ(std::u16string(folder.c_str()), row.folder);
    PathRemoveExtensionW(bare.data());
    EXPECT_EQ(std::u16string(bare.c_str()), row.bare);
  }
}

}  // namespace
