#include "windows/edit_text.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using phone::EditText;
using phone::Place;
using phone::Selecting;

/// Keys as letters: < > ( ) [ ] move by a character, by a word, to the ends; after ^ they select, and ^^ selects all;
/// - + delete a character, { } a word; | stands for the clipboard's text "x\r\ny\n"; the rest is typed.
void Work(EditText& field, std::u16string_view keys) {
  const std::map<WCHAR, Place> moves = {{u'<', Place::before},     {u'>', Place::after}, {u'(', Place::word_before},
                                        {u')', Place::word_after}, {u'[', Place::home},  {u']', Place::end}};
  const std::map<WCHAR, Place> deletes = {
      {u'-', Place::before}, {u'+', Place::after}, {u'{', Place::word_before}, {u'}', Place::word_after}};
  bool shifted = false;
  for (const WCHAR key : keys) {
    const Selecting selecting = shifted ? Selecting::yes : Selecting::no;
    const bool all = shifted && key == u'^';
    shifted = !shifted && key == u'^';
    if (all)
      field.SelectAll();
    else if (moves.contains(key))
      field.Move(moves.at(key), selecting);
    else if (deletes.contains(key))
      field.Delete(deletes.at(key));
    else if (key == u'|')
      field.Insert(u"\nx\r\n\x01y\xD800\n");
    else if (!shifted)
      field.Type(key);
  }
}

TEST(EditText, IsWorkedWithKeys) {
  struct Case {
    std::u16string_view before;
    std::u16string_view keys;
    std::u16string_view after;
    std::size_t caret;
    std::u16string_view selected = u"";
  };
  const Case cases[] = {
      {u"abc", u"x", u"abcx", 4},
      {u"abc", u"[x", u"xabc", 1},
      {u"abc", u"<-", u"ac", 1},
      {u"abc", u"[->>+", u"ab", 2},
      {u"abc", u"[-<]>+", u"abc", 3},
      {u"", u"-+<>{}()^^|", u"x y", 3},
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
      // Selecting, and what takes the place of what is selected.
      {u"abcd", u"<^<^<", u"abcd", 1, u"bc"},
      {u"abcd", u"[^>^>^<", u"abcd", 1, u"a"},
      {u"abcd", u"<^<^<x", u"axd", 2},
      {u"abcd", u"<^<^<-", u"ad", 1},
      {u"abcd", u"<^<^<}", u"ad", 1},
      {u"abcd", u"<^<^<<", u"abcd", 1},
      {u"abcd", u"<^<^<>", u"abcd", 3},
      {u"abcd", u"<<^[|", u"x ycd", 3},
      {u"abcd", u"^^", u"abcd", 4, u"abcd"},
      {u"abcd", u"^[\xD83D", u"abcd", 0, u"abcd"},
      {u"a\U0001F468\u200D\U0001F469b", u"[>^>", u"a\U0001F468\u200D\U0001F469b", 6, u"\U0001F468\u200D\U0001F469"},
      {u"ax\u0301", u"[>|", u"ax yx\u0301", 4},
      {u"a-\u0301b", u"[>+x", u"axb", 2},
      // Words.
      {u"one  two.home", u"(", u"one  two.home", 9},
      {u"one  two.home", u"((x", u"one  xtwo.home", 6},
      {u"one  two.home", u"[))", u"one  two.home", 8},
      {u"one  two!", u"^(", u"one  two!", 5, u"two!"},
      {u"one  two!", u"{{", u"", 0},
      {u"one  two", u"[>}", u"o  two", 1},
      {u"我喜欢音乐", u"^(", u"我喜欢音乐", 3, u"音乐"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(&each - cases);
    EditText field;
    field.Set(each.before);
    Work(field, each.keys);
    EXPECT_EQ(field.text(), each.after);
    EXPECT_EQ(field.caret(), each.caret);
    EXPECT_EQ(field.selected(), each.selected);
  }
}

TEST(EditText, IsBounded) {
  EditText field;
  field.Set(std::u16string(phone::kLongestFieldText - 1, u'a') + u"😀");
  EXPECT_EQ(field.text().size(), phone::kLongestFieldText - 1);
  Work(field, u"😀bc");
  EXPECT_EQ(field.text().size(), phone::kLongestFieldText);
  Work(field, u"|^<");
  EXPECT_FALSE(field.Insert(u"😀")) << "a character that does not fit takes no other's place";
  EXPECT_EQ(field.selected(), u"b");
  field.MoveTo(1, Selecting::no);
  field.MoveTo(4, Selecting::yes);
  field.Insert(u"de\u0301\u0301");
  EXPECT_EQ(field.caret(), 2u) << "a paste is cut between two characters";
}

}  // namespace
