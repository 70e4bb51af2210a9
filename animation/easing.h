/// \file
/// Easing curves: how far a motion has come at a moment of its duration.
#pragma once

#include <windef.h>

/// The classic easing family. "In" accelerates, "out" decelerates, "in-out" does both, each in its half.
enum EaseCurve : INT {
  EASE_LINEAR = 1,           ///< constant speed
  EASE_QUAD_IN = 2,          ///< quadratic, from rest
  EASE_QUAD_OUT = 3,         ///< quadratic, to rest
  EASE_QUAD_IN_OUT = 4,      ///< quadratic, from rest to rest
  EASE_EXPO_IN = 5,          ///< exponential, from rest
  EASE_EXPO_OUT = 6,         ///< exponential, to rest
  EASE_EXPO_IN_OUT = 7,      ///< exponential, from rest to rest
  EASE_BACK_IN = 8,          ///< pulls back below the start before leaving
  EASE_BACK_OUT = 9,         ///< overshoots the end and settles back
  EASE_BACK_IN_OUT = 10,     ///< pulls back at the start and overshoots at the end
  EASE_ELASTIC_IN = 11,      ///< an oscillation that grows and ends on the target
  EASE_ELASTIC_OUT = 12,     ///< an oscillation around the target that dies away
  EASE_ELASTIC_IN_OUT = 13,  ///< an oscillation that grows, then dies away
  EASE_BOUNCE_IN = 14,       ///< bounces that grow towards the end
  EASE_BOUNCE_OUT = 15,      ///< falls onto the target and bounces three times
  EASE_BOUNCE_IN_OUT = 16,   ///< bounces in, then out
};

/// The value of a motion from `begin` by `change`, `elapsed` milliseconds into its `duration` in milliseconds: `begin`
/// at 0, `begin` + `change` from `duration` on (a duration of 0 is over at once). Halves round away from zero. An
/// unknown curve gives 0. All arithmetic is in double precision.
INT Ease(DWORD elapsed, INT begin, INT change, DWORD duration, INT curve) noexcept;
