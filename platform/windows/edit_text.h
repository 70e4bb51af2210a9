/// \file
/// The text of an edit field with its caret and selection, without the field: what each key does to them.
#pragma once

#include <string>
#include <string_view>

#include "windef.h"

namespace phone {

/// The longest text of a field, in code units.
inline constexpr std::size_t kLongestFieldText = 32767;

/// Where a key leads from the caret, in the order of reading.
enum class Place {
  before,       ///< the character before
  after,        ///< the character after
  word_before,  ///< the start of the word that the caret is in or behind
  word_after,   ///< the end of the word that the caret is in or before
  home,
  end,
};

enum class Selecting {
  no,   ///< a move of the caret leaves nothing selected
  yes,  ///< it selects what it passes
};

/// Positions are code units before them. The caret never stands inside a character.
class EditText {
 public:
  const std::u16string& text() const { return text_; }
  std::size_t caret() const { return caret_; }
  std::size_t selection_start() const { return caret_ < anchor_ ? caret_ : anchor_; }
  std::size_t selection_end() const { return caret_ < anchor_ ? anchor_ : caret_; }  ///< the start: nothing is selected
  std::u16string_view selected() const;
  /// True for a text that is read from right to left, so that the next character stands to the left.
  bool runs_leftwards() const;

  /// Replaces everything; the caret stands at the end, nothing is selected. Line breaks and tabs become blanks, other
  /// controls are dropped.
  void Set(std::u16string_view text);
  /// Types one code unit in the place of what is selected. The first half of a surrogate pair waits for the second.
  void Type(WCHAR unit);
  /// Puts a text in the place of what is selected: cleaned as by Set, without line breaks at its ends, as much of it as
  /// the field has room for. False when nothing is left of it; then nothing changes.
  bool Insert(std::u16string_view text);
  /// Removes what is selected or, where nothing is, what lies between the caret and the place. False for nothing.
  bool Delete(Place place);
  /// False when neither the caret nor the selection has changed.
  bool Move(Place place, Selecting selecting);
  bool MoveTo(std::size_t place, Selecting selecting);
  bool SelectAll();

 private:
  std::size_t Find(Place place) const;
  std::size_t Room() const;
  void Replace(std::u16string_view with);

  std::u16string text_;
  std::size_t caret_ = 0;
  std::size_t anchor_ = 0;  ///< the other end of the selection; the caret's place when nothing is selected
  WCHAR first_half_ = 0;    ///< of a pair that is being typed; 0 for none
};

}  // namespace phone
