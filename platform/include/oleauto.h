/// \file
/// Counted strings and variants.
#pragma once

#include <objbase.h>

/// A text with its length kept before it; owned by whoever received it, freed with SysFreeString.
using BSTR = WCHAR*;
using VARIANT_BOOL = SHORT;

#define VARIANT_TRUE (static_cast<VARIANT_BOOL>(-1))
#define VARIANT_FALSE (static_cast<VARIANT_BOOL>(0))
#define VT_BSTR 8

struct VARIANT {
  USHORT vt;
  WORD wReserved1;
  WORD wReserved2;
  WORD wReserved3;
  union {
    LONG lVal;
    BSTR bstrVal;
    void* brecVal[2];  ///< the largest value that a variant can hold: a record and what describes it
  };
};

/// A copy of the text, null when there is no memory.
BSTR SysAllocString(const WCHAR* text);
void SysFreeString(BSTR text);
/// Length in code units; 0 for null.
UINT SysStringLen(BSTR text);
