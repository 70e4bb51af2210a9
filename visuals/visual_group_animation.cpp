// The group's part in its animation: applying the script to the seven properties.
#include <windows.h>

#include "base/status.h"
#include "visuals/visual_group.h"

namespace {

constexpr VisualProperty CVisual::*kProperties[] = {&CVisual::x,     &CVisual::y,     &CVisual::height, &CVisual::width,
                                                    &CVisual::alpha, &CVisual::extra, &CVisual::visible};

void ApplyEndMode(CVisual& visual, DWORD endMode) noexcept {
  for (VisualProperty CVisual::*const member : kProperties) {
    VisualProperty& property = visual.*member;
    if (endMode == STEP_END_COMMIT) property.base = property.current;
    if (endMode == STEP_END_REVERT) property.current = property.base;
  }
}

/// Sets the property that a track drives, if there is one, to its base and an offset.
void ApplyTrack(CVisual& visual, const AnimTrack& track, INT offset) noexcept {
  VisualProperty* const property = visual.FindProperty(track.property);
  if (property) property->current = property->base + offset;
}

}  // namespace

void CVisualGroup::SetInvalidateCallback(InvalidateProc callback, LPVOID context) noexcept {
  invalidateCallback = callback;
  invalidateContext = context;
}

INT CVisualGroup::Invalidate(DWORD reason) noexcept {
  if (invalidateCallback) invalidateCallback(invalidateContext, reason, tag);
  return 0;
}

void CVisualGroup::RequestFrame() noexcept {
  Invalidate(INVALIDATE_FRAME);
}

HRESULT CVisualGroup::AddStep(DWORD startTick, DWORD duration, DWORD endMode) noexcept {
  return AppendStep(firstStep, lastStep, startTick, duration, endMode);
}

HRESULT CVisualGroup::AddTrack(INT from, INT to, DWORD property, INT curve) noexcept {
  return lastStep ? AppendTrack(*lastStep, from, to, property, curve) : E_OUTOFMEMORY;
}

void CVisualGroup::StartAnimation(INT requestFrame) noexcept {
  if (!firstStep) return;
  if (firstStep->startTick == 0) firstStep->startTick = GetTickCount();
  animating = 1;
  if (requestFrame == 1) RequestFrame();
}

HRESULT CVisualGroup::TickAnimation() noexcept {
  if (!firstStep) return E_OUTOFMEMORY;
  const DWORD now = GetTickCount();
  if (!firstStep->firstTrack) return E_OUTOFMEMORY;
  for (const AnimTrack* track = firstStep->firstTrack; track; track = track->next)
    if (track->to != track->from) ApplyTrack(*this, *track, TrackOffset(*firstStep, *track, now));
  PropagateCurrent();
  // The step is finished within the tick that finds it over, so that no value past its end is ever drawn.
  if (HasStepEnded(*firstStep, GetTickCount())) {
    FinishAnimation(FINISH_STEP);
    if (firstStep) StartAnimation(1);
  }
  return S_OK;
}

void CVisualGroup::FinishAnimation(DWORD which) noexcept {
  if (!animating) return;
  while (firstStep) {
    FinishStep();
    if (which == FINISH_STEP) break;
  }
  PropagateCurrent();
  if (firstStep) return;
  Invalidate(INVALIDATE_DONE);
  animating = 0;
}

void CVisualGroup::FinishStep() noexcept {
  const std::unique_ptr<AnimStep> step = TakeFirstStep(firstStep, lastStep);
  for (const AnimTrack* track = step->firstTrack; track; track = track->next)
    if (track->to != track->from) ApplyTrack(*this, *track, TrackDistance(*track));
  ApplyEndMode(*this, step->endMode);
}
