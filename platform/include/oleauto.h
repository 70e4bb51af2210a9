/// \file
/// Counted strings and variants.
#pragma once

#include "objbase.h"

/// A text with its length kept before it; owned by whoever received it, freed with SysFreeString.
using BSTR = WCHAR*;
using VARIANT_BOOL = SHORT;
using VARTYPE = USHORT;

#define VARIANT_TRUE (static_cast<VARIANT_BOOL>(-1))
#define VARIANT_FALSE (static_cast<VARIANT_BOOL>(0))
#define VT_EMPTY 0
#define VT_BSTR 8

struct VARIANT {
  VARTYPE vt;
  WORD wReserved1;
  WORD wReserved2;
  WORD wReserved3;
  union {
    LONG lVal;
    BSTR bstrVal;
  };
};

/// A copy of the text, null when there is no memory.
BSTR SysAllocString(const WCHAR* text);
void SysFreeString(BSTR text);
/// Length in code units; 0 for null.
UINT SysStringLen(BSTR text);
