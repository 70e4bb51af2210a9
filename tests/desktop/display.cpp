#include "desktop/display.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <signal.h>

#include <sstream>
#include <utility>

#include "support/process.h"

namespace {

constexpr int kAttempts = 600;
constexpr useconds_t kPause = 100'000;  // microseconds

/// Windows come and go while they are looked at.
int IgnoreError(Display*, XErrorEvent*) {
  return 0;
}

std::vector<Window> Children(Display* display, Window parent) {
  Window root = 0;
  Window grandparent = 0;
  Window* children = nullptr;
  unsigned count = 0;
  if (!XQueryTree(display, parent, &root, &grandparent, &children, &count)) return {};
  std::vector<Window> result(children, children + count);
  if (children) XFree(children);
  return result;
}

bool HasClass(Display* display, Window window, const std::string& name) {
  XClassHint hint = {};
  if (!XGetClassHint(display, window, &hint)) return false;
  const bool has = hint.res_class && name == hint.res_class;
  XFree(hint.res_name);
  XFree(hint.res_class);
  return has;
}

bool IsShown(Display* display, Window window) {
  XWindowAttributes attributes = {};
  return XGetWindowAttributes(display, window, &attributes) && attributes.map_state == IsViewable;
}

}  // namespace

TestDisplay::TestDisplay() {
  int number[2];
  if (pipe(number) != 0) throw std::runtime_error("no pipe");
  const std::vector<std::string> words = {"Xvfb",      "-displayfd", std::to_string(number[1]),
                                          "-screen",   "0",          "1280x1024x24",
                                          "-nolisten", "tcp",        "-terminate"};
  server_ = StartProgram(words, [&number](auto* actions) {
    posix_spawn_file_actions_addclose(actions, number[0]);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO}) Silence(actions, output);
  });
  close(number[1]);
  std::string text;
  for (char character; read(number[0], &character, 1) == 1 && character != '\n';) text += character;
  close(number[0]);
  if (text.empty()) throw std::runtime_error("no display server");
  name_ = ":" + text;
  XSetErrorHandler(IgnoreError);
  connection_ = XOpenDisplay(name_.c_str());
  if (!connection_) throw std::runtime_error("no connection to the display server");
}

TestDisplay::~TestDisplay() {
  if (server_ > 0) Kill();
}

void TestDisplay::Kill() {
  if (connection_) XCloseDisplay(connection_);
  connection_ = nullptr;
  kill(server_, SIGKILL);
  AwaitEnd(std::exchange(server_, -1));
}

unsigned long TestDisplay::WaitForWindow(const std::string& window_class) {
  for (int attempt = 0; attempt < kAttempts; ++attempt, usleep(kPause)) {
    for (const Window window : Children(connection_, DefaultRootWindow(connection_)))
      if (HasClass(connection_, window, window_class) && IsShown(connection_, window)) return window;
  }
  throw std::runtime_error("no window");
}

std::optional<Picture> TestDisplay::Look(unsigned long window) {
  XWindowAttributes attributes = {};
  if (!XGetWindowAttributes(connection_, window, &attributes) || attributes.map_state != IsViewable) return {};
  XImage* const image = XGetImage(connection_, window, 0, 0, attributes.width, attributes.height, AllPlanes, ZPixmap);
  if (!image) return {};
  Picture picture{image->width, image->height, {}};
  for (int y = 0; y < image->height; ++y)
    for (int x = 0; x < image->width; ++x)
      picture.pixels.push_back(static_cast<std::uint32_t>(XGetPixel(image, x, y)) & 0xFFFFFF);
  XDestroyImage(image);
  return picture;
}

void TestDisplay::Focus(unsigned long window) {
  XSetInputFocus(connection_, window, RevertToParent, CurrentTime);
  XSync(connection_, False);
}

void TestDisplay::Resize(unsigned long window, int width, int height) {
  XResizeWindow(connection_, window, width, height);
  XSync(connection_, False);
}

std::pair<int, int> TestDisplay::Place(unsigned long window) {
  int x = 0;
  int y = 0;
  Window child = 0;
  XTranslateCoordinates(connection_, window, DefaultRootWindow(connection_), 0, 0, &x, &y, &child);
  return {x, y};
}

void TestDisplay::Press(unsigned long keysym, bool down) {
  const KeyCode code = XKeysymToKeycode(connection_, keysym);
  if (!code) throw std::runtime_error("the keyboard has no such key");
  XTestFakeKeyEvent(connection_, code, down, CurrentTime);
}

void TestDisplay::Key(const std::string& keys) {
  std::vector<KeySym> held;
  std::istringstream names(keys);
  for (std::string name; std::getline(names, name, '+');) held.push_back(XStringToKeysym(name.c_str()));
  for (const KeySym keysym : held) Press(keysym, true);
  for (auto keysym = held.rbegin(); keysym != held.rend(); ++keysym) Press(*keysym, false);
  XSync(connection_, False);
}

void TestDisplay::Type(const std::string& text) {
  for (const char character : text) {
    // The keysyms of the first 128 characters are their codes.
    const auto keysym = static_cast<KeySym>(character);
    const bool shifted = XkbKeycodeToKeysym(connection_, XKeysymToKeycode(connection_, keysym), 0, 0) != keysym;
    if (shifted) Press(XK_Shift_L, true);
    Press(keysym, true);
    Press(keysym, false);
    if (shifted) Press(XK_Shift_L, false);
  }
  XSync(connection_, False);
}

void TestDisplay::Click(unsigned long window, int x, int y, unsigned button) {
  const auto [left, top] = Place(window);
  XTestFakeMotionEvent(connection_, DefaultScreen(connection_), left + x, top + y, CurrentTime);
  XTestFakeButtonEvent(connection_, button, True, CurrentTime);
  XTestFakeButtonEvent(connection_, button, False, CurrentTime);
  XSync(connection_, False);
}
