/// \file
/// The base of everything that is drawn: seven animatable properties and the rule by which a child follows its group.
///
/// Coordinates are device pixels of the main window's client area, x to the right and y downwards. There are no virtual
/// operations: a group tells its children apart by the ring that holds them.
#pragma once

#include <windef.h>

/// Identifiers of the properties; animation tracks and CVisual::GetValue name them so.
enum PropertyId : DWORD {
  PROP_X = 1,
  PROP_Y = 2,
  PROP_WIDTH = 4,
  PROP_HEIGHT = 8,
  PROP_ALPHA = 16,
  PROP_EXTRA = 32,
  PROP_VISIBLE = 64,
};

/// Which field of a property CVisual::GetValue reads.
enum ValueSelector : DWORD {
  VALUE_ABSOLUTE = 1,  ///< `current`
  VALUE_RELATIVE = 2,  ///< `current`, for x and y less `parent`; 0 for visible
  VALUE_PARENT = 3,    ///< `parent`
  VALUE_BASE = 4,      ///< `base`
  VALUE_PERCENT = 5,   ///< `percent`, truncated toward zero
  VALUE_OWN = 6,       ///< `own`
};

/// How a child follows its parent's extent.
enum AnchorFlags : DWORD {
  ANCHOR_DEFAULT = 1,        ///< position proportional to the parent's extent, size fixed
  ANCHOR_LEFT = 2,           ///< x keeps its offset from the parent's left edge
  ANCHOR_RIGHT = 4,          ///< the right edge keeps `rightMargin`
  ANCHOR_TOP = 8,            ///< y keeps its offset from the parent's top edge
  ANCHOR_BOTTOM = 16,        ///< the bottom edge keeps `bottomMargin`
  ANCHOR_SCALE_WIDTH = 32,   ///< width stays the same percentage of the parent's width
  ANCHOR_SCALE_HEIGHT = 64,  ///< height stays the same percentage of the parent's height
};

/// A child that keeps its relative place and scales with its group.
inline constexpr DWORD ANCHOR_SCALE = ANCHOR_SCALE_WIDTH | ANCHOR_SCALE_HEIGHT;

/// Opacity of an alpha property.
inline constexpr INT ALPHA_TRANSPARENT = 0;
inline constexpr INT ALPHA_OPAQUE = 255;

/// One animatable property.
struct VisualProperty {
  INT own = 0;         ///< the declared value; of x and y the offset from the parent's origin
  INT current = 0;     ///< the effective value, which drawing reads; of x and y in client coordinates
  INT base = 0;        ///< the committed value, to which animation adds
  INT parent = 0;      ///< of x and y the parent's origin, of width and height its extent, else 0
  double percent = 0;  ///< `own` in percent of the parent's extent on the same axis
};

class CVisual {
 public:
  CVisual() noexcept;

  /// Sets the position relative to the parent's origin.
  void SetPosition(INT newX, INT newY) noexcept;
  /// Sets the size; height first.
  void SetSize(INT newHeight, INT newWidth) noexcept;
  /// Records the parent's current origin and, once there is a layout, moves along.
  void SetParentOrigin(INT parentX, INT parentY) noexcept;
  /// Records the parent's current size and lays the visual out by its anchors; height first. The first call also takes
  /// the percentages and margins that later calls keep.
  void SetParentExtent(INT parentHeight, INT parentWidth) noexcept;
  /// Stores the AnchorFlags; they take effect at the next SetParentExtent.
  void SetAnchors(DWORD newAnchors) noexcept;
  /// One field of one property: a PropertyId and a ValueSelector. 0 for any other.
  INT GetValue(DWORD property, DWORD selector) const noexcept;
  /// 1 shows the visual, any other value hides it.
  void SetVisible(INT value) noexcept;
  /// Opacity, 0 to 255.
  void SetAlpha(INT value) noexcept;

  /// The property of that identifier, or null.
  VisualProperty* FindProperty(DWORD property) noexcept;
  const VisualProperty* FindProperty(DWORD property) const noexcept;

  DWORD tag = 0;         ///< a caller's identifier
  INT rightMargin = 0;   ///< px between the right edges of the visual and its parent
  INT bottomMargin = 0;  ///< px between the bottom edges
  BYTE layoutReady = 0;  ///< 1 once percentages and margins were taken
  DWORD anchors = ANCHOR_DEFAULT;
  VisualProperty extra;  ///< an animatable number that no drawing reads
  // What drawing reads comes last, so that it lies close to what a derived visual's drawing reads first.
  VisualProperty x;
  VisualProperty y;
  VisualProperty height;
  VisualProperty width;
  VisualProperty alpha;    ///< 0 transparent to 255 opaque
  VisualProperty visible;  ///< drawn when exactly 1

 private:
  /// The flags of one axis: `nearSide` is left or top, `farSide` right or bottom.
  struct AxisAnchors {
    DWORD nearSide;
    DWORD farSide;
    DWORD scale;
  };
  void TakeMargins() noexcept;
  void LayOut(VisualProperty& position, VisualProperty& size, INT farMargin, AxisAnchors axis) const noexcept;
};
