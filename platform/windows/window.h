/// \file
/// One window, and the table of all windows of a run.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "graphics/surface.h"
#include "windows.h"
#include "windows/edit_control.h"
#include "windows/resources.h"

namespace phone {

/// A key of a soft-key bar.
struct SoftKey {
  WORD command = 0;
  bool enabled = true;
  bool opens_menu = false;
  std::u16string label;
  std::vector<MenuItem> menu;
};

struct SoftKeyBar {
  SoftKey left;
  SoftKey right;
  WORD back_flags = 0;  ///< SHMBOF_* that are set for the Back key
};

struct DeleteSurfaceContext {
  void operator()(HDC dc) const { DeleteSurfaceDC(dc); }
};

struct Window {
  HWND handle = nullptr;
  WNDPROC procedure = nullptr;
  std::u16string class_name;
  std::u16string text;
  DWORD style = 0;
  HWND parent = nullptr;  ///< of a child; null for a top-level window
  HWND owner = nullptr;   ///< of a top-level window that goes with another one; null for none
  RECT rect{};            ///< px, in the client area of the screen, or of the parent
  bool visible = false;
  bool destroying = false;

  bool painting = false;       ///< between BeginPaint and EndPaint
  bool painted = false;        ///< BeginPaint has answered the last WM_PAINT
  std::optional<RECT> update;  ///< px, what is invalid of the client area
  std::optional<Surface> surface;
  std::unique_ptr<std::remove_pointer_t<HDC>, DeleteSurfaceContext> paint_dc;  ///< goes before the surface

  std::optional<EditControl> edit;  ///< of an edit field
  std::optional<SoftKeyBar> bar;    ///< of a soft-key bar

  int width() const { return rect.right - rect.left; }
  int height() const { return rect.bottom - rect.top; }
  bool is_child() const { return (style & WS_CHILD) != 0; }
  /// True for a window that the program paints.
  bool paints() const { return !edit && !bar; }
};

/// All windows of a run, in the order they were made. A handle is never used again, so that a stale one finds nothing.
class WindowTable {
 public:
  Window& Add();
  void Remove(HWND handle);
  /// Null for a handle that is not, or no longer, a window. The lowest bit of a handle does not count.
  Window* Find(HWND handle);

  /// The program's first top-level window that nothing owns; null while there is none.
  Window* Main();
  /// The soft-key bar that a person sees: of the visible ones the last that was made; null without one.
  Window* VisibleBar();
  /// Children and owned windows.
  std::vector<HWND> Relatives(HWND handle) const;
  std::vector<HWND> TopLevel() const;
  /// True when `window` is `ancestor`, lies in it or is owned by it, at any depth.
  bool BelongsTo(HWND window, HWND ancestor);

  const std::vector<std::unique_ptr<Window>>& all() const { return windows_; }

 private:
  std::vector<std::unique_ptr<Window>> windows_;
};

std::u16string_view WindowText(const Window& window);
void SetWindowText(Window& window, std::u16string_view text);

}  // namespace phone
