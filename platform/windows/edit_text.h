/// \file
/// The text of an edit field and its caret, without the field: what each key does to them.
#pragma once

#include <string>
#include <string_view>

#include "windef.h"

namespace phone {

/// The longest text of a field, in code units.
inline constexpr std::size_t kLongestFieldText = 32767;

class EditText {
 public:
  const std::u16string& text() const { return text_; }
  std::size_t caret() const { return caret_; }  ///< code units before it; never inside a character

  /// Replaces everything; the caret stands at the end. Line breaks and tabs become blanks, other controls are dropped.
  void Set(std::u16string_view text);
  /// Types one code unit before the caret. The first half of a surrogate pair waits for the second.
  void Type(WCHAR unit);
  /// Removes the character before, or after, the caret. False when there is none.
  bool DeleteBefore();
  bool DeleteAfter();
  bool MoveLeft();
  bool MoveRight();
  bool MoveHome();
  bool MoveEnd();

 private:
  std::size_t CharacterBefore() const;
  std::size_t CharacterAfter() const;
  bool MoveTo(std::size_t caret);

  std::u16string text_;
  std::size_t caret_ = 0;
  WCHAR first_half_ = 0;  ///< of a pair that is being typed; 0 for none
};

}  // namespace phone
