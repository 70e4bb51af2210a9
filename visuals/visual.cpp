#include "visuals/visual.h"

#include "base/arithmetic.h"

namespace {

/// A parent without an extent has no percentages.
double PercentOf(INT part, INT extent) noexcept {
  if (extent == 0) return 0.0;
  return static_cast<double>(part) * 100.0 / static_cast<double>(extent);
}

INT ScaledSize(INT extent, double percent) noexcept {
  return Truncate(static_cast<double>(extent) * percent * 0.01);
}

/// The factor is negative, and the result is taken away, so that the product is truncated as it always was: a position
/// and a size of the same percentage agree to the pixel.
INT ProportionalPosition(INT origin, INT extent, double percent) noexcept {
  return origin - Truncate(static_cast<double>(extent) * percent * -0.01);
}

}  // namespace

CVisual::CVisual() noexcept {
  alpha.current = alpha.base = ALPHA_OPAQUE;
  visible.current = visible.base = 1;
}

void CVisual::SetPosition(INT newX, INT newY) noexcept {
  x.own = newX;
  y.own = newY;
  if (layoutReady == 1) {
    x.percent = PercentOf(newX, width.parent);
    y.percent = PercentOf(newY, height.parent);
    TakeMargins();
  }
  x.current = x.parent + newX;
  y.current = y.parent + newY;
}

void CVisual::SetSize(INT newHeight, INT newWidth) noexcept {
  height.own = newHeight;
  width.own = newWidth;
  if (layoutReady == 1) {
    height.percent = PercentOf(newHeight, height.parent);
    width.percent = PercentOf(newWidth, width.parent);
    TakeMargins();
  }
  height.current = newHeight;
  width.current = newWidth;
}

void CVisual::SetParentOrigin(INT parentX, INT parentY) noexcept {
  x.parent = parentX;
  y.parent = parentY;
  if (layoutReady != 1) return;
  x.current = x.own + parentX;
  y.current = y.own + parentY;
}

void CVisual::SetParentExtent(INT parentHeight, INT parentWidth) noexcept {
  height.parent = parentHeight;
  width.parent = parentWidth;
  if (layoutReady != 1) {
    layoutReady = 1;
    height.percent = PercentOf(height.own, parentHeight);
    width.percent = PercentOf(width.own, parentWidth);
    x.percent = PercentOf(x.own, parentWidth);
    y.percent = PercentOf(y.own, parentHeight);
    TakeMargins();
  }
  LayOut(x, width, rightMargin, {ANCHOR_LEFT, ANCHOR_RIGHT, ANCHOR_SCALE_WIDTH});
  LayOut(y, height, bottomMargin, {ANCHOR_TOP, ANCHOR_BOTTOM, ANCHOR_SCALE_HEIGHT});
}

void CVisual::TakeMargins() noexcept {
  rightMargin = width.parent - x.own - width.own;
  bottomMargin = height.parent - y.own - height.own;
}

void CVisual::LayOut(VisualProperty& position, VisualProperty& size, INT farMargin, AxisAnchors axis) const noexcept {
  const INT origin = position.parent;
  const INT extent = size.parent;
  const bool toNear = (anchors & axis.nearSide) != 0;
  const bool toFar = (anchors & axis.farSide) != 0;

  if (toNear) {
    position.current = origin + position.own;
  } else if (toFar) {
    position.current = origin - farMargin - size.own + extent;
  } else {
    position.current = ProportionalPosition(origin, extent, position.percent);
  }

  if (toNear && toFar) {
    size.current = origin - farMargin - position.current + extent;
  } else if (!toFar && (anchors & axis.scale) != 0) {
    size.current = ScaledSize(extent, size.percent);
  } else {
    size.current = size.own;
  }
}

void CVisual::SetAnchors(DWORD newAnchors) noexcept {
  anchors = newAnchors;
}

INT CVisual::GetValue(DWORD property, DWORD selector) const noexcept {
  const VisualProperty* const found = FindProperty(property);
  if (!found) return 0;
  const bool position = property == PROP_X || property == PROP_Y;
  switch (selector) {
    case VALUE_ABSOLUTE: return found->current;
    case VALUE_RELATIVE:
      if (property == PROP_VISIBLE) return 0;
      return position ? found->current - found->parent : found->current;
    case VALUE_PARENT: return found->parent;
    case VALUE_BASE: return found->base;
    case VALUE_PERCENT: return Truncate(found->percent);
    case VALUE_OWN: return found->own;
    default: return 0;
  }
}

void CVisual::SetVisible(INT value) noexcept {
  visible.current = visible.base = value;
}

void CVisual::SetAlpha(INT value) noexcept {
  alpha.own = alpha.current = alpha.base = value;
}

const VisualProperty* CVisual::FindProperty(DWORD property) const noexcept {
  switch (property) {
    case PROP_X: return &x;
    case PROP_Y: return &y;
    case PROP_WIDTH: return &width;
    case PROP_HEIGHT: return &height;
    case PROP_ALPHA: return &alpha;
    case PROP_EXTRA: return &extra;
    case PROP_VISIBLE: return &visible;
    default: return nullptr;
  }
}

VisualProperty* CVisual::FindProperty(DWORD property) noexcept {
  return const_cast<VisualProperty*>(static_cast<const CVisual*>(this)->FindProperty(property));
}
