/// \file
/// The EDIT class: one line of text that the focus can be given to.
#pragma once

#include "windows.h"
#include "windows/edit_text.h"

namespace phone {

struct Window;

struct EditControl {
  EditText content;
  int scroll = 0;  ///< px of the text hidden to the left
};

inline constexpr std::u16string_view kEditClass = u"EDIT";

LRESULT CALLBACK EditProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

/// Puts the caret where a pointer is, px from the field's left edge.
void PutCaretAt(Window& field, int x, Selecting selecting);
/// Where the caret stands, px in the field, once the text is scrolled so that it is in view.
RECT CaretRect(Window& field);

/// Draws a field onto its surface, with its selection, and its caret when it has the focus, and keeps the caret in
/// view.
void DrawField(Window& field, bool focused);

}  // namespace phone
