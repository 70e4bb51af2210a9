/// \file
/// Read before each of the program's sources when they are compiled with another family's headers: where a phone's
/// headers differ from those of a desktop.
#pragma once

// A desktop's bounded copies poison the names of older ones, which its other headers declare later.
#define STRSAFE_NO_DEPRECATE

#include <windows.h>

// On the phone the command line of the program's entry point is wide.
#define WinMain wWinMain
