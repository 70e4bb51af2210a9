/// \file
/// What a Surface is made of.
#pragma once

#include "graphics/bitmap.h"
#include "graphics/surface.h"

namespace phone {

struct Surface::Impl {
  Ref<Bitmap> bitmap;
};

}  // namespace phone
