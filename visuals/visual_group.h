/// \file
/// A visual made of image and text children that follow it, and that an animation script moves.
#pragma once

#include <memory>

#include "animation/script.h"
#include "visuals/image_visual.h"
#include "visuals/text_visual.h"
#include "visuals/visual.h"

/// One place in a ring of children, in the order they were added.
template <typename Visual>
struct ChildNode {
  Visual* member = nullptr;  ///< the group's to delete
  ChildNode* next = nullptr;
  ChildNode* prev = nullptr;
};

class CVisualGroup : public CVisual {
 public:
  /// Height comes before width.
  CVisualGroup(DWORD newTag, INT left, INT top, INT newHeight, INT newWidth) noexcept;
  CVisualGroup(const CVisualGroup&) = delete;
  CVisualGroup& operator=(const CVisualGroup&) = delete;
  ~CVisualGroup();

  // --- Layout (visual_group.cpp) ---

  /// Moves the group and lays out every child again.
  void MoveTo(INT newX, INT newY) noexcept;
  /// Resizes the group and lays out every child again; height first.
  void Resize(INT newHeight, INT newWidth) noexcept;
  /// Sets the opacity of the group and of every image child, 0 to 255; texts stay opaque.
  void SetGroupAlpha(INT value) noexcept;
  /// Adds an image, or lays it out again when it is a child already. From its adding on the group owns it; after a
  /// failure it is still the caller's. E_OUTOFMEMORY for null or when a node cannot be allocated. The anchors take
  /// effect at the group's next layout.
  [[nodiscard]] HRESULT AddImage(CImageVisual* image, DWORD childAnchors) noexcept;
  /// Adds a text, which must not be null; the same way, without the test for membership.
  [[nodiscard]] HRESULT AddText(CTextVisual* text, DWORD childAnchors) noexcept;
  void PropagateOrigin(INT originX, INT originY) noexcept;
  void PropagateExtent(INT extentHeight, INT extentWidth) noexcept;
  /// To the image children only.
  void PropagateAlpha(INT value) noexcept;
  /// Advances the animation, draws the images and then the texts, each in the order they were added, and asks for the
  /// next frame while the script runs. `selector` is the ValueSelector of the images' drawing position.
  void Draw(HDC dc, DWORD selector) noexcept;
  void DestroyChildren() noexcept;

  // --- Animation (visual_group_animation.cpp) ---

  void SetInvalidateCallback(InvalidateProc callback, LPVOID context) noexcept;
  /// Calls the callback, if there is one, with an InvalidateReason. Gives 0.
  INT Invalidate(DWORD reason) noexcept;
  void RequestFrame() noexcept;
  /// Queues a step; ticks and duration in milliseconds, a StepEndMode. E_OUTOFMEMORY when it cannot be allocated.
  [[nodiscard]] HRESULT AddStep(DWORD startTick, DWORD duration, DWORD endMode) noexcept;
  /// Adds a track to the step queued last. E_OUTOFMEMORY when it cannot be allocated or there is no step.
  [[nodiscard]] HRESULT AddTrack(INT from, INT to, DWORD property, INT curve) noexcept;
  /// Sets a queued script running; 1 asks for a frame at once. Nothing happens without a step.
  void StartAnimation(INT requestFrame) noexcept;
  /// Brings the properties to the present tick and finishes a step that has ended. E_OUTOFMEMORY without a step or a
  /// track.
  [[nodiscard]] HRESULT TickAnimation() noexcept;
  /// Brings a running script, or its current step (a FinishScope), to its exact end values.
  void FinishAnimation(DWORD which) noexcept;

  /// Hands the current position, size and opacity to the children.
  void PropagateCurrent() noexcept;

  ChildNode<CImageVisual>* images = nullptr;
  ChildNode<CTextVisual>* texts = nullptr;
  BYTE animating = 0;                   ///< 1 while the script runs
  std::unique_ptr<AnimStep> firstStep;  ///< the current step; null when the script is empty
  AnimStep* lastStep = nullptr;         ///< the step that AddTrack appends to
  InvalidateProc invalidateCallback = nullptr;
  LPVOID invalidateContext = nullptr;

 private:
  void LayOutNewChild(CVisual& child, DWORD childAnchors) noexcept;
  void FinishStep() noexcept;
};
