// Compiled resources: every entry read, then a program that shows what is in them: strings, and each soft-key bar with
// its menu, worked with keys.

#include <algorithm>
#include <deque>

#include "aygshell.h"
#include "fuzz/fuzzing.h"
#include "phone.h"
#include "system/text.h"
#include "windows/resources.h"

namespace {

using fuzzing::Require;
using phone::Bytes;
using phone::Resource;

/// Bars that are tried in one run of the phone.
constexpr std::size_t kMostBars = 4;

std::vector<WORD> bars;  ///< numbers of the bars in the input

void CountItems(const std::vector<phone::MenuItem>& items, std::size_t& count) {
  for (const phone::MenuItem& item : items) {
    ++count;
    CountItems(item.items, count);
  }
}

void ReadEntry(const Resource& resource) {
  std::size_t items = 0;
  if (const auto menu = phone::ReadMenu(resource.content)) CountItems(*menu, items);
  Require(items <= resource.content.size() / 4, "an item takes four bytes at least");
  const auto bar = phone::ReadMenuBar(resource.content);
  const bool is_bar = phone::CompareFolded(resource.type.text, phone::kMenuBarType) == 0;
  if (bar && is_bar && resource.name.number && bars.size() < kMostBars) bars.push_back(*resource.name.number);
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcW(window, message, wparam, lparam);
}

void LoadNumbered(UINT id) {
  WCHAR text[64];
  const int length = LoadStringW(nullptr, id, text, 64);
  Require(length >= 0 && length < 64 && text[length] == 0, "a string ends within its buffer");
  LoadIconW(nullptr, MAKEINTRESOURCE(id));
}

/// A window, and over it one bar after the other as the keys close it.
int WINAPI Program(HINSTANCE instance, HINSTANCE, LPWSTR, int show) {
  WNDCLASSW description{};
  description.lpfnWndProc = Procedure;
  description.lpszClassName = TEXT("FUZZ");
  RegisterClassW(&description);
  const HWND window = CreateWindowExW(0, TEXT("FUZZ"), TEXT("Fuzz"), WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT,
                                      CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
  ShowWindow(window, show);
  for (UINT id = 0; id < 64; ++id) LoadNumbered(id);
  for (const WORD id : bars) {
    SHMENUBARINFO info{};
    info.cbSize = sizeof info;
    info.hwndParent = window;
    info.nToolBarId = id;
    SHCreateMenuBar(&info);
  }
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return 0;
}

void Tap(UINT key) {
  phone::PressKey(key);
  phone::ReleaseKey(key);
}

/// Opens both menus, goes through them, and chooses.
std::deque<std::function<void()>> Keys() {
  std::deque<std::function<void()>> steps;
  for (const UINT key : {VK_TSOFT1, VK_DOWN, VK_DOWN, VK_UP, VK_RETURN, VK_TSOFT2, VK_UP, VK_RETURN, VK_TSOFT1})
    steps.push_back([key] { Tap(static_cast<UINT>(key)); });
  steps.push_back([] { phone::Look(); });
  steps.push_back([] { phone::TypeCharacter(u'2'); });
  return steps;
}

void Show(Bytes file) {
  static const TemporaryFolder folder;
  TestHost host;
  host.steps = Keys();
  host.when_idle = [] { phone::Close(); };
  phone::Options options;
  options.folder = options.program_data = folder.path;
  options.module = u"\\Program Files\\Fuzz\\fuzz.exe";
  options.instance = folder.path.string();
  options.resources = file;
  phone::Run(host, options, Program);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Bytes file = std::as_bytes(std::span(data, size));
  bars.clear();
  const std::vector<Resource> resources = phone::ReadResources(file);
  for (const Resource& resource : resources) ReadEntry(resource);
  for (const UINT id : {0u, 1u, 15u, 17u, 31u, 0xFFFFu}) static_cast<void>(phone::FindString(resources, id));
  if (!resources.empty()) Show(file);
  return 0;
}
