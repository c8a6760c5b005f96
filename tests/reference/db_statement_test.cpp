#include "oxSuperAPI/reference/db_statement.h"

#include "save_statement.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {

TEST(DatabaseStatement, FindsParametersOutsideLiteralsNamesAndCommentsAndTakesTheirValuesByName) {
  // clang-format off
  const std::tuple<std::string_view, std::string_view, std::vector<std::string>> Cases[] = {
      {"a = :Env, b = :Environment", "a = ?, b = ?", {"Env", "Environment"}},
      {"a = ':No' and b=:Yes", "a = ':No' and b=?", {"Yes"}}, {"'it''s :No' :Yes", "'it''s :No' ?", {"Yes"}},
      {"\"q:No\" [x:No] `y:No` :Yes", "\"q:No\" [x:No] `y:No` ?", {"Yes"}},
      {"-- :No\n:Yes /* :No */", "-- :No\n? /* :No */", {"Yes"}}, {"t::type : x :1", "t::type : x :1", {}},
      {":a,:b(:a)", "?,?(?)", {"a", "b", "a"}}, {"", "", {}}};
  // clang-format on
  for (const auto& [SQL, Positional, Names] : Cases) {
    EXPECT_EQ(ToPositional(SQL).SQL, Positional);
    EXPECT_EQ(ToPositional(SQL).Names, Names) << SQL;
  }
  for (const char* Open : {"select 'x", "select \"x", "select [x", "/* x"})
    EXPECT_ERROR(ToPositional(Open), "never closed");
  EXPECT_ERROR(ToPositional("a = ?"), "named");
  const std::vector<TDBParameter> Given = {{"Environment", 1}, {"ENV", 2}};
  EXPECT_EQ(std::get<std::int32_t>(ParameterValue(Given, "Env")), 2);
  EXPECT_ERROR(ParameterValue(Given, "En"), "\"En\" was given no value");
}

TEST(DatabaseStatement, NarrowsTheCredentialUpdateToTheRowThatWasAskedFor) {
  ASSERT_EQ(SaveStatement.size(), 741U);
  const auto Parts = SplitIfExists(SaveStatement);
  ASSERT_TRUE(Parts);
  EXPECT_EQ(Parts->Probe, "select * from dbo._iptblBeamSuperCustomerIDs where cUCID = :UCID and cEnvironment = :Env");
  EXPECT_TRUE(Parts->Then.starts_with("update dbo._iptblBeamSuperCustomerIDs      set cClientID = :ClientID,"));
  EXPECT_TRUE(Parts->Then.ends_with("dDateLastIssued = :DateLastIssued where cUCID = :UCID and cEnvironment = :Env"));
  EXPECT_TRUE(Parts->Else.starts_with("insert into _iptblBeamSuperCustomerIDs (cUCID,"));
  EXPECT_EQ(ToPositional(SaveStatement).Names.size(), 21U);
  // As one batch it is the statement as it stands, with the condition in its place.
  std::string Whole = Parts->Whole;
  const std::string Condition = " where cUCID = :UCID and cEnvironment = :Env";
  const std::size_t Added = Whole.rfind(Condition);
  EXPECT_EQ(Whole.substr(Added + Condition.size(), 6), " else ");
  EXPECT_EQ(Whole.erase(Added, Condition.size()), SaveStatement);
}

TEST(DatabaseStatement, SplitsOtherUpserts) {
  const std::string Exists = "if exists (select * from T where a=1) update T set b=";
  const std::tuple<std::string, std::string, std::string> Cases[] = {
      {"IF EXISTS(SELECT 1 FROM [dbo].[T] WHERE a=(select ')')) UPDATE T SET b=1; ELSE insert into T values(1)",
       "UPDATE T SET b=1 where a=(select ')')", "insert into T values(1)"},
      {Exists + "2 where c=3 else select 1", "update T set b=2 where c=3", "select 1"},
      {Exists + "(select x from U where 1=1)", "update T set b=(select x from U where 1=1) where a=1", ""},
      {Exists + "case when c=1 then 2 else 3 end else select 4",
       "update T set b=case when c=1 then 2 else 3 end where a=1", "select 4"},
      {"if exists (select * from T) insert into U values(1)", "insert into U values(1)", ""},
  };
  for (const auto& [SQL, Then, Else] : Cases) {
    const auto Parts = SplitIfExists(SQL);
    ASSERT_TRUE(Parts) << SQL;
    EXPECT_EQ(Parts->Then, Then);
    EXPECT_EQ(Parts->Else, Else);
  }
  EXPECT_FALSE(SplitIfExists("update T set a = 1") || SplitIfExists("if"));
}

TEST(DatabaseStatement, RefusesAnUpdateThatItCannotNarrow) {
  for (const char* SQL : {
           "if exists (select * from U where a=1) update T set b=2 else select 1",
           "if exists (select * from T) update T set b=2 else select 1",
           "if exists (select * from T, U where a=1) update T set b=2",
           "if exists (select * from T x where a=1) update T set b=2",
           "if exists (select * from other.T where a=1) update T set b=2",
           "if exists (select * from T where (a=1)) update T t2 set b=2",
           "if exists (select a from (select * from T where a=1)) update T set b=2",
       })
    EXPECT_ERROR(SplitIfExists(SQL), "was not run") << SQL;
  EXPECT_ERROR(SplitIfExists("if exists (select 1"), "never closed");
  EXPECT_ERROR(SplitIfExists("if exists (select 1)"), "no statement");
}

TEST(DatabaseStatement, NamesTheTableOfASelect) {
  const std::pair<std::string_view, std::string_view> Cases[] = {
      {"select * from dbo._iptblBeamSuperLog where idBeamSuperLog = 0", "dbo._iptblBeamSuperLog"},
      {"select a, (select 1 from U) from [dbo].[T] order by a;", "[dbo].[T]"},
      {"select * from T", "T"},
  };
  for (const auto& [SQL, Table] : Cases) EXPECT_EQ(SelectedTable(SQL), Table) << SQL;
  for (const char* None : {"select * from T, U", "select * from T join U on 1=1", "select a from T group by a",
                           "select a from T union select b from U", "select 1", "update T set a=1"})
    EXPECT_EQ(SelectedTable(None), "") << None;
  EXPECT_EQ(DescribeSQL("insert into dbo.[T] (a) values (1)"), "insert of T");
  EXPECT_EQ(DescribeSQL("update T set a='secret'"), "update of T");
  EXPECT_EQ(DescribeSQL("select 'oops"), "statement");
}

}  // namespace oxSuperAPI::tests
