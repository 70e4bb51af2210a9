/// \file
/// Handles: names of the graphics objects that the program holds. A handle is looked up and never followed, so that a
/// bad one is found out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

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

// A handle's value: the slot's number from 1 in the low bits, above it how often the slot was used before. Neither is
// ever the value of a handle of another room in practice, and an old handle does not find the slot's next object.
inline constexpr unsigned kSlotBits = 24;
inline constexpr std::uintptr_t kSlotMask = (std::uintptr_t{1} << kSlotBits) - 1;

struct HandleSlot {
  Ref<GraphicsObject> object;
  std::uintptr_t generation = 0;
};

/// The slots of all handles; the first handle makes it, and it outlives every static object that may hold handles.
struct HandleTable {
  std::vector<HandleSlot> slots;
  std::vector<std::size_t> free;  ///< numbers of empty slots; has room for all of them
};
extern HandleTable* handle_table;

/// Gives the object a handle, which shares it. Throws std::bad_alloc.
HANDLE OpenHandle(GraphicsObject& object);
/// The handle is no longer good; the object lives on while something else shares it.
void CloseObjectHandle(HANDLE handle) noexcept;
/// Null for a handle that is not good. Every drawing call looks up several: they are looked up in place.
inline GraphicsObject* FindObject(const void* handle) noexcept {
  const auto value = reinterpret_cast<std::uintptr_t>(handle);
  const std::size_t number = value & kSlotMask;
  if (handle_table == nullptr || number == 0 || number > handle_table->slots.size()) return nullptr;
  const HandleSlot& slot = handle_table->slots[number - 1];
  return slot.generation == value >> kSlotBits ? slot.object.get() : nullptr;
}
/// How many handles are open, the phone's own included.
std::size_t OpenHandles() noexcept;

/// The object behind a handle; null when it is not of that kind.
template <typename T>
T* Find(const void* handle, ObjectKind kind) noexcept {
  GraphicsObject* object = FindObject(handle);
  return object != nullptr && object->kind == kind ? static_cast<T*>(object) : nullptr;
}

}  // namespace phone
