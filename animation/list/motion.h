/// \file
/// Building the animations of a list. Statuses are not examined: a motion that cannot have its memory is left out.
#pragma once

#include "animation/easing.h"
#include "base/status.h"
#include "visuals/visual_group.h"

inline constexpr DWORD kBarDuration = 200;  ///< ms, a selection bar slides
inline constexpr DWORD kRowDuration = 500;  ///< ms, everything else

inline void QueueStep(CVisualGroup& group, DWORD startTick, DWORD duration) noexcept {
  Unexamined(group.AddStep(startTick, duration, STEP_END_COMMIT));
}

/// From the property's current value to `to`.
inline void QueueTrack(CVisualGroup& group, DWORD property, INT to) noexcept {
  Unexamined(group.AddTrack(group.GetValue(property, VALUE_ABSOLUTE), to, property, EASE_LINEAR));
}

/// Waits for the next repaint.
inline void StartQuietly(CVisualGroup& group) noexcept {
  constexpr INT kNoFrame = 0;
  group.StartAnimation(kNoFrame);
}

/// Finishes a group's animation and moves one property from where it then is to `to`. Skips a group that is missing.
inline void Slide(CVisualGroup* group, DWORD startTick, DWORD duration, DWORD property, INT to) noexcept {
  if (!group) return;
  group->FinishAnimation(FINISH_ALL);
  QueueStep(*group, startTick, duration);
  QueueTrack(*group, property, to);
  StartQuietly(*group);
}
