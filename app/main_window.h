/// \file
/// The program's one top-level window.
#pragma once

#include <memory>

#include "app/controller.h"

/// Set once at start-up.
extern HINSTANCE g_hInstance;
/// From the main window's creation to its destruction, else null.
extern std::unique_ptr<CAppController> g_controller;

/// Makes and shows the main window. False when that fails, or when the program runs already; that instance comes to the
/// front then.
bool InitInstance(HINSTANCE instance, int show) noexcept;
/// Gives 0 on failure.
ATOM RegisterMainWindowClass(HINSTANCE instance, LPCWSTR className) noexcept;
/// Hands what concerns the controller to it.
LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
