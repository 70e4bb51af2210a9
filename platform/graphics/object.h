/// \file
/// Handles: names of the graphics objects that the program holds. A handle is looked up and never followed, so that a
/// bad one is found out.
#pragma once

#include <cstddef>
#include <cstdint>

#include "graphics/counted.h"
#include "wingdi.h"

namespace phone {

enum class ObjectKind : std::uint8_t { context, bitmap, font, brush };

class GraphicsObject : public Counted {
 public:
  explicit GraphicsObject(ObjectKind of_kind) noexcept : kind(of_kind) {}

  const ObjectKind kind;
  bool stock = false;       ///< the phone's own: never deleted
  HANDLE handle = nullptr;  ///< stays here after the handle was closed
};

/// Gives the object a handle, which shares it. Throws std::bad_alloc.
HANDLE OpenHandle(GraphicsObject& object);
/// The handle is no longer good; the object lives on while something else shares it.
void CloseObjectHandle(HANDLE handle) noexcept;
/// Null for a handle that is not good.
GraphicsObject* FindObject(const void* handle) noexcept;
/// How many handles are open, the phone's own included.
std::size_t OpenHandles() noexcept;

/// The object behind a handle; null when it is not of that kind.
template <typename T>
T* Find(const void* handle, ObjectKind kind) noexcept {
  GraphicsObject* object = FindObject(handle);
  return object != nullptr && object->kind == kind ? static_cast<T*>(object) : nullptr;
}

}  // namespace phone
