#include "themes/writer.h"

#include "themes/dom_walk.h"
#include "themes/xml_reading.h"

namespace {

HRESULT AppendDeepCopy(IXMLDOMNode* node, IXMLDOMNode* parent) noexcept {
  ComPtr<IXMLDOMNode> copy;
  RETURN_IF_FAILED(CopyDeep(node, copy));
  return parent->appendChild(copy.get(), nullptr);
}

HRESULT AppendRetitledCopy(IXMLDOMNode* node, BSTR title, IXMLDOMNode* parent) noexcept {
  ComPtr<IXMLDOMNode> copy;
  RETURN_IF_FAILED(CopyDeep(node, copy));
  RETURN_IF_FAILED(copy->put_text(title));
  return parent->appendChild(copy.get(), nullptr);
}

/// Copies one child of the source's `home` element, unless it is a plug-in.
HRESULT AppendHomeChild(IXMLDOMNode* child, BSTR title, IXMLDOMNode* newHome) noexcept {
  bool isPlugin = false;
  RETURN_IF_FAILED(IsElementNamed(child, PLUGIN_ELEMENT, isPlugin));
  if (isPlugin) return S_OK;
  bool isTitle = false;
  RETURN_IF_FAILED(IsElementNamed(child, TITLE_ELEMENT, isTitle));
  return isTitle ? AppendRetitledCopy(child, title, newHome) : AppendDeepCopy(child, newHome);
}

HRESULT AppendPlugins(CScrollList* plugins, IXMLDOMNode* newHome) noexcept {
  if (!plugins) return S_OK;
  plugins->BeginIteration();
  LPVOID data = nullptr;
  INT value = 0;
  while (plugins->NextItem(&data, &value)) {
    const PluginRecord* const record = static_cast<const PluginRecord*>(data);
    if (!record) continue;
    if (!record->node) return E_OUTOFMEMORY;
    RETURN_IF_FAILED(AppendDeepCopy(record->node.get(), newHome));
  }
  return S_OK;
}

HRESULT AppendHome(IXMLDOMNode* home, BSTR title, CScrollList* plugins, IXMLDOMNode* document) noexcept {
  ComPtr<IXMLDOMNode> copy;
  RETURN_IF_FAILED(CopyShallow(home, copy));
  ComPtr<IXMLDOMNode> newHome;
  RETURN_IF_FAILED(document->appendChild(copy.get(), newHome.Receive()));
  if (!newHome) return E_OUTOFMEMORY;
  RETURN_IF_FAILED(
      WalkChildren(home, [&](IXMLDOMNode* child) { return AppendHomeChild(child, title, newHome.get()); }));
  return AppendPlugins(plugins, newHome.get());
}

HRESULT AppendTopLevelNode(IXMLDOMNode* node, BSTR title, CScrollList* plugins, IXMLDOMNode* document) noexcept {
  bool isHome = false;
  RETURN_IF_FAILED(IsElementNamed(node, HOME_ELEMENT, isHome));
  return isHome ? AppendHome(node, title, plugins, document) : AppendDeepCopy(node, document);
}

}  // namespace

HRESULT WriteThemeFile(IXMLDOMDocument* source, LPCWSTR title, LPCWSTR path, CScrollList* plugins) noexcept {
  if (!source) return E_OUTOFMEMORY;
  const Bstr newTitle(title);
  const Bstr target(path);
  if (!newTitle || !target) return E_OUTOFMEMORY;
  ComPtr<IXMLDOMDocument> document;
  RETURN_IF_FAILED(CreateDocument(document));
  RETURN_IF_FAILED(WalkChildren(
      source, [&](IXMLDOMNode* node) { return AppendTopLevelNode(node, newTitle.get(), plugins, document.get()); }));
  return document->save(TextVariant(target));
}
