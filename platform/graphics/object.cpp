#include "graphics/object.h"

#include <new>

namespace phone {

constinit HandleTable* handle_table = nullptr;

HANDLE OpenHandle(GraphicsObject& object) {
  if (handle_table == nullptr) handle_table = new HandleTable;
  HandleTable& table = *handle_table;
  if (table.free.empty()) {
    if (table.slots.size() >= kSlotMask) throw std::bad_alloc();
    table.slots.emplace_back();
    table.free.reserve(table.slots.capacity());
    table.free.push_back(table.slots.size() - 1);
  }
  const std::size_t index = table.free.back();
  table.free.pop_back();
  HandleSlot& slot = table.slots[index];
  object.handle = reinterpret_cast<HANDLE>((slot.generation << kSlotBits) | (index + 1));
  slot.object = Ref<GraphicsObject>(&object);
  return object.handle;
}

void CloseObjectHandle(HANDLE handle) noexcept {
  if (FindObject(handle) == nullptr) return;
  HandleTable& table = *handle_table;
  const std::size_t index = (reinterpret_cast<std::uintptr_t>(handle) & kSlotMask) - 1;
  HandleSlot& slot = table.slots[index];
  ++slot.generation;
  table.free.push_back(index);
  slot.object = {};
}

std::size_t OpenHandles() noexcept {
  return handle_table == nullptr ? 0 : handle_table->slots.size() - handle_table->free.size();
}

}  // namespace phone
