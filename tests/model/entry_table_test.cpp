#include "oxSuperAPI/model/uBeamEntryTable.h"

#include <gtest/gtest.h>

namespace oxSuperAPI {
namespace {

std::string Content(const TBeamEntryTable<int>& Table) {
  std::string Result;
  for (const int Entry : Table) Result += std::to_string(Entry);
  return Result;
}

TEST(EntryTable, HasFiveEntriesWhicheverAreFilled) {
  TBeamEntryTable<int> Table;
  EXPECT_EQ(Content(Table), "00000");
  Table[3] = 4;
  int& Second = Table[1];
  Table[4] = 5;
  Second = 2;  // references hold while others are filled
  EXPECT_EQ(Content(Table), "02045");
  TBeamEntryTable<int> Copy = Table;
  for (int& Entry : Copy) ++Entry;
  EXPECT_EQ(Content(Copy), "13156");
  EXPECT_EQ(Content(Table), "02045");
  Copy = {};
  std::swap(Copy, Table);
  EXPECT_EQ(Content(Copy) + Content(Table), "0204500000");
  EXPECT_THROW(Table[5], TBeamRangeError);
  EXPECT_THROW(std::as_const(Table)[static_cast<std::size_t>(-1)], TBeamRangeError);
}

}  // namespace
}  // namespace oxSuperAPI
