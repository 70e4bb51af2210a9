#include "app/controller.h"
#include "app/form_input.h"
#include "app/messages.h"
#include "base/paths.h"
#include "base/status.h"
#include "screens/list_building.h"
#include "themes/favorites.h"

namespace {

constexpr int SHORTEST_NAME = 2;  // code units

/// The path of the favourite of that name; false when it does not fit.
bool FavoritePath(LPCWSTR folder, LPCWSTR name, TextField& path) noexcept {
  return JoinPath(path, folder, name) && path.Append(FAVORITE_EXTENSION);
}

}  // namespace

HRESULT CAppController::SaveFavorite() noexcept {
  const PluginRecord* const plugin = SelectedPlugin();
  if (!plugin) return E_OUTOFMEMORY;
  const TextField name = ReadEditText(favoriteNameEdit);
  if (name.empty()) return E_FAIL;
  if (lstrlenW(name) < SHORTEST_NAME) {
    ShowNotice(MESSAGE_FAVORITE_NAME_TOO_SHORT);
    return E_FAIL;
  }
  TextField folder;
  if (!FindFavoritesFolder(instance, folder)) return E_OUTOFMEMORY;
  CreateDirectoryW(folder, nullptr);
  TextField path;
  if (!FavoritePath(folder, name, path)) return E_OUTOFMEMORY;
  if (FileExists(path) && !Ask(MESSAGE_OVERWRITE)) return E_FAIL;
  return WriteFavorite(path, name, *plugin);
}

HRESULT CAppController::AddFavoriteToTheme(LPCWSTR path) noexcept {
  StoredPlugin plugin;
  RETURN_IF_FAILED(ReadFavorite(path, plugin));
  if (pluginList) return AddPluginToTheme(std::move(plugin), *pluginList, pluginRecords);
  // The theme was opened without plug-ins.
  std::unique_ptr<CScrollList> newList;
  RETURN_IF_FAILED(CreateScreenList(*this, mainWindow, newList));
  newList->UpdateScrollBar(GetTickCount());
  RETURN_IF_FAILED(AddPluginToTheme(std::move(plugin), *newList, pluginRecords));
  pluginList = std::move(newList);
  return S_OK;
}
