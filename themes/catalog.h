/// \file
/// The catalog: every layout file on the phone, with its title.
#pragma once

#include "themes/records.h"

/// The folder of the layout files, below the application-data folder.
inline constexpr LPCWSTR THEME_FOLDER = TEXT("Home");

/// Finds the application-data folder; false when the phone does not know it.
[[nodiscard]] bool FindApplicationData(HWND window, FixedText<MAX_PATH>& folder) noexcept;

/// Fills the ring anew with one record for each layout file, in the file system's order; `applicationData` is that
/// folder without a closing separator. A file that cannot be read or parsed, has no `home` element, or whose path does
/// not fit, is left out. E_OUTOFMEMORY when the search cannot be made or memory is exhausted; a failure of the document
/// model ends the catalog with its status. What was read before a failure stays in the ring.
[[nodiscard]] HRESULT LoadThemeCatalog(LPCWSTR applicationData, ThemeRecord*& themes) noexcept;
