/// \file
/// The phone as its hosts see it: switching it on, pressing its keys, looking at it.
///
/// All operations are for the user-interface thread, from inside Host::WaitForInput, unless they say otherwise.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host.h"
#include "windows.h"

namespace phone {

struct Options {
  std::filesystem::path folder;          ///< the phone folder: the root of the phone's file system
  std::filesystem::path program_data;    ///< where the program's artwork and pages lie (GFX, *.html)
  std::u16string module;                 ///< path of the program's module on the phone
  std::span<const std::byte> resources;  ///< the program's compiled resources (.res); outlives the run
  std::string instance;                  ///< name a second start finds this one by; empty: from the phone folder
  int client_width = 240;                ///< px
  int client_height = 278;               ///< px
  bool free_threads = false;             ///< threads run as they please; else one at a time
};

/// The phone's own parts of the screen, in pixels.
inline constexpr int kTitleStripHeight = 20;
inline constexpr int kSoftKeyBarHeight = 22;

using EntryPoint = int(WINAPI*)(HINSTANCE, HINSTANCE, LPWSTR, int);

/// Switches the phone on, runs the program on it and switches it off. Gives the program's exit code. Called from
/// outside of everything, once at a time. Throws std::runtime_error when the phone folder cannot be used.
int Run(Host& host, const Options& options, EntryPoint entry);

// --- Hands ---
//
// What hands do waits in the order in which it is done until the program has handled what came before. None of these
// operations runs the program's code; that happens once WaitForInput has returned.

/// Keys of a desktop's keyboard that change what another key does in an edit field; the phone itself has none.
struct KeyModifiers {
  bool shift = false;
  bool control = false;
};

/// Keys of the phone by their virtual-key code: VK_UP, VK_RETURN, VK_TBACK, VK_TSOFT1, ... They go to an open menu or
/// message box, to the shell, or to the window with the focus. Nothing happens while the program is in the background.
/// An edit field knows VK_INSERT and, with control, the letters A, C, V and X by their capitals' codes, too.
void PressKey(UINT key, KeyModifiers modifiers = {});
void ReleaseKey(UINT key);
/// One UTF-16 code unit typed, to the window with the focus.
void TypeCharacter(WCHAR character);
/// A pointer's click at a place of the screen, in pixels, done with the phone's keys as a person would: it presses the
/// soft key there, chooses the item of the open menu, answers the message box, or gives the edit field the focus and
/// puts the caret there (with shift, selects up to there). What is open keeps clicks from what lies behind it; one
/// beside an open menu closes it. False when nothing is there, and then nothing happens.
bool Click(int x, int y, KeyModifiers modifiers = {});
/// The pointer, held down since the last click, is at another place now, the nearest one of the screen: a field that
/// was clicked selects up to there.
void DragTo(int x, int y);
/// Chooses an item of the open menu by its position from 0. False when there is none.
bool ChooseMenuItem(std::size_t index);
/// Answers the open message box with IDYES, IDNO or IDOK. False without a box or such a button.
bool AnswerBox(int answer);
/// Sends the main window a command, as a soft key or menu item would. False while a menu or box is open.
bool SendCommand(int id);
/// Sends the main window the WM_HOTKEY that a soft-key bar has the shell send.
void SendHotKey(UINT key, bool released);
/// Brings the program to the foreground and gives the main window the focus.
void ComeBack();
/// Changes the client area's size; the screen follows.
void ResizeClient(int width, int height);
/// Makes the whole main window invalid.
void InvalidateAll();
/// Closes the main window, as its close button would; open menus and boxes are answered No (or OK) first.
void Close();

// --- Eyes ---

struct EditState {
  std::u16string text;
  RECT rect;  ///< px, in the client area
  bool focus;
  int caret;            ///< UTF-16 code units before it
  int selection_start;  ///< UTF-16 code units before what is selected; as the end when nothing is
  int selection_end;
  RECT caret_rect;  ///< px, on the screen
};

struct BoxState {
  std::u16string text;
  std::u16string caption;
  UINT style;
  std::vector<std::u16string> buttons;  ///< from left to right
};

struct Broadcast {
  DWORD tick;
  UINT message;
  WPARAM wparam;
  LPARAM lparam;
};

struct Launch {
  std::u16string file;
  std::u16string parameters;
};

struct RegistryWrite {
  DWORD tick;
  std::u16string key;
  std::u16string value;
  std::u16string text;
};

/// What a person could see or hear, and what the program has done to the outside so far.
struct State {
  bool foreground = false;
  int raised = 0;  ///< how often a second start has brought this one forward
  std::u16string title;
  int client_width = 0;   ///< px
  int client_height = 0;  ///< px
  std::u16string bar_left;
  std::u16string bar_right;
  int bars_visible = 0;
  int windows = 0;                  ///< the program's windows, bars and fields included
  std::optional<int> focused_edit;  ///< number of the field with the focus, from the top
  bool main_focused = false;
  std::optional<std::vector<std::u16string>> menu;
  std::vector<EditState> edits;  ///< from top to bottom
  std::optional<BoxState> box;
  Cursor cursor = Cursor::none;
  bool invalid = false;
  std::vector<Broadcast> broadcasts;
  std::vector<Launch> launched;
  std::vector<RegistryWrite> registry_writes;
  int back_navigations = 0;
  int back_forwarded = 0;
  bool worker = false;  ///< a thread of the program besides the user-interface thread runs
};

/// After the program has ended: what was true in the end.
State Look();

/// The whole screen as a person sees it now.
ScreenImage Screen();
/// The part of it that is the client area, with the fields, menus and boxes that lie over it.
ScreenImage Client();

/// How many frames of the main window were painted so far.
std::uint64_t FramesPainted();

// --- The registry under HKEY_CURRENT_USER ---

std::optional<std::u16string> RegistryGet(const std::u16string& key, const std::u16string& value);
bool RegistrySet(const std::u16string& key, const std::u16string& value, const std::u16string& text);
bool RegistryDelete(const std::u16string& key, const std::u16string& value);

// --- Threads ---

/// Lets every other thread of the program run until it sleeps, waits or ends (with free threads: returns at once).
/// True when one of them has left something for the user-interface thread to do.
bool LetThreadsRun();
/// The tick at which the next sleeping thread wakes up.
std::optional<std::uint32_t> NextDeadline();

}  // namespace phone
