/// \file
/// Texts on the desktop's clipboard.
#pragma once

#include <string>
#include <string_view>

namespace sdl {

/// The text on the clipboard, at most what a field could hold many times over. Empty when there is none.
std::u16string ClipboardText();
/// False when the desktop has not taken it.
bool SetClipboardText(std::u16string_view text);

}  // namespace sdl
