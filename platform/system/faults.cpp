#include "system/faults.h"

#include <atomic>
#include <limits>
#include <new>

namespace phone {

namespace {

/// The calls numbered from `fail_from` up to `fail_until` fail; the numbers begin at 0.
struct Counter {
  std::atomic<std::uint64_t> calls{0};
  std::atomic<std::uint64_t> fail_from{0};
  std::atomic<std::uint64_t> fail_until{0};
};

constinit std::array<Counter, kOperationCount> counters{};

constexpr std::array<std::string_view, kOperationCount> kNames = {
#define PHONE_OPERATION_NAME(name) #name,
    PHONE_OPERATIONS(PHONE_OPERATION_NAME)
#undef PHONE_OPERATION_NAME
        "new",
};

Counter& CounterOf(Operation operation) noexcept {
  return counters[static_cast<std::size_t>(operation)];
}

std::uint64_t SaturatingSum(std::uint64_t a, std::uint64_t b) noexcept {
  return a > std::numeric_limits<std::uint64_t>::max() - b ? std::numeric_limits<std::uint64_t>::max() : a + b;
}

}  // namespace

bool FaultDue(Operation operation) noexcept {
  Counter& counter = CounterOf(operation);
  const std::uint64_t call = counter.calls.fetch_add(1, std::memory_order_relaxed);
  return call < counter.fail_until.load(std::memory_order_relaxed) &&
         call >= counter.fail_from.load(std::memory_order_relaxed);
}

void SetFault(Operation operation, std::uint64_t count, std::uint64_t after) noexcept {
  Counter& counter = CounterOf(operation);
  const std::uint64_t from = SaturatingSum(counter.calls.load(std::memory_order_relaxed), after);
  counter.fail_until.store(0, std::memory_order_relaxed);
  counter.fail_from.store(from, std::memory_order_relaxed);
  if (count != 0) counter.fail_until.store(SaturatingSum(from, count), std::memory_order_relaxed);
}

std::uint64_t CallCount(Operation operation) noexcept {
  return CounterOf(operation).calls.load(std::memory_order_relaxed);
}

void ResetFaults() noexcept {
  for (Counter& counter : counters) {
    counter.fail_until.store(0, std::memory_order_relaxed);
    counter.fail_from.store(0, std::memory_order_relaxed);
    counter.calls.store(0, std::memory_order_relaxed);
  }
}

std::string_view OperationName(Operation operation) noexcept {
  return kNames[static_cast<std::size_t>(operation)];
}

std::optional<Operation> OperationByName(std::string_view name) noexcept {
  for (std::size_t i = 0; i < kNames.size(); ++i)
    if (kNames[i] == name) return static_cast<Operation>(i);
  return std::nullopt;
}

}  // namespace phone

// The program allocates with std::nothrow and nobody else does, so that replacing this form of new counts the program's
// allocations and can make them fail.

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  if (phone::FaultDue(phone::Operation::Allocation)) return nullptr;
  try {
    return ::operator new(size);
  } catch (...) {
    return nullptr;
  }
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  if (phone::FaultDue(phone::Operation::Allocation)) return nullptr;
  try {
    return ::operator new[](size);
  } catch (...) {
    return nullptr;
  }
}
