/// \file
/// The records that the whole program works with. They live in rings (base/ring.h) in the order they were found; list
/// rows borrow pointers to them, so a list goes before the ring it was built from.
#pragma once

#include <msxml2.h>

#include "base/com_owner.h"
#include "base/ring.h"
#include "base/text_field.h"

/// What a text reads as that a layout file does not give.
inline constexpr LPCWSTR UNKNOWN_TEXT = TEXT("Unknow");

/// One theme: a layout file of the home screen.
struct ThemeRecord {
  // What a search for a path reads lies close together.
  ThemeRecord* next = nullptr;
  ThemeRecord* prev = nullptr;
  ComPtr<IXMLDOMDocument> document;  ///< the parsed file
  TextField path;                    ///< the full path
  TextField title;                   ///< the display title
  TextField fileName;                ///< the bare name, extension included
};

/// One plug-in of the open theme, or one favourite. A plug-in that was added from a favourite has neither name nor
/// clsid here; its row shows the name that was stored with it.
struct PluginRecord {
  TextField name;   ///< of a plug-in the attribute, of a favourite its display name
  TextField clsid;  ///< of a plug-in the attribute, of a favourite the full path of its file
  PluginRecord* next = nullptr;
  PluginRecord* prev = nullptr;
  ComPtr<IXMLDOMNode> node;  ///< an own copy of the `plugin` element; none in a favourite or after its removal
};
