#include "office.h"

namespace sandbox_test {
namespace {

json::array Search(Client& client, const std::string& text) {
  const Reply reply = client.Send("GET", "/search/funds/all/" + text);
  EXPECT_EQ(reply.status, 200) << text;
  return reply.Json().as_array();
}

TEST_F(Office, TheFundRegisterHoldsAboutAHundredValidFunds) {
  const json::array all = Search(client, "e");
  EXPECT_GE(all.size(), 90u);
  std::set<std::string> usis, abns;
  json::value batch = SampleBatch();
  for (const json::value& fund : all) {
    const std::string usi = json::value_to<std::string>(fund.at("uniqueSuperannuationIdentifier"));
    const std::string abn = json::value_to<std::string>(fund.at("australianBusinessNumber"));
    EXPECT_TRUE(usis.insert(usi).second) << usi;
    abns.insert(abn);
    Change(batch, "/contributionDetail/employers/0/funds/0/fundIdentifier",
           json::serialize(json::value{{"abn", abn}, {"usi", usi}}));
    const Reply reply = Post(client, "validate", batch);
    EXPECT_EQ(reply.status, 200) << reply.body;
    EXPECT_EQ(Codes(reply, "Warning"), std::set<std::string>{}) << usi;
  }
  EXPECT_LT(abns.size(), usis.size()) << "a fund house has several products";
}

TEST_F(Office, FundsAreFoundByPartsOfNameAbnAndUsi) {
  const json::array one = Search(client, "qUELLmoor%20growth");
  ASSERT_EQ(one.size(), 1u);
  EXPECT_EQ(one[0].at("productName"), "Quellmoor Growth Super");
  const std::string abn = json::value_to<std::string>(one[0].at("australianBusinessNumber"));
  EXPECT_EQ(Search(client, "que0003au"), one);
  EXPECT_EQ(Search(client, abn).size(), 8u) << "every product of the house";
  EXPECT_EQ(Search(client, "Quellmoor+Growth").size(), 0u) << "a plus is a plus in a path";
  EXPECT_EQ(Search(client, "%zz").size(), 0u);
  EXPECT_EQ(client.Send("GET", "/search/funds/all/").status, 404);
}

}  // namespace
}  // namespace sandbox_test
