/// \file
/// What hands do to the phone, in the order they do it. Input waits until the program has handled what came before.
#pragma once

#include <bitset>
#include <deque>

#include "phone.h"
#include "windows.h"

namespace phone {

enum class InputKind {
  press,        ///< value: the key
  release,      ///< value: the key
  character,    ///< value: the code unit
  menu_choice,  ///< value: the item's position
  box_answer,   ///< value: IDOK, IDYES, IDNO
  command,      ///< value: the command, for the main window
  hotkey_down,  ///< value: the key, for the main window
  hotkey_up,
  click,  ///< at a place of the screen; value: how many fields it may still pass on its way
  drag,   ///< to a place of the screen
  come_back,
  close,
};

struct Input {
  InputKind kind;
  UINT value = 0;
  KeyModifiers modifiers = {};
  POINT at = {};  ///< px, on the screen
};

inline constexpr std::size_t kKeyCodes = 0x10000;

struct InputQueue {
  std::deque<Input> waiting;
  std::bitset<kKeyCodes> held;  ///< keys that are down
  std::bitset<kKeyCodes> kept;  ///< keys whose press the phone kept for itself, so that it keeps the release too
  HWND back_bar = nullptr;      ///< the soft-key bar that had the press of the Back key; null for none
  KeyModifiers modifiers;       ///< of the input handled last
  HWND dragged = nullptr;       ///< the field in which the pointer was pressed last; null for none
};

/// Hands the first waiting input to a menu, a message box, the shell or the window with the focus. False when there is
/// none.
bool HandleNextInput();

}  // namespace phone
