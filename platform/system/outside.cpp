#include "system/outside.h"

#include <atomic>
#include <mutex>
#include <stdexcept>

#include "system/text.h"

namespace phone {

namespace {

struct Records {
  std::vector<Broadcast> broadcasts;
  std::vector<Launch> launches;
  std::vector<RegistryWrite> registry_writes;
};

std::mutex records_mutex;
Records records;
std::atomic<Host*> current_host{nullptr};
std::atomic<std::uint32_t> last_tick{1};  ///< of the last run; the clock never stands at 0

template <typename Record>
void Add(std::vector<Record> Records::*list, const Record& record) {
  const std::lock_guard lock(records_mutex);
  (records.*list).push_back(record);
}

template <typename Record>
std::vector<Record> CopyOf(std::vector<Record> Records::*list) {
  const std::lock_guard lock(records_mutex);
  return records.*list;
}

}  // namespace

Host& CurrentHost() {
  Host* const host = current_host;
  if (!host) throw std::logic_error("the phone is switched off");
  return *host;
}

std::uint32_t CurrentTick() {
  Host* const host = current_host;
  return host ? host->TickCount() : last_tick.load();
}

void ResetOutside(Host& host) {
  const std::lock_guard lock(records_mutex);
  current_host = &host;
  records = {};
}

void LeaveHost() {
  last_tick = CurrentTick();
  current_host = nullptr;
}

void ReportOutcome(Operation operation, std::u16string_view name, DWORD error) noexcept {
  if (error == ERROR_GEN_FAILURE) return;
  try {
    if (Host* const host = current_host) host->Report({operation, ToUtf8Lossy(name), error});
  } catch (...) {
    // Nothing is left to say it with.
  }
}

void RecordBroadcast(const Broadcast& broadcast) {
  Add(&Records::broadcasts, broadcast);
}
void RecordLaunch(const Launch& launch) {
  Add(&Records::launches, launch);
}
void RecordRegistryWrite(const RegistryWrite& write) {
  Add(&Records::registry_writes, write);
}

std::vector<Broadcast> Broadcasts() {
  return CopyOf(&Records::broadcasts);
}
std::vector<Launch> Launches() {
  return CopyOf(&Records::launches);
}
std::vector<RegistryWrite> RegistryWrites() {
  return CopyOf(&Records::registry_writes);
}

}  // namespace phone
