#include "system/handles.h"

#include <map>
#include <mutex>

namespace phone {

namespace {

/// Handles are multiples of this, as on the phone; the first ones are kept for values with a meaning of their own.
constexpr std::uintptr_t kHandleStep = 4;
constexpr std::uintptr_t kFirstHandle = 0x100;

std::mutex handles_mutex;
std::map<HANDLE, std::shared_ptr<KernelObject>> handles;
std::uintptr_t next_handle = kFirstHandle;

}  // namespace

HANDLE AddHandle(std::shared_ptr<KernelObject> object) {
  const std::lock_guard lock(handles_mutex);
  const HANDLE handle = reinterpret_cast<HANDLE>(next_handle);
  handles.emplace(handle, std::move(object));
  next_handle += kHandleStep;
  return handle;
}

std::shared_ptr<KernelObject> ObjectOf(HANDLE handle) {
  const std::lock_guard lock(handles_mutex);
  const auto found = handles.find(handle);
  return found == handles.end() ? nullptr : found->second;
}

bool RemoveHandle(HANDLE handle) {
  std::shared_ptr<KernelObject> last;  // declared before the lock, so that the object goes after it
  const std::lock_guard lock(handles_mutex);
  const auto found = handles.find(handle);
  if (found == handles.end()) return false;
  last = std::move(found->second);
  handles.erase(found);
  return true;
}

void CloseAllHandles() {
  std::map<HANDLE, std::shared_ptr<KernelObject>> left;
  const std::lock_guard lock(handles_mutex);
  left.swap(handles);
}

std::size_t OpenKernelHandles() {
  const std::lock_guard lock(handles_mutex);
  return handles.size();
}

}  // namespace phone
