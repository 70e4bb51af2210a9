/// \file
/// A list of numbered items to move about in.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "animation/list/scroll_list.h"
#include "base/ring.h"

/// The numbers of the screens in portrait.
inline constexpr INT kLeft = 11;
inline constexpr INT kTop = 10;
inline constexpr INT kWidth = 220;
inline constexpr INT kHeight = 27;

class NumberedList : public CScrollList {
 public:
  NumberedList(INT count, INT rows) {
    SetLayout(rows, kLeft, kTop, kWidth, kHeight);
    scrollBar = std::make_unique<CVisualGroup>(1, 233, kTop + kHeight, kHeight * rows, 5);
    highlight = std::make_unique<CVisualGroup>(1, 0, 0, kHeight, kWidth);
    moveHighlight = std::make_unique<CVisualGroup>(1, 0, 0, kHeight, kWidth);
    for (INT item = 1; item <= count; ++item) Add(item);
  }

  HRESULT Add(INT number) { return AddItem(TEXT("item"), -number, reinterpret_cast<LPVOID>(std::intptr_t{number})); }

  /// The items in list order.
  std::vector<INT> Numbers() {
    std::vector<INT> numbers;
    LPVOID data = nullptr;
    INT value = 0;
    BeginIteration();
    while (NextItem(&data, &value)) numbers.push_back(static_cast<INT>(reinterpret_cast<std::intptr_t>(data)));
    return numbers;
  }
  INT SelectedNumber() const { return static_cast<INT>(reinterpret_cast<std::intptr_t>(GetSelectedData())); }
  /// The row of an item by its index; -4 to -1 are the spacers.
  CVisualGroup& Row(INT index) {
    ListItem* item = firstItem;
    for (INT i = -4; i < index; ++i) item = item->next;
    return *item->row;
  }
};
