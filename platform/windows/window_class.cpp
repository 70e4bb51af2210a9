#include "windows/window_class.h"

#include "system/faults.h"
#include "system/text.h"
#include "windows/desktop.h"

namespace phone {

namespace {

const WindowClass& EditClass() {
  static const WindowClass edit{std::u16string(kEditClass), EditProcedure};
  return edit;
}

}  // namespace

const WindowClass* FindWindowClass(std::u16string_view name) {
  if (CompareFolded(name, kEditClass) == 0) return &EditClass();
  for (const WindowClass& known : TheDesktop().classes)
    if (CompareFolded(known.name, name) == 0) return &known;
  return nullptr;
}

}  // namespace phone

using namespace phone;

ATOM RegisterClassW(const WNDCLASSW* description) {
  constexpr ATOM kFirstAtom = 0xC000;
  if (FaultDue(Operation::RegisterClassW) || !OnUiThread()) return 0;
  if (description == nullptr || description->lpfnWndProc == nullptr || description->lpszClassName == nullptr ||
      *description->lpszClassName == 0)
    return 0;
  return Guarded<ATOM>(0, [&]() -> ATOM {
    if (FindWindowClass(description->lpszClassName) != nullptr) return 0;
    auto& classes = TheDesktop().classes;
    classes.push_back({description->lpszClassName, description->lpfnWndProc});
    return static_cast<ATOM>(kFirstAtom + classes.size() - 1);
  });
}
