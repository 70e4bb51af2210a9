/// \file
/// The application object: one exists, from the main window's creation to its destruction. It owns the data, the lists,
/// the visuals, the fields and the soft-key bars, and moves between the screens. For the user-interface thread; the
/// apply worker reads `applyPath` and clears `applyThread`.
#pragma once

#include <atomic>
#include <memory>

#include "animation/list/scroll_list.h"
#include "app/screens.h"
#include "base/gdi_owner.h"
#include "themes/records.h"
#include "visuals/image_visual.h"
#include "visuals/text_visual.h"

/// Invalidates the whole client area of the context, a window, without erasing. Handed to every list. Gives 0.
INT InvalidateCallback(LPVOID context, DWORD reason, DWORD tag);

class CAppController {
 public:
  CAppController() noexcept = default;
  CAppController(const CAppController&) = delete;
  CAppController& operator=(const CAppController&) = delete;
  /// Waits for the apply worker first: nothing that it uses goes before it has ended.
  ~CAppController();

  void Initialize(HWND window, HINSTANCE programInstance) noexcept;
  /// Handles what the window procedure forwards.
  void HandleMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept;

  // --- Navigation (navigation.cpp) ---

  /// Goes to a NavTarget. E_OUTOFMEMORY when the save-theme form finds no selected theme, E_FAIL for any other value.
  HRESULT Navigate(HWND window, LONG target) noexcept;

  // --- Commands and keys (input.cpp, commands.cpp, messages.cpp) ---

  /// A command of a soft key or menu item; what it means depends on the screen.
  void OnCommand(HWND window, INT command) noexcept;
  /// Starts a program through the shell. E_FAIL for a null program, else the platform's error.
  [[nodiscard]] HRESULT RunProgram(LPCWSTR program, LPCWSTR argument) noexcept;
  /// Tells the user something, until OK is pressed.
  void ShowNotice(LPCWSTR text) noexcept;
  /// Asks the user; true for Yes.
  [[nodiscard]] bool Ask(LPCWSTR text) noexcept;

  // --- Themes and favourites (save_theme.cpp, favorite_flows.cpp, apply_theme.cpp) ---

  /// Free every record of a ring. A list made from it must be gone. Always S_OK.
  HRESULT ClearThemeRecords() noexcept;
  HRESULT ClearPluginRecords() noexcept;
  HRESULT ClearFavoriteRecords() noexcept;
  /// Saves the edited theme as the save-theme form says, asking before it overwrites a file, and offers to apply it.
  /// S_OK when the file was written.
  [[nodiscard]] HRESULT SaveThemeAs() noexcept;
  /// Keeps the selected plug-in as a favourite under the form's name. S_OK when the file was written.
  [[nodiscard]] HRESULT SaveFavorite() noexcept;
  /// Adds the plug-in of a favourite file to the open theme, as its last row, selected.
  [[nodiscard]] HRESULT AddFavoriteToTheme(LPCWSTR path) noexcept;
  /// Starts the apply worker for a layout file, unless one runs.
  void StartApplyTheme(LPCWSTR path) noexcept;

  // --- Screens (screens/) ---

  [[nodiscard]] HRESULT CreateChromeImages(const RECT& client) noexcept;
  [[nodiscard]] HRESULT CreateTextVisuals(const RECT& client) noexcept;
  /// E_OUTOFMEMORY when a bar cannot be made; the later ones are not made then.
  [[nodiscard]] HRESULT CreateSoftKeyBars(HWND window) noexcept;
  /// Makes a ScreenId current: bar, Back key, labels, caption, fields. The status of making a form's fields; E_FAIL for
  /// a value that is no screen.
  HRESULT SetScreen(HWND window, LONG screen) noexcept;
  /// Makes the fields of an EditLayout from top to bottom. E_OUTOFMEMORY when one cannot be made; any other layout
  /// makes none.
  [[nodiscard]] HRESULT CreateEditFields(HWND window, HINSTANCE programInstance, const RECT& client,
                                         LONG layout) noexcept;
  /// Build the lists from their rings. E_OUTOFMEMORY for an empty ring; there is no list then.
  [[nodiscard]] HRESULT BuildThemeList(HWND window) noexcept;
  [[nodiscard]] HRESULT BuildPluginList(HWND window) noexcept;
  [[nodiscard]] HRESULT BuildFavoriteList(HWND window) noexcept;

  /// The list that the current screen shows, or null.
  CScrollList* CurrentList() const noexcept;
  /// What is selected in each list, or null.
  ThemeRecord* SelectedTheme() const noexcept;
  PluginRecord* SelectedPlugin() const noexcept;
  PluginRecord* SelectedFavorite() const noexcept;

  PluginRecord* favoriteRecords = nullptr;  ///< ring of the favourites
  ThemeRecord* themeRecords = nullptr;      ///< ring of the themes found
  PluginRecord* pluginRecords = nullptr;    ///< ring of the open theme's plug-ins
  std::unique_ptr<CScrollList> themeList;
  std::unique_ptr<CScrollList> pluginList;
  std::unique_ptr<CScrollList> favoriteList;
  std::unique_ptr<CImageVisual> background;
  std::unique_ptr<CImageVisual> topBar;
  std::unique_ptr<CImageVisual> bottomBar;
  std::unique_ptr<CImageVisual> aboutImage;  ///< exists while the About screen is shown
  std::unique_ptr<CTextVisual> caption;
  std::unique_ptr<CTextVisual> themeTitleLabel;
  std::unique_ptr<CTextVisual> fileNameLabel;
  std::unique_ptr<CTextVisual> pluginTitleLabel;
  std::unique_ptr<CTextVisual> versionText;
  bool landscape = false;  ///< the client area was wider than high when the window was made
  TextField applyPath;     ///< written while no worker runs
  OwnedDC backgroundDC;    ///< holds the background picture only
  OwnedBitmap backgroundBitmap;
  OwnedDC composeDC;  ///< each frame is composed here
  OwnedBitmap composeBitmap;
  LONG screenId = SCREEN_NONE;
  HINSTANCE instance = nullptr;
  HWND mainWindow = nullptr;
  HWND titleEdit = nullptr;
  HWND fileNameEdit = nullptr;
  HWND favoriteNameEdit = nullptr;
  HWND formBar = nullptr;
  HWND editorBar = nullptr;
  HWND themeListBar = nullptr;
  HWND chooserBar = nullptr;
  HWND aboutBar = nullptr;
  std::atomic<HANDLE> applyThread = nullptr;  ///< the running worker, or null; the worker closes and clears it
  HANDLE applyWait = nullptr;                 ///< a handle of our own to the last worker, for waiting

 private:
  [[nodiscard]] HRESULT OnCreate(HWND window) noexcept;
  void OnSetFocus() noexcept;
  void OnDestroy() noexcept;
  void OnPaint(HWND window) noexcept;
  void OnKey(HWND window, UINT key) noexcept;
  void OnHotKey(HWND window, WPARAM wparam, LPARAM lparam) noexcept;

  bool boxOpen = false;  ///< a message box of ours is open: no input is acted on
};
