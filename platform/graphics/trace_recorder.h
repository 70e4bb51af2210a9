/// \file
/// How the drawing calls get into the trace.
#pragma once

#include <string_view>

#include "graphics/context.h"
#include "graphics/trace.h"

namespace phone {

/// Records one of the blits. `width` and `height` are the source rectangle's, `blend` is null without
/// blending. Call it only while the trace is on.
void TraceBlit(DrawKind kind, const DeviceContext& target, const RECT& rect, const DeviceContext& source, int width,
               int height, const BLENDFUNCTION* blend);
void TraceText(const DeviceContext& target, const RECT& rect, std::u16string_view text, UINT format);

}  // namespace phone
