#include "graphics/object.h"

#include <new>
#include <vector>

namespace phone {

namespace {

// A handle's value: the slot's number from 1 in the low bits, above it how often the slot was used before. Neither is
// ever the value of a handle of another room in practice, and an old handle does not find the slot's next object.
constexpr unsigned kSlotBits = 24;
constexpr std::uintptr_t kSlotMask = (std::uintptr_t{1} << kSlotBits) - 1;

struct Slot {
  Ref<GraphicsObject> object;
  std::uintptr_t generation = 0;
};

struct Table {
  std::vector<Slot> slots;
  std::vector<std::size_t> free;  // numbers of empty slots; has room for all of them
};

Table& TheTable() {
  static Table* const table = new Table;  // outlives every static object that may hold handles
  return *table;
}

Slot* SlotOf(const void* handle) noexcept {
  const auto value = reinterpret_cast<std::uintptr_t>(handle);
  const std::size_t number = value & kSlotMask;
  Table& table = TheTable();
  if (number == 0 || number > table.slots.size()) return nullptr;
  Slot& slot = table.slots[number - 1];
  return slot.object && slot.object->handle == handle ? &slot : nullptr;
}

}  // namespace

HANDLE OpenHandle(GraphicsObject& object) {
  Table& table = TheTable();
  if (table.free.empty()) {
    if (table.slots.size() >= kSlotMask) throw std::bad_alloc();
    table.slots.emplace_back();
    table.free.reserve(table.slots.capacity());
    table.free.push_back(table.slots.size() - 1);
  }
  const std::size_t index = table.free.back();
  table.free.pop_back();
  Slot& slot = table.slots[index];
  object.handle = reinterpret_cast<HANDLE>((slot.generation << kSlotBits) | (index + 1));
  slot.object = Ref<GraphicsObject>(&object);
  return object.handle;
}

void CloseObjectHandle(HANDLE handle) noexcept {
  Slot* slot = SlotOf(handle);
  if (slot == nullptr) return;
  ++slot->generation;
  Table& table = TheTable();
  table.free.push_back(static_cast<std::size_t>(slot - table.slots.data()));
  slot->object = {};
}

GraphicsObject* FindObject(const void* handle) noexcept {
  Slot* slot = SlotOf(handle);
  return slot == nullptr ? nullptr : slot->object.get();
}

std::size_t OpenHandles() noexcept {
  return TheTable().slots.size() - TheTable().free.size();
}

}  // namespace phone
