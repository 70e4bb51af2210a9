#include "animation/list/scroll_list.h"

#include <gtest/gtest.h>

#include "list_fixture.h"
#include "support/on_phone.h"
#include "system/faults.h"

namespace {

TEST(ScrollList, WithoutMemoryARowIsRefusedAndTheListGoesOn) {
  OnPhone([](TestHost&, const auto&) {
    constexpr std::uint64_t kForASpacer = 4;  // node, group, text and the text's node
    for (std::uint64_t after = 0; after < 5 * kForASpacer; ++after) {
      NumberedList list(0, 2);
      phone::SetFault(phone::Operation::Allocation, 1, after);
      const HRESULT status = list.Add(1);
      phone::SetFault(phone::Operation::Allocation, 0, 0);
      const bool textOnly = after % kForASpacer >= 2 && after < 4 * kForASpacer;
      const bool rowTextOnly = after == 4 * kForASpacer + 1 || after == 4 * kForASpacer + 2;
      EXPECT_EQ(status, textOnly || rowTextOnly ? S_OK : E_OUTOFMEMORY) << after;
      EXPECT_EQ(list.GetCount(), status == S_OK ? 1 : 0);
      ASSERT_EQ(list.Add(2), S_OK);
      EXPECT_EQ(list.SelectedNumber(), status == S_OK ? 1 : 2);
      EXPECT_EQ(list.Row(list.GetCount()).tag, 1u) << "no spacer is missing or made twice";
      list.MoveDown();
      list.Draw(nullptr);
    }
  });
}

}  // namespace
