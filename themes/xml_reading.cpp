#include "themes/xml_reading.h"

#include <new>

#include "themes/dom_walk.h"

namespace {

constexpr LPCWSTR ENGLISH = TEXT("0x0409");
constexpr LPCWSTR LANGUAGE_ATTRIBUTE = TEXT("lang");
constexpr LPCWSTR NAME_ATTRIBUTE = TEXT("name");
constexpr LPCWSTR CLSID_ATTRIBUTE = TEXT("clsid");

HRESULT CreateEmptySlot(ComPtr<IXMLDOMDocument>& slot) noexcept {
  slot.Reset();
  RETURN_IF_FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED));
  return CreateDocument(slot);
}

/// The status of a load from the call's own and from what it reports.
HRESULT LoadStatus(HRESULT status, VARIANT_BOOL parsed) noexcept {
  RETURN_IF_FAILED(status);
  return parsed == VARIANT_FALSE ? E_FAIL : S_OK;
}

/// The two candidates of the title rule.
struct TitleChoice {
  TextField chosen;
  TextField fallback;

  LPCWSTR Result() const noexcept {
    if (!chosen.empty()) return chosen;
    return fallback.empty() ? UNKNOWN_TEXT : fallback;
  }
};

/// What the `lang` attributes of a title say.
struct TitleLanguage {
  bool given = false;
  bool english = false;
};

HRESULT ReadTitleLanguage(IXMLDOMNode* title, TitleLanguage& language) noexcept {
  return WalkAttributesNamed(title, LANGUAGE_ATTRIBUTE, [&](IXMLDOMNode* attribute) -> HRESULT {
    language.given = true;
    Bstr text;
    RETURN_IF_FAILED(attribute->get_text(text.Receive()));
    language.english = lstrcmpiW(text.text(), ENGLISH) == 0;
    return language.english ? WALK_ENDS : S_OK;
  });
}

/// Takes one title into account; an English one ends the search, even with an empty text.
HRESULT ConsiderTitle(IXMLDOMNode* title, TitleChoice& choice) noexcept {
  Bstr text;
  RETURN_IF_FAILED(title->get_text(text.Receive()));
  if (choice.fallback.empty()) choice.fallback.Assign(text.text());
  TitleLanguage language;
  RETURN_IF_FAILED(ReadTitleLanguage(title, language));
  if (language.english || (!language.given && choice.chosen.empty())) choice.chosen.Assign(text.text());
  return language.english ? WALK_ENDS : S_OK;
}

HRESULT AppendPlugin(IXMLDOMNode* element, PluginRecord*& plugins) noexcept {
  std::unique_ptr<PluginRecord> record(new (std::nothrow) PluginRecord);
  if (!record) return E_OUTOFMEMORY;
  RETURN_IF_FAILED(CopyDeep(element, record->node));
  Unexamined(GetAttributeText(element, NAME_ATTRIBUTE, record->name));
  Unexamined(GetAttributeText(element, CLSID_ATTRIBUTE, record->clsid));
  AppendToRing(plugins, std::move(record));
  return S_OK;
}

}  // namespace

HRESULT CreateDocument(ComPtr<IXMLDOMDocument>& slot) noexcept {
  void* object = nullptr;
  const HRESULT status = CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                          IID_IXMLDOMDocument, &object);
  RETURN_IF_FAILED(status);
  *slot.Receive() = static_cast<IXMLDOMDocument*>(object);
  if (!slot) return E_OUTOFMEMORY;
  return slot->put_async(VARIANT_FALSE);
}

HRESULT LoadXmlFile(LPCWSTR path, ComPtr<IXMLDOMDocument>& slot) noexcept {
  RETURN_IF_FAILED(CreateEmptySlot(slot));
  const Bstr source(path);
  if (!source) return E_OUTOFMEMORY;
  VARIANT_BOOL parsed = VARIANT_FALSE;
  const HRESULT status = slot->load(TextVariant(source), &parsed);
  return LoadStatus(status, parsed);
}

HRESULT LoadXmlText(LPCWSTR text, ComPtr<IXMLDOMDocument>& slot) noexcept {
  RETURN_IF_FAILED(CreateEmptySlot(slot));
  const Bstr source(text);
  if (!source) return E_OUTOFMEMORY;
  VARIANT_BOOL parsed = VARIANT_FALSE;
  const HRESULT status = slot->loadXML(source.get(), &parsed);
  return LoadStatus(status, parsed);
}

HRESULT GetAttributeText(IXMLDOMNode* element, LPCWSTR name, TextField& destination) noexcept {
  destination.Assign(UNKNOWN_TEXT);
  return WalkAttributesNamed(element, name, [&](IXMLDOMNode* attribute) -> HRESULT {
    Bstr text;
    RETURN_IF_FAILED(attribute->get_text(text.Receive()));
    destination.Assign(text.text());
    return WALK_ENDS;
  });
}

HRESULT SetNameAttribute(IXMLDOMNode* element, LPCWSTR text) noexcept {
  if (!element) return E_OUTOFMEMORY;
  return WalkAttributesNamed(element, NAME_ATTRIBUTE, [&](IXMLDOMNode* attribute) -> HRESULT {
    const Bstr value(text);
    if (!value) return E_OUTOFMEMORY;
    RETURN_IF_FAILED(attribute->put_text(value.get()));
    return WALK_ENDS;
  });
}

HRESULT ReadThemeTitle(IXMLDOMNode* home, TextField& destination) noexcept {
  TitleChoice choice;
  const HRESULT status =
      WalkElementsNamed(home, TITLE_ELEMENT, [&](IXMLDOMNode* title) { return ConsiderTitle(title, choice); });
  destination.Assign(choice.Result());
  return status;
}

HRESULT ReadHomePlugins(IXMLDOMNode* home, PluginRecord*& plugins) noexcept {
  ClearRing(plugins);
  return WalkElementsNamed(home, PLUGIN_ELEMENT, [&](IXMLDOMNode* element) { return AppendPlugin(element, plugins); });
}

HRESULT ReadThemePlugins(const ThemeRecord& theme, PluginRecord*& plugins) noexcept {
  if (!theme.document) return E_OUTOFMEMORY;
  return WalkElementsNamed(theme.document.get(), HOME_ELEMENT, [&](IXMLDOMNode* home) -> HRESULT {
    RETURN_IF_FAILED(ReadHomePlugins(home, plugins));
    return WALK_ENDS;
  });
}
