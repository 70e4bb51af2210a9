#include "hosts/sdl/list_refresh.h"

#include <algorithm>

#include "phone.h"
#include "screens/resource.h"
#include "windows/desktop.h"

namespace sdl {
namespace {

/// The list is the one screen whose menu leads to About; going back from there reads the layouts again.
bool ListIsUp() {
  phone::Desktop& desktop = phone::TheDesktop();
  if (!desktop.foreground || desktop.menu || !desktop.boxes.empty()) return false;
  const phone::Window* const bar = desktop.windows.VisibleBar();
  const auto leads_to_about = [](const phone::MenuItem& item) { return item.command == IDM_ABOUT; };
  return bar && std::ranges::any_of(bar->bar->left.menu, leads_to_about);
}

}  // namespace

bool ListRefresh::Begin() {
  if (step_ == Step::none && ListIsUp()) step_ = Step::leave;
  return step_ != Step::none;
}

bool ListRefresh::GoOn() {
  switch (step_) {
    case Step::none: return false;
    case Step::leave:
      step_ = ListIsUp() && phone::SendCommand(IDM_ABOUT) ? Step::come_back : Step::none;
      return step_ == Step::come_back;
    case Step::come_back:
      step_ = Step::none;
      // On the list itself the same command would end the program.
      return !ListIsUp() && phone::SendCommand(IDM_RIGHT_SOFT_KEY);
  }
  return false;
}

}  // namespace sdl
