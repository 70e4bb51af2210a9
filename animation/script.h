/// \file
/// Animation scripts: a queue of steps, each a set of tracks, each track moving one property along an easing curve.
///
/// These are the records and the arithmetic; CVisualGroup carries a script and applies it to its properties.
#pragma once

#include <windef.h>

#include <memory>

/// What happens to the properties when a step ends. Any other value: nothing.
enum StepEndMode : DWORD {
  STEP_END_COMMIT = 1,  ///< every property's base becomes its current value
  STEP_END_REVERT = 2,  ///< every property's current value returns to its base
};

/// What CVisualGroup::FinishAnimation finishes.
enum FinishScope : DWORD {
  FINISH_STEP = 2,   ///< the current step only
  FINISH_ALL = 127,  ///< the whole script; any other value does the same
};

/// Why an owner is asked for a repaint.
enum InvalidateReason : DWORD {
  INVALIDATE_FRAME = 1,  ///< a running script wants its next frame
  INVALIDATE_DONE = 2,   ///< the script has finished
};

/// Asks an owner for a repaint. `tag` names the group that asks. The result is ignored.
using InvalidateProc = INT (*)(LPVOID context, DWORD reason, DWORD tag);

/// One animated property of a step.
struct AnimTrack {
  INT from = 0;  ///< only the distance `to` - `from` counts: a motion begins at the property's base value
  INT to = 0;
  DWORD property = 0;  ///< one of the PROP_ identifiers; any other is carried along and changes nothing
  INT curve = 0;       ///< an EaseCurve
  AnimTrack* next = nullptr;
};

/// One step of a script: its tracks run together. It owns them.
struct AnimStep {
  AnimStep() noexcept = default;
  AnimStep(const AnimStep&) = delete;
  AnimStep& operator=(const AnimStep&) = delete;
  ~AnimStep();

  DWORD startTick = 0;  ///< ms, the tick count; 0 until the step starts, for "when it becomes the current one"
  DWORD duration = 0;   ///< ms
  DWORD endMode = 0;    ///< a StepEndMode
  AnimTrack* firstTrack = nullptr;
  AnimTrack* lastTrack = nullptr;
  std::unique_ptr<AnimStep> next;

  /// The first tracks lie within the step: a list starts a step with up to three of them on each of its rows at once.
  static constexpr DWORD kRoom = 3;
  AnimTrack room[kRoom];
  DWORD roomTaken = 0;
};

/// Puts a step without tracks at the end of the queue and makes it `last`. E_OUTOFMEMORY when it cannot be allocated;
/// then nothing changes.
[[nodiscard]] HRESULT AppendStep(std::unique_ptr<AnimStep>& first, AnimStep*& last, DWORD startTick, DWORD duration,
                                 DWORD endMode) noexcept;

/// Puts a track at the end of a step's tracks. E_OUTOFMEMORY when it cannot be allocated; then nothing changes.
[[nodiscard]] HRESULT AppendTrack(AnimStep& step, INT from, INT to, DWORD property, INT curve) noexcept;

/// Takes the current step off the queue and gives it to the caller; the queue must not be empty. `last` becomes null
/// with the last step.
[[nodiscard]] std::unique_ptr<AnimStep> TakeFirstStep(std::unique_ptr<AnimStep>& first, AnimStep*& last) noexcept;

/// Frees every step, one after another.
void ClearScript(std::unique_ptr<AnimStep>& first, AnimStep*& last) noexcept;

/// How far a track has come at the tick count `now`, as an offset to its property's base.
INT TrackOffset(const AnimStep& step, const AnimTrack& track, DWORD now) noexcept;

/// The distance a track covers by the end of its step.
INT TrackDistance(const AnimTrack& track) noexcept;

/// True once more than the step's duration has passed since its start; the tick count may wrap in between.
bool HasStepEnded(const AnimStep& step, DWORD now) noexcept;
