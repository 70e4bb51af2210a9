// A favourite file: listed, added to a theme, kept again under another name, and read back.

#include "themes/favorites.h"
#include "fuzz/fuzzing.h"

namespace {

using fuzzing::Phone;
using fuzzing::Require;

constexpr LPCWSTR kFolder = TEXT("\\Plugins");
constexpr LPCWSTR kRead = TEXT("\\Plugins\\in.plg");
constexpr LPCWSTR kWritten = TEXT("\\Kept\\out.plg");
constexpr char kWrittenFile[] = "Kept/out.plg";
constexpr LPCWSTR kName = TEXT("R & D \"<\u00e9\u4e16\U0001f600>\"");

/// Keeps the plug-in, and what was kept once more: the two files are the same.
void KeepTwice(const PluginRecord& plugin) {
  Require(WriteFavorite(kWritten, kName, plugin) == S_OK, "what was read can be kept");
  const std::string first = Phone::On().Content(kWrittenFile);
  StoredPlugin again;
  Require(ReadFavorite(kWritten, again) == S_OK, "what was kept can be read");
  Require(std::u16string_view(again.name) == kName, "the name is the new one");
  Require(WriteFavorite(kWritten, kName, *again.record) == S_OK, "what was kept can be kept again");
  Require(Phone::On().Content(kWrittenFile) == first, "keeping again changes nothing");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Phone::On().Put("Plugins/in.plg", fuzzing::TextOf(data, size));
  Phone::On().Put(kWrittenFile, "old");
  PluginRecord* favorites = nullptr;
  Require(LoadFavorites(kFolder, favorites) == S_OK, "the favourites can be listed");
  Require(favorites && favorites->next == favorites, "there is one favourite");
  ClearRing(favorites);
  StoredPlugin stored;
  if (FAILED(ReadFavorite(kRead, stored))) return 0;
  KeepTwice(*stored.record);
  CScrollList list;
  PluginRecord* plugins = nullptr;
  Require(AddPluginToTheme(std::move(stored), list, plugins) == S_OK, "what was read can be added");
  list.Destroy();
  ClearRing(plugins);
  return 0;
}
