/// \file
/// The addresses of namespaces. libxml2 writes them as they are stored: what XML cannot hold raw has to be stored as
/// numeric references.
#pragma once

#include <libxml/tree.h>

#include <string_view>

namespace phone::xml {

/// Gives a declaration the address that this text is. Throws std::bad_alloc.
void SetAddress(xmlNs* declaration, std::string_view text);

/// After parsing: what the parser has resolved in addresses becomes references again, in the document and in what its
/// entities hold. Throws std::bad_alloc.
void StoreAddresses(xmlDoc* document);

/// Whether an element of the document declares a namespace with a reference in its address.
bool HasReferenceInAddress(xmlDoc* document) noexcept;

}  // namespace phone::xml
