#include "oxSuperAPI/reference/db_odbc.h"
#include "oxSuperAPI/reference/db_open.h"
#include "oxSuperAPI/reference/db_script.h"
#include "oxSuperAPI/reference/db_statement.h"
#include "oxSuperAPI/reference/odbc_string.h"
#include "oxSuperAPI/reference/utf16.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {

TEST(ODBCText, ConvertsEveryTextAndReplacesWhatIsNone) {
  const std::string Whole = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z";
  EXPECT_EQ(ToUTF16(Whole), u"a\u00E9\u20AC\U0001F600z");
  EXPECT_EQ(ToUTF8(ToUTF16(Whole)), Whole);
  TUTF8Builder Pieces;
  for (const char16_t Unit : ToUTF16(Whole)) Pieces.Add({&Unit, 1});
  EXPECT_EQ(Pieces.Finish(), Whole);
  const std::string Mark = "\xEF\xBF\xBD";
  for (const char* Wrong :
       {"\xFF", "\x80", "\xC0\xAF", "\xE2\x82", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF0\x9F\x98"}) {
    const std::string Read = ToUTF8(ToUTF16(std::string("<") + Wrong + ">"));
    EXPECT_TRUE(Read.starts_with("<" + Mark) && Read.ends_with(Mark + ">")) << Read;
  }
  EXPECT_EQ(ToUTF8(std::u16string{0xD83D, 'x', 0xDE00, 0xD83D}), Mark + "x" + Mark + Mark);
}

TEST(ODBCText, FindsThePasswordOfAConnectionStringAndHidesWhatMayBeAPieceOfIt) {
  // clang-format off
  const std::tuple<const char*, const char*, const char*> Cases[] = {
      {"Driver=FreeTDS;Server=s;PWD=a b;UID=u", "a b", "Driver=FreeTDS;Server=s;PWD=(hidden);UID=u"},
      {"driver={SQL;Server}; pwd = {a;b}}c} ;uid=u", "a;b}c", "driver={SQL;Server};pwd=(hidden);uid=u"},
      {"Server=s;Password={open;UID=u", "{open;UID=u", "Server=s;Password=(hidden)"},
      {"PWD=a;b;AccessToken=c;Server=s", "a", "PWD=(hidden);(hidden);(hidden);Server=s"},
      {"DSN=d;;", "", "DSN=d"}, {"", "", ""}, {";=;", "", "(hidden)"}};
  // clang-format on
  for (const auto& [String, Password, Shown] : Cases) {
    EXPECT_EQ(ODBCPassword(String), Password) << String;
    EXPECT_EQ(ShownODBCString(String), Shown);
  }
  for (const char* Password : {"plain=@!", "semi;colon", "{brace", "brace};x", " blank "})
    EXPECT_EQ(ODBCPassword(WithODBCPassword("Driver=d;UID=u", Password)), Password);
  EXPECT_EQ(DescribeODBCDatabase("Server=s;Database=d;PWD=x"), "d on s");
  EXPECT_EQ(ShownAddress("odbc:DSN=d;PWD=x"), "odbc:DSN=d;PWD=(hidden)");
  const std::string Error = ErrorOf([] { TODBCConnection("Driver=s3cret-driver;Server=s;PWD=s3cret"); });
  EXPECT_TRUE(Holds(Error, "odbcinst -q -d") && !Holds(Error, "s3cret")) << Error;
}

TEST(ODBCText, CutsScriptsAndKnowsWhatAStatementDoes) {
  using TPieces = std::vector<std::string>;
  EXPECT_EQ(SplitBatches("a;\nb\n go \r\n-- nothing\nGO\nGOing\nc"), (TPieces{"a;\nb\n", "GOing\nc"}));
  EXPECT_EQ(SplitStatements("a ';' [;];-- ;\n;b"), (TPieces{"a ';' [;]", "b"}));
  EXPECT_EQ(WithoutSchema("select dbo.T.a, x.dbo.b, 'dbo.T' from [dbo].T, dbo . U"),
            "select T.a, x.dbo.b, 'dbo.T' from T, U");
  EXPECT_EQ(WhereClause("select * from T where a = :A and (b in (select b from U where 1=1)) order by a;"),
            "a = :A and (b in (select b from U where 1=1))");
  for (const char* Reads : {"select 1", "with x as (select 1) select * from x"}) EXPECT_TRUE(IsSelect(Reads));
  for (const char* Writes : {"select * into T from U", "with x as (select 1) delete from T", "delete from T", ""})
    EXPECT_FALSE(IsSelect(Writes)) << Writes;
}

}  // namespace oxSuperAPI::tests
