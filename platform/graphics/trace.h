/// \file
/// The draw trace: what the program asked to be drawn in its last frame, call by call.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "wingdi.h"

namespace phone {

enum class DrawKind : std::uint8_t { BitBlt, StretchBlt, AlphaBlend, DrawText };

struct DrawRecord {
  DrawKind kind;
  std::string target;  ///< window, screen, memory1, ...
  RECT rect;           ///< px, the target rectangle

  std::string from;  ///< of the blits
  int source_width = 0;
  int source_height = 0;
  std::optional<std::uint32_t> picture;  ///< CRC-32 of the source's pixels; none for a buffer that is drawn into
  int alpha = 0;                         ///< of AlphaBlend: the constant opacity
  int alpha_format = 0;

  std::u16string text;  ///< of DrawText
  std::u16string face;
  int size = 0;  ///< px, the requested character height
  int weight = 0;
  COLORREF color = 0;
  bool transparent = false;
  UINT format = 0;
};

/// On at first. While it is off nothing is kept.
void EnableTrace(bool on);
extern bool trace_enabled;
inline bool TraceEnabled() noexcept {
  return trace_enabled;
}
/// A frame begins: forgets the records of the one before.
void BeginTrace();
/// What was drawn since the last BeginTrace, in order.
const std::vector<DrawRecord>& TraceRecords();
/// Forgets the records and begins the names memory1, memory2, ... anew.
void ResetTrace();

}  // namespace phone
