/// \file
/// Writing a theme: a new layout file from the document it was opened from and the editor's list.
#pragma once

#include "animation/list/scroll_list.h"
#include "themes/records.h"

/// Writes a copy of the source to a file in which every title reads `title` and the plug-ins, after all other children
/// of the `home` element, are those of the list's rows (PluginRecord) in their order; no list means no plug-ins. The
/// source and the records are not changed. Ends with the status of the step that failed, E_OUTOFMEMORY for a record
/// without a node; nothing is written then.
[[nodiscard]] HRESULT WriteThemeFile(IXMLDOMDocument* source, LPCWSTR title, LPCWSTR path,
                                     CScrollList* plugins) noexcept;
