#include "themes/favorites.h"

#include <shlwapi.h>

#include <algorithm>
#include <cstdio>
#include <new>

#include "base/paths.h"
#include "themes/dom_walk.h"
#include "themes/file_search.h"
#include "themes/xml_reading.h"

namespace {

constexpr LPCWSTR FAVORITE_FILES = TEXT("*.plg");

/// Code units that are read first; the room grows only as the file delivers.
constexpr std::size_t FIRST_READ = 4096;
/// Code units of the longest text that is kept, its zero included: as much as the phone's largest file holds.
constexpr std::size_t LONGEST_TEXT = std::size_t{1} << 25;

struct CloseStream {
  void operator()(FILE* stream) const noexcept { [[maybe_unused]] const int ignored = fclose(stream); }
};
using OwnedStream = std::unique_ptr<FILE, CloseStream>;
using OwnedText = std::unique_ptr<WCHAR[]>;

/// The plug-in's element as it is stored: a copy that carries the favourite's name.
HRESULT StoredText(const PluginRecord& plugin, LPCWSTR name, Bstr& text) noexcept {
  if (!plugin.node) return E_OUTOFMEMORY;
  ComPtr<IXMLDOMNode> copy;
  RETURN_IF_FAILED(CopyDeep(plugin.node.get(), copy));
  RETURN_IF_FAILED(SetNameAttribute(copy.get(), name));
  RETURN_IF_FAILED(copy->get_xml(text.Receive()));
  return text ? S_OK : E_OUTOFMEMORY;
}

/// Gives the text twice the room, or the whole of it when that is less.
bool Grow(OwnedText& text, std::size_t& room, std::size_t count) noexcept {
  const std::size_t newRoom = std::min(std::max(room * 2, FIRST_READ), count);
  OwnedText grown(new (std::nothrow) WCHAR[newRoom]);
  if (!grown) return false;
  std::copy_n(text.get(), room, grown.get());
  text = std::move(grown);
  room = newRoom;
  return true;
}

/// Reads `count` code units that end in a zero. A count that the file cannot hold allocates no more than about twice
/// what the file holds.
HRESULT ReadText(FILE* stream, std::size_t count, OwnedText& text) noexcept {
  if (count == 0 || count > LONGEST_TEXT) return E_FAIL;
  std::size_t room = 0;
  while (room < count) {
    const std::size_t filled = room;
    if (!Grow(text, room, count)) return E_OUTOFMEMORY;
    if (fread(&text[filled], sizeof(WCHAR), room - filled, stream) != room - filled) return E_FAIL;
  }
  return text[count - 1] == 0 ? S_OK : E_FAIL;
}

HRESULT ReadFile(LPCWSTR path, FavoriteHeader& header, OwnedText& text) noexcept {
  const OwnedStream stream(_wfopen(path, TEXT("r")));
  if (!stream) return E_OUTOFMEMORY;
  if (fread(&header, sizeof header, 1, stream.get()) != 1) return E_FAIL;
  return ReadText(stream.get(), header.count, text);
}

/// The element of a stored text, which must be a plug-in.
HRESULT ParsePlugin(LPCWSTR text, ComPtr<IXMLDOMNode>& node) noexcept {
  ComPtr<IXMLDOMDocument> document;
  RETURN_IF_FAILED(LoadXmlText(text, document));
  ComPtr<IXMLDOMNode> first;
  RETURN_IF_FAILED(document->get_firstChild(first.Receive()));
  if (!first) return E_OUTOFMEMORY;
  bool isPlugin = false;
  RETURN_IF_FAILED(IsElementNamed(first.get(), PLUGIN_ELEMENT, isPlugin));
  return isPlugin ? CopyDeep(first.get(), node) : E_FAIL;
}

HRESULT AppendFavorite(LPCWSTR path, LPCWSTR fileName, PluginRecord*& favorites) noexcept {
  std::unique_ptr<PluginRecord> record(new (std::nothrow) PluginRecord);
  if (!record) return E_OUTOFMEMORY;
  record->name.Assign(fileName);
  PathRemoveExtensionW(record->name.units);
  record->clsid.Assign(path);
  AppendToRing(favorites, std::move(record));
  return S_OK;
}

}  // namespace

bool FindFavoritesFolder(HINSTANCE instance, TextField& folder) noexcept {
  return ProgramPath(instance, FAVORITES_FOLDER, folder);
}

HRESULT WriteFavorite(LPCWSTR path, LPCWSTR name, const PluginRecord& plugin) noexcept {
  Bstr text;
  RETURN_IF_FAILED(StoredText(plugin, name, text));
  FavoriteHeader header;
  header.name.Assign(name);
  header.clsid.Assign(plugin.clsid);
  if (text.length() >= LONGEST_TEXT) return E_FAIL;
  header.count = text.length() + 1;
  OwnedStream stream(_wfopen(path, TEXT("w+")));
  if (!stream) return E_OUTOFMEMORY;
  const bool written = fwrite(&header, sizeof header, 1, stream.get()) == 1 &&
                       fwrite(text.get(), sizeof(WCHAR), header.count, stream.get()) == header.count;
  // After a failed write the stream refuses to replace the old file when it is closed.
  const bool closed = fclose(stream.release()) == 0;
  return written && closed ? S_OK : E_OUTOFMEMORY;
}

HRESULT LoadFavorites(LPCWSTR folder, PluginRecord*& favorites) noexcept {
  return VisitFiles(folder, FAVORITE_FILES,
                    [&](LPCWSTR path, LPCWSTR fileName) { return AppendFavorite(path, fileName, favorites); });
}

HRESULT ReadFavorite(LPCWSTR path, StoredPlugin& plugin) noexcept {
  FavoriteHeader header;
  OwnedText text;
  RETURN_IF_FAILED(ReadFile(path, header, text));
  std::unique_ptr<PluginRecord> record(new (std::nothrow) PluginRecord);
  if (!record) return E_OUTOFMEMORY;
  RETURN_IF_FAILED(ParsePlugin(text.get(), record->node));
  plugin.record = std::move(record);
  plugin.name = header.name;
  plugin.name.Terminate();
  return S_OK;
}

HRESULT AddPluginToTheme(StoredPlugin plugin, CScrollList& list, PluginRecord*& plugins) noexcept {
  RETURN_IF_FAILED(list.AddItem(plugin.name, 0, plugin.record.get()));
  list.SelectIndex(list.GetCount());
  AppendToRing(plugins, std::move(plugin.record));
  return S_OK;
}
