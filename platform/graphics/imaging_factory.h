/// \file
/// The imaging codecs as a component.
#pragma once

#include "imaging.h"

namespace phone {

/// Makes the component of CLSID_ImagingFactory, for RegisterComponent. It decodes PNG files; their pixels are locked as
/// PixelFormat32bppPARGB, rows from the top.
HRESULT CreateImagingFactory(REFIID iid, void** object) noexcept;

}  // namespace phone
