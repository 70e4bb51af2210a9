/// \file
/// The libraries that shape and render text, set up once for the phone.
#pragma once

#include <string_view>

#include "graphics/face.h"

using PangoLayout = struct _PangoLayout;

namespace phone {

/// Begins to look for the fonts of this machine, which takes a while, in the background. Whoever needs them waits.
void StartTextEngine();

/// False when this machine has no font that can be used: then no text is drawn.
bool HasUsableFont();

/// A line of text laid out with a face, valid until the next call; its one paragraph is its one line.
PangoLayout* LayOutLine(const Face& face, std::u16string_view text);

}  // namespace phone
