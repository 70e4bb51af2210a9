/// \file
/// The maker of XML documents, for CoCreateInstance.
#pragma once

#include "msxml2.h"

namespace phone {

/// A new empty document. A document and its nodes belong to one thread at a time.
HRESULT CreateDomDocument(REFIID iid, void** object) noexcept;

}  // namespace phone
