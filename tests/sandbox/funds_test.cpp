#include "office.h"

namespace sandbox_test {
namespace {

json::array Search(Client& client, const std::string& text) {
  return client.Send("GET", "/search/funds/all/" + text).Json().as_array();
}

TEST_F(Office, TheFundRegisterHoldsAboutAHundredValidFunds) {
  const json::array all = Search(client, "e");
  EXPECT_GE(all.size(), 90u);
  std::set<std::string> usis;
  json::value batch = SampleBatch();
  for (const json::value& fund : all) {
    const auto usi = json::value_to<std::string>(fund.at("uniqueSuperannuationIdentifier"));
    EXPECT_TRUE(usis.insert(usi).second) << usi;
    Change(batch, "/contributionDetail/employers/0/funds/0/fundIdentifier",
           json::serialize(json::value{{"abn", fund.at("australianBusinessNumber")}, {"usi", usi}}));
    const Reply reply = Post(client, "validate", batch);
    EXPECT_EQ(reply.status, 200) << reply.body;
    EXPECT_EQ(Codes(reply, "Warning"), std::set<std::string>{}) << usi;
  }
}

TEST_F(Office, FundsAreFoundByPartsOfNameAbnAndUsi) {
  const json::array one = Search(client, "qUELLmoor%20growth");
  ASSERT_EQ(one.size(), 1u);
  EXPECT_EQ(Search(client, "que0003au"), one);
  const auto abn = json::value_to<std::string>(one[0].at("australianBusinessNumber"));
  EXPECT_EQ(Search(client, abn).size(), 8u) << "every product of the house";
  EXPECT_EQ(Search(client, "Quellmoor+Growth").size() + Search(client, "%zz").size(), 0u) << "a plus is a plus";
  EXPECT_EQ(client.Send("GET", "/search/funds/all/").status, 404);
}

}  // namespace
}  // namespace sandbox_test
