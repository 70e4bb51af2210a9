#include "windows/edit_text.h"

#include <gtest/gtest.h>

namespace {

using phone::EditText;

/// Keys as letters: < > [ ] move left, right, home, end; - deletes before, + after the caret; the rest is typed.
void Work(EditText& field, std::u16string_view keys) {
  for (const WCHAR key : keys) switch (key) {
      case u'<': field.MoveLeft(); break;
      case u'>': field.MoveRight(); break;
      case u'[': field.MoveHome(); break;
      case u']': field.MoveEnd(); break;
      case u'-': field.DeleteBefore(); break;
      case u'+': field.DeleteAfter(); break;
      default: field.Type(key);
    }
}

TEST(EditText, IsWorkedCharacterByCharacter) {
  struct Case {
    std::u16string_view before;
    std::u16string_view keys;
    std::u16string_view after;
    std::size_t caret;
  };
  const Case cases[] = {
      {u"abc", u"x", u"abcx", 4},
      {u"abc", u"[x", u"xabc", 1},
      {u"abc", u"<-", u"ac", 1},
      {u"abc", u"[->>+", u"ab", 2},
      {u"abc", u"[-<]>+", u"abc", 3},
      {u"", u"-+<>", u"", 0},
      {u"a😀b", u"<<x", u"ax😀b", 2},
      {u"a😀", u"-", u"a", 1},
      {u"a", u"😀", u"a😀", 3},
      {u"ab", u"<😀", u"a😀b", 3},
      {u"e\u0301x", u"[>+", u"e\u0301", 2},
      {u"e\u0301", u"-", u"", 0},
      {u"a", u"\x08\x0D\x1B\x7F\u2028", u"a", 1},
      {u"a\r\nb\tc\x01", u"", u"a b c", 5},
      {u"",
       u"\xDE00\xD83D"
       u"a\xDE00",
       u"a", 1},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(&each - cases);
    EditText field;
    field.Set(each.before);
    Work(field, each.keys);
    EXPECT_EQ(field.text(), each.after);
    EXPECT_EQ(field.caret(), each.caret);
  }
}

TEST(EditText, IsBounded) {
  EditText field;
  field.Set(std::u16string(phone::kLongestFieldText - 1, u'a') + u"😀");
  EXPECT_EQ(field.text().size(), phone::kLongestFieldText - 1);
  Work(field, u"😀bc");
  EXPECT_EQ(field.text().size(), phone::kLongestFieldText);
}

}  // namespace
