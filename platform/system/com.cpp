#include "system/com.h"

#include <mutex>
#include <vector>

#include "system/faults.h"

namespace phone {

namespace {

struct Component {
  CLSID class_id;
  ComponentMaker maker;
};

std::mutex components_mutex;
std::vector<Component> components;

/// How often the calling thread has initialised COM.
thread_local int initializations = 0;

ComponentMaker FindMaker(const CLSID& class_id) {
  const std::lock_guard lock(components_mutex);
  for (const Component& component : components)
    if (component.class_id == class_id) return component.maker;
  return nullptr;
}

}  // namespace

void RegisterComponent(const CLSID& class_id, ComponentMaker maker) {
  const std::lock_guard lock(components_mutex);
  for (Component& component : components) {
    if (component.class_id == class_id) {
      component.maker = maker;
      return;
    }
  }
  components.push_back({class_id, maker});
}

}  // namespace phone

HRESULT CoInitializeEx(void*, DWORD) {
  if (phone::FaultDue(phone::Operation::CoInitializeEx)) return E_OUTOFMEMORY;
  return phone::initializations++ == 0 ? S_OK : S_FALSE;
}

void CoUninitialize() {
  if (phone::initializations > 0) --phone::initializations;
}

HRESULT CoCreateInstance(REFCLSID class_id, IUnknown* outer, DWORD, REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (phone::FaultDue(phone::Operation::CoCreateInstance)) return E_OUTOFMEMORY;
  if (outer) return E_INVALIDARG;
  const phone::ComponentMaker maker = phone::FindMaker(class_id);
  return maker ? maker(iid, object) : REGDB_E_CLASSNOTREG;
}
