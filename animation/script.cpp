#include "animation/script.h"

#include <winerror.h>

#include <new>
#include <utility>

#include "animation/easing.h"

AnimStep::~AnimStep() {
  // The tracks that found no room come after those that did.
  AnimTrack* track = room[kRoom - 1].next;
  while (track) delete std::exchange(track, track->next);
}

HRESULT AppendStep(std::unique_ptr<AnimStep>& first, AnimStep*& last, DWORD startTick, DWORD duration,
                   DWORD endMode) noexcept {
  std::unique_ptr<AnimStep> step(new (std::nothrow) AnimStep);
  if (!step) return E_OUTOFMEMORY;
  step->startTick = startTick;
  step->duration = duration;
  step->endMode = endMode;
  std::unique_ptr<AnimStep>& end = first ? last->next : first;
  end = std::move(step);
  last = end.get();
  return S_OK;
}

HRESULT AppendTrack(AnimStep& step, INT from, INT to, DWORD property, INT curve) noexcept {
  AnimTrack* const track =
      step.roomTaken < AnimStep::kRoom ? &step.room[step.roomTaken++] : new (std::nothrow) AnimTrack;
  if (!track) return E_OUTOFMEMORY;
  *track = {from, to, property, curve, nullptr};
  (step.firstTrack ? step.lastTrack->next : step.firstTrack) = track;
  step.lastTrack = track;
  return S_OK;
}

std::unique_ptr<AnimStep> TakeFirstStep(std::unique_ptr<AnimStep>& first, AnimStep*& last) noexcept {
  std::unique_ptr<AnimStep> step = std::move(first);
  first = std::move(step->next);
  if (!first) last = nullptr;
  return step;
}

void ClearScript(std::unique_ptr<AnimStep>& first, AnimStep*& last) noexcept {
  while (first) {
    [[maybe_unused]] const std::unique_ptr<AnimStep> freed = TakeFirstStep(first, last);
  }
}

INT TrackDistance(const AnimTrack& track) noexcept {
  return static_cast<INT>(static_cast<DWORD>(track.to) - static_cast<DWORD>(track.from));
}

INT TrackOffset(const AnimStep& step, const AnimTrack& track, DWORD now) noexcept {
  return Ease(now - step.startTick, 0, TrackDistance(track), step.duration, track.curve);
}

bool HasStepEnded(const AnimStep& step, DWORD now) noexcept {
  return now - step.startTick > step.duration;
}
