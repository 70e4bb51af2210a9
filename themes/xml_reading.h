/// \file
/// Reading layout files: loading documents, the title rule, the plug-ins of a theme.
///
/// A layout file is a document whose root element is `home`; its direct children `title` and `plugin` are what the
/// program reads. Names of elements and attributes, and the language "0x0409", match without regard to case. For the
/// user-interface thread.
#pragma once

#include "themes/records.h"

inline constexpr LPCWSTR HOME_ELEMENT = TEXT("home");
inline constexpr LPCWSTR TITLE_ELEMENT = TEXT("title");
inline constexpr LPCWSTR PLUGIN_ELEMENT = TEXT("plugin");

/// A new, empty document that loads synchronously. COM must be initialised on this thread.
[[nodiscard]] HRESULT CreateDocument(ComPtr<IXMLDOMDocument>& slot) noexcept;
/// Loads a file into a new document. E_FAIL when it does not parse; the slot may then hold the half-made document.
[[nodiscard]] HRESULT LoadXmlFile(LPCWSTR path, ComPtr<IXMLDOMDocument>& slot) noexcept;
/// Parses a text into a new document; the same way.
[[nodiscard]] HRESULT LoadXmlText(LPCWSTR text, ComPtr<IXMLDOMDocument>& slot) noexcept;

/// The text of the element's first attribute of that name, "Unknow" when there is none or it cannot be read.
[[nodiscard]] HRESULT GetAttributeText(IXMLDOMNode* element, LPCWSTR name, TextField& destination) noexcept;
/// Sets the text of the element's first `name` attribute; none is ever added. E_OUTOFMEMORY without an element.
[[nodiscard]] HRESULT SetNameAttribute(IXMLDOMNode* element, LPCWSTR text) noexcept;

/// The display title of a `home` element: the text of the first `title` in English ("0x0409") if it is not empty, else
/// the first text without a language that is not empty, else the first text of all, else "Unknow". The destination is
/// written after a failure too, from what was read before it.
[[nodiscard]] HRESULT ReadThemeTitle(IXMLDOMNode* home, TextField& destination) noexcept;
/// Fills the ring anew with the `plugin` children of a `home` element, in document order. What was read before a
/// failure stays in the ring.
[[nodiscard]] HRESULT ReadHomePlugins(IXMLDOMNode* home, PluginRecord*& plugins) noexcept;
/// The same for a theme's document; without a `home` element the ring stays as it is.
[[nodiscard]] HRESULT ReadThemePlugins(const ThemeRecord& theme, PluginRecord*& plugins) noexcept;
