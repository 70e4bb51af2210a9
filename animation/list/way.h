/// \file
/// The two ways a list can move.
#pragma once

#include "animation/list/scroll_list.h"

/// Everything that moves in a list moves alike both ways; this is what differs.
struct CScrollList::Way {
  ListItem* ListItem::*ahead;   ///< the link to the next row that way
  ListItem* ListItem::*behind;  ///< the link back
  INT step;                     ///< of indexes and rows
};

inline constexpr CScrollList::Way CScrollList::kDown = {&ListItem::next, &ListItem::prev, 1};
inline constexpr CScrollList::Way CScrollList::kUp = {&ListItem::prev, &ListItem::next, -1};
