/// \file
/// Device contexts.
#pragma once

#include <string>

#include "graphics/bitmap.h"
#include "graphics/font.h"

namespace phone {

class DeviceContext : public GraphicsObject {
 public:
  DeviceContext() : GraphicsObject(ObjectKind::context) {}

  Ref<Bitmap> bitmap;
  Ref<Font> font;
  COLORREF text_color = 0;
  bool transparent = false;
  bool memory = true;          ///< a memory context; else one that draws on a surface
  unsigned memory_number = 0;  ///< memory contexts are numbered from 1, for the draw trace
  std::string name;            ///< of a context that draws on a surface
};

/// The context that was found last: the calls that draw come in runs for one of them.
extern DeviceContext* recent_context;

inline DeviceContext* FindContext(HDC dc) noexcept {
  if (recent_context != nullptr && recent_context->handle == dc) return recent_context;
  DeviceContext* const found = Find<DeviceContext>(dc, ObjectKind::context);
  if (found != nullptr) recent_context = found;
  return found;
}

/// A new context with the stock font. Throws std::bad_alloc.
Ref<DeviceContext> MakeContext(Ref<Bitmap> bitmap);

/// Memory contexts are numbered from 1 again.
void RestartContextNumbers() noexcept;

}  // namespace phone
