// A layout file on its whole way: listed in the catalog with its title, opened with its plug-ins, saved under a new
// title, and read back. The saved file has all that the program does not mean to change.

#include <algorithm>
#include <vector>

#include "base/paths.h"
#include "fuzz/fuzzing.h"
#include "themes/catalog.h"
#include "themes/dom_walk.h"
#include "themes/writer.h"
#include "themes/xml_reading.h"

namespace {

using fuzzing::Phone;
using fuzzing::Require;

constexpr LPCWSTR kTitle = TEXT("R & D <\u00e9\u4e16\U0001f600>");
constexpr LPCWSTR kApplicationData = TEXT("\\Application Data");
constexpr LPCWSTR kSavedPath = TEXT("\\Saved\\new.home.xml");

/// Without the marks of CDATA sections: a section is divided where its encoding cannot hold a character.
std::u16string WithoutCdata(std::u16string xml) {
  constexpr std::u16string_view kBegin = u"<![CDATA[";
  constexpr std::u16string_view kEnd = u"]]>";
  std::size_t at = 0;
  while ((at = xml.find(kBegin, at)) != xml.npos) {
    xml.erase(at, kBegin.size());
    at = std::min(xml.find(kEnd, at), xml.size());
    xml.erase(at, kEnd.size());
  }
  return xml;
}

std::u16string XmlOf(IXMLDOMNode* node) {
  Bstr xml;
  Require(node->get_xml(xml.Receive()) == S_OK, "a node has an XML text");
  return WithoutCdata({xml.text(), xml.length()});
}

/// What a save has to keep, and what it makes of titles and plug-ins.
struct Content {
  std::u16string others;  ///< the XML of everything but titles and plug-ins, in order
  int titles = 0;
  std::vector<std::u16string> plugins;  ///< their XML
};

/// The XML of an element's start tag.
std::u16string StartOf(IXMLDOMNode* element) {
  ComPtr<IXMLDOMNode> start;
  Require(CopyShallow(element, start) == S_OK, "an element can be copied");
  return XmlOf(start.get());
}

void AddHome(IXMLDOMNode* home, Content& content) {
  content.others += StartOf(home);
  const HRESULT status = WalkChildren(home, [&](IXMLDOMNode* child) -> HRESULT {
    bool plugin = false;
    bool title = false;
    RETURN_IF_FAILED(IsElementNamed(child, PLUGIN_ELEMENT, plugin));
    RETURN_IF_FAILED(IsElementNamed(child, TITLE_ELEMENT, title));
    if (plugin) content.plugins.push_back(XmlOf(child));
    if (title) content.others += StartOf(child);
    if (!plugin && !title) content.others += XmlOf(child);
    content.titles += title ? 1 : 0;
    return S_OK;
  });
  Require(status == S_OK, "a home element can be walked");
}

Content ContentOf(IXMLDOMDocument* document) {
  Content content;
  const HRESULT status = WalkChildren(document, [&](IXMLDOMNode* node) -> HRESULT {
    bool home = false;
    RETURN_IF_FAILED(IsElementNamed(node, HOME_ELEMENT, home));
    if (home) {
      AddHome(node, content);
    } else {
      content.others += XmlOf(node);
    }
    return S_OK;
  });
  Require(status == S_OK, "a document can be walked");
  return content;
}

/// An open theme, with the editor's list of its plug-ins.
struct OpenTheme {
  explicit OpenTheme(const ThemeRecord& theme) {
    Require(ReadThemePlugins(theme, plugins) == S_OK, "the plug-ins can be read");
    for (PluginRecord& plugin : RingRange(plugins))
      Require(list.AddItem(plugin.name, 0, &plugin) == S_OK, "a row can be added");
  }
  ~OpenTheme() {
    list.Destroy();
    ClearRing(plugins);
  }

  PluginRecord* plugins = nullptr;
  CScrollList list;
};

HRESULT Save(const ThemeRecord& theme) {
  OpenTheme open(theme);
  return WriteThemeFile(theme.document.get(), kTitle, kSavedPath, &open.list);
}

void CheckSaved(const Content& before) {
  ThemeRecord saved;
  Require(LoadXmlFile(kSavedPath, saved.document) == S_OK, "what was saved is a well-formed document");
  const Content after = ContentOf(saved.document.get());
  Require(after.plugins == before.plugins, "the plug-ins are the same, in order");
  Require(after.others == before.others, "nothing else is changed");
  const HRESULT status = WalkElementsNamed(saved.document.get(), HOME_ELEMENT,
                                           [&](IXMLDOMNode* home) { return ReadThemeTitle(home, saved.title); });
  Require(status == S_OK, "the saved title can be read");
  Require(std::u16string_view(saved.title) == (before.titles > 0 ? kTitle : UNKNOWN_TEXT), "the title is the new one");

  const std::string bytes = Phone::On().Content("Saved/new.home.xml");
  Require(Save(saved) == S_OK, "what was saved can be saved");
  Require(Phone::On().Content("Saved/new.home.xml") == bytes, "saving again changes nothing");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Phone& phone = Phone::On();
  phone.Put("Application Data/Home/in.home.xml", fuzzing::TextOf(data, size));
  phone.Put("Saved/new.home.xml", "old");
  ThemeRecord* themes = nullptr;
  Require(LoadThemeCatalog(kApplicationData, themes) == S_OK, "the catalog can be read");
  if (themes) {
    if (SUCCEEDED(Save(*themes))) {
      CheckSaved(ContentOf(themes->document.get()));
    } else {
      Require(phone.Content("Saved/new.home.xml") == "old", "a save that fails leaves the old file");
    }
  }
  ClearRing(themes);
  return 0;
}
