/// \file
/// Counted strings from UTF-8.
#pragma once

#include <string_view>

#include "oleauto.h"

namespace phone {

/// Null when there is no memory. Invalid UTF-8 becomes replacement characters.
BSTR MakeBstr(std::string_view utf8) noexcept;

/// Gives the text to `*out`: S_OK, or E_OUTOFMEMORY and null.
HRESULT GiveText(std::string_view utf8, BSTR* out) noexcept;

}  // namespace phone
