#include "windows/window.h"

#include <algorithm>

namespace phone {

namespace {

constexpr std::uintptr_t kHandleStep = 4;  // the lowest bits stay free for flags

/// Handles go on through all runs of the process, above every reserved value such as HWND_BROADCAST.
std::uintptr_t last_handle = 0x100000;

bool SameHandle(HWND a, HWND b) {
  return (reinterpret_cast<std::uintptr_t>(a) | 1) == (reinterpret_cast<std::uintptr_t>(b) | 1);
}

}  // namespace

Window& WindowTable::Add() {
  windows_.push_back(std::make_unique<Window>());
  last_handle += kHandleStep;
  windows_.back()->handle = reinterpret_cast<HWND>(last_handle);
  return *windows_.back();
}

void WindowTable::Remove(HWND handle) {
  std::erase_if(windows_, [handle](const auto& window) { return window->handle == handle; });
}

Window* WindowTable::Find(HWND handle) {
  for (const auto& window : windows_)
    if (SameHandle(window->handle, handle)) return window.get();
  return nullptr;
}

Window* WindowTable::Main() {
  for (const auto& window : windows_)
    if (window->paints() && window->parent == nullptr && window->owner == nullptr) return window.get();
  return nullptr;
}

Window* WindowTable::VisibleBar() {
  Window* bar = nullptr;
  for (const auto& window : windows_)
    if (window->bar && window->visible) bar = window.get();
  return bar;
}

std::vector<HWND> WindowTable::Relatives(HWND handle) const {
  std::vector<HWND> relatives;
  for (const auto& window : windows_)
    if (window->parent == handle || window->owner == handle) relatives.push_back(window->handle);
  return relatives;
}

std::vector<HWND> WindowTable::TopLevel() const {
  std::vector<HWND> handles;
  for (const auto& window : windows_)
    if (window->parent == nullptr) handles.push_back(window->handle);
  return handles;
}

bool WindowTable::BelongsTo(HWND window, HWND ancestor) {
  for (Window* at = Find(window); at != nullptr; at = Find(at->parent != nullptr ? at->parent : at->owner))
    if (SameHandle(at->handle, ancestor)) return true;
  return false;
}

}  // namespace phone
