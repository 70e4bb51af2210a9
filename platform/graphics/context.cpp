#include "graphics/context.h"

#include <new>

#include "graphics/surface.h"
#include "graphics/surface_pixels.h"
#include "system/faults.h"

namespace phone {

constinit DeviceContext* recent_context = nullptr;

namespace {

unsigned contexts_made = 0;

/// What a new memory context draws on until the program selects its own bitmap.
Bitmap& StockBitmap() {
  static Bitmap* const bitmap = [] {
    Ref<Bitmap> made = Bitmap::Create(1, 1);
    if (!made) throw std::bad_alloc();
    OpenHandle(*made);
    made->stock = true;
    return made.get();
  }();
  return *bitmap;
}

HANDLE Select(DeviceContext& context, Bitmap& bitmap) {
  if (!context.memory) return nullptr;
  const HANDLE former = context.bitmap->handle;
  context.bitmap = Ref<Bitmap>(&bitmap);
  // Whoever selects a bitmap has finished filling it.
  bitmap.ForgetChecksum();
  return former;
}

HANDLE Select(DeviceContext& context, Font& font) {
  const HANDLE former = context.font->handle;
  if (context.font.get() != &font) context.font = Ref<Font>(&font);
  return former;
}

bool DeleteContext(HDC dc, bool memory) noexcept {
  const DeviceContext* context = FindContext(dc);
  if (context == nullptr || context->memory != memory) return false;
  recent_context = nullptr;
  CloseObjectHandle(dc);
  return true;
}

}  // namespace

Ref<DeviceContext> MakeContext(Ref<Bitmap> bitmap) {
  Ref<DeviceContext> context(new DeviceContext);
  context->bitmap = std::move(bitmap);
  context->font = Ref<Font>(&StockFont());
  return context;
}

void RestartContextNumbers() noexcept {
  contexts_made = 0;
}

HDC CreateSurfaceDC(Surface& surface, const char* name) {
  Ref<DeviceContext> context = MakeContext(surface.impl().bitmap);
  context->memory = false;
  context->name = name;
  return static_cast<HDC>(OpenHandle(*context));
}

void DeleteSurfaceDC(HDC dc) {
  DeleteContext(dc, false);
}

}  // namespace phone

using namespace phone;

HDC CreateCompatibleDC(HDC dc) {
  if (FaultDue(Operation::CreateCompatibleDC)) return nullptr;
  if (dc != nullptr && FindContext(dc) == nullptr) return nullptr;
  try {
    Ref<DeviceContext> context = MakeContext(Ref<Bitmap>(&StockBitmap()));
    const HANDLE handle = OpenHandle(*context);
    context->memory_number = ++contexts_made;
    return static_cast<HDC>(handle);
  } catch (...) {
    return nullptr;
  }
}

BOOL DeleteDC(HDC dc) {
  return DeleteContext(dc, true);
}

HGDIOBJ SelectObject(HDC dc, HGDIOBJ object) {
  DeviceContext* context = FindContext(dc);
  GraphicsObject* selected = FindObject(object);
  if (context == nullptr || selected == nullptr) return nullptr;
  switch (selected->kind) {
    case ObjectKind::bitmap: return Select(*context, static_cast<Bitmap&>(*selected));
    case ObjectKind::font: return Select(*context, static_cast<Font&>(*selected));
    default: return nullptr;
  }
}

COLORREF SetTextColor(HDC dc, COLORREF color) {
  constexpr COLORREF kInvalidColor = 0xFFFFFFFF;
  DeviceContext* context = FindContext(dc);
  if (context == nullptr) return kInvalidColor;
  return std::exchange(context->text_color, color & 0xFFFFFF);
}

int SetBkMode(HDC dc, int mode) {
  DeviceContext* context = FindContext(dc);
  if (context == nullptr || (mode != TRANSPARENT && mode != OPAQUE)) return 0;
  return std::exchange(context->transparent, mode == TRANSPARENT) ? TRANSPARENT : OPAQUE;
}
