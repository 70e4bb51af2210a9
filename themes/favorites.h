/// \file
/// The favourites store: plug-ins set aside, each in a file of its own in the folder of the program.
///
/// A favourite file is a FavoriteHeader, followed by the `plugin` element as XML text without a declaration, in UTF-16
/// with a terminating zero. Everything is little-endian, nothing follows the text.
#pragma once

#include <bit>

#include "animation/list/scroll_list.h"
#include "themes/records.h"

/// The folder of the favourites, below the program's, and the extension of a favourite's file.
inline constexpr LPCWSTR FAVORITES_FOLDER = TEXT("Plugins");
inline constexpr LPCWSTR FAVORITE_EXTENSION = TEXT(".plg");

/// What a favourite file begins with, as it lies in the file.
struct FavoriteHeader {
  TextField name;   ///< the favourite's name, zeros up to the end
  TextField clsid;  ///< of the plug-in when it was saved; written, never read
  DWORD count = 0;  ///< UTF-16 code units of the text that follows, its zero included
};
static_assert(sizeof(FavoriteHeader) == 1028 && std::endian::native == std::endian::little);

/// The favourites folder; false when its path does not fit.
[[nodiscard]] bool FindFavoritesFolder(HINSTANCE instance, TextField& folder) noexcept;

/// Writes a plug-in as a favourite file; the element's `name` attribute, if it has one, takes the favourite's name. An
/// existing file is replaced, but stays as it is when the write fails. E_OUTOFMEMORY for a record without a node and
/// for a file that cannot be written, else the status of the step that failed.
[[nodiscard]] HRESULT WriteFavorite(LPCWSTR path, LPCWSTR name, const PluginRecord& plugin) noexcept;

/// Appends a record for each favourite file of a folder: its display name, and its path in
/// the `clsid` field. The files are not opened. E_OUTOFMEMORY when the search cannot be made or memory is exhausted.
[[nodiscard]] HRESULT LoadFavorites(LPCWSTR folder, PluginRecord*& favorites) noexcept;

/// A plug-in read back from a favourite file.
struct StoredPlugin {
  TextField name;                        ///< the favourite's name
  std::unique_ptr<PluginRecord> record;  ///< only its node is set
};

/// Reads a favourite file. E_OUTOFMEMORY when it cannot be opened; E_FAIL when it is damaged: shorter than its header
/// says, or its text does not end in a zero, does not parse, or is not a `plugin` element.
[[nodiscard]] HRESULT ReadFavorite(LPCWSTR path, StoredPlugin& plugin) noexcept;

/// Adds a plug-in to a theme's list as its last row, which is selected, and to the theme's ring.
[[nodiscard]] HRESULT AddPluginToTheme(StoredPlugin plugin, CScrollList& list, PluginRecord*& plugins) noexcept;
