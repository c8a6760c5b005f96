#include "oxSuperAPI/host/uHostMemory.h"

#include <gtest/gtest.h>

namespace oxSuperAPI {
namespace {

// Around the size from which large pages are asked for, and behind it at no whole number of pages.
TEST(Memory, RoomOfAnySizeKeepsTheTextAndHoldsWhatIsAppended) {
  constexpr std::size_t Large = std::size_t{8} << 20;
  for (const std::size_t Size : {std::size_t{0}, std::size_t{100}, Large - 1, Large, 2 * Large + 4097}) {
    std::string Text = "kept";
    ReserveText(Text, Size);
    EXPECT_EQ(Text, "kept");
    ASSERT_GE(Text.capacity(), Size);
    const char* const Room = Text.data();
    if (Size > Text.size()) Text.append(Size - Text.size(), 'x');
    EXPECT_EQ(Text.data(), Room);
    EXPECT_EQ(Text.find_last_not_of('x'), 3u);
  }
}

}  // namespace
}  // namespace oxSuperAPI
