/// \file
/// What keys and commands do. An action whose list or selection is missing does nothing.
#pragma once

#include "app/controller.h"
#include "base/status.h"

using Action = void (*)(CAppController& controller, HWND window) noexcept;

/// Navigates to a NavTarget.
template <LONG target>
void GoTo(CAppController& controller, HWND window) noexcept {
  Unexamined(controller.Navigate(window, target));
}

// --- Any list ---

void SelectPrevious(CAppController& controller, HWND window) noexcept;
void SelectNext(CAppController& controller, HWND window) noexcept;

// --- Theme list ---

void EndProgram(CAppController& controller, HWND window) noexcept;
void ApplyTheme(CAppController& controller, HWND window) noexcept;
void DeleteTheme(CAppController& controller, HWND window) noexcept;
void ShowAbout(CAppController& controller, HWND window) noexcept;
/// Opens the help page; the user is not told when it cannot be opened.
void OpenHelp(CAppController& controller, HWND window) noexcept;

// --- Theme editor ---

void ToggleMoveMode(CAppController& controller, HWND window) noexcept;
void RemovePlugin(CAppController& controller, HWND window) noexcept;
/// Opens the add-to-favourites form, filled with the selected plug-in's name.
void OpenFavoriteForm(CAppController& controller, HWND window) noexcept;

// --- Forms ---

void SaveTheme(CAppController& controller, HWND window) noexcept;
void KeepFavorite(CAppController& controller, HWND window) noexcept;
void CancelForm(CAppController& controller, HWND window) noexcept;

// --- Favourites chooser ---

/// Adds the selected favourite and returns to the editor when that succeeded.
void ChooseFavorite(CAppController& controller, HWND window) noexcept;
/// Adds the selected favourite and returns to the editor in any case.
void AddFavorite(CAppController& controller, HWND window) noexcept;
void DeleteFavorite(CAppController& controller, HWND window) noexcept;

// --- About ---

void OpenProductPage(CAppController& controller, HWND window) noexcept;

/// The shell goes back to what was shown before the program, which goes on running.
void LeaveForeground(CAppController& controller, HWND window) noexcept;
