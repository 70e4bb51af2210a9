/// \file
/// Runs a test's body with a context to draw on.
#pragma once

#include <gtest/gtest.h>

#include "base/status.h"
#include "graphics/trace.h"
#include "support/on_phone.h"
#include "system/faults.h"

inline void OnCanvas(const std::function<void(HDC dc, const std::filesystem::path& folder)>& body) {
  OnPhone([&](TestHost&, const std::filesystem::path& folder) {
    const OwnedDC dc(CreateCompatibleDC(nullptr));
    const OwnedBitmap target(CreateCompatibleBitmap(dc.get(), 240, 40));
    SelectObject(dc.get(), target.get());
    phone::BeginTrace();
    body(dc.get(), folder);
  });
}
