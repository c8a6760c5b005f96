#include "oxSuperAPI/reference/config_toml.h"

#include "oxSuperAPI/reference/identity_config.h"
#include "oxSuperAPI/reference/private_file.h"
#include "oxSuperAPI/reference/secrets_toml.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {

TEST(Config, ReadsBackEqualToWhatWasWritten) {
  const TTemporaryDirectory Directory;
  // clang-format off
  const TReferenceConfig Full{
      .identity = {.country_code = 6, .domain = "UK \"quoted\" \\ \t\n\x7f \xC3\xA9", .computer = "PC1",
                   .force_environment = "QA", .agent = 12, .login_database_name = "x15001",
                   .common_database_name = "common", .customer_key = "key", .customer_pin = "0123",
                   .customer_pin_file = {}, .company_name = "O'Brien & S\xC3\xB6hne # not a comment",
                   .display_request_editor = true, .display_response_editor = true},
      .files = {.common_database = "sqlite:/d/c.db", .payroll_database = "odbc:Driver=FreeTDS;Server=s", .key = "/d/k", .secrets = "/d/s",
                .log = "/d/l", .log_megabytes = 7, .log_kept_files = 8},
      .database = {.login_timeout_seconds = std::chrono::seconds(5), .query_timeout_seconds = std::chrono::seconds(6)},
      .log = {.masking = "private"},
      .http = {.ca_file = "/d/ca.pem", .client_certificate = "/d/c.pem", .client_key = "/d/k.pem",
               .proxy = "http://proxy:3128", .proxy_user = "office", .proxy_ca_file = "/d/p.pem",
               .no_proxy = {"a", "10.0.0.0/8"},
               .connect_to = {{"api.example:443", "127.0.0.1:8443"}, {"b:1", "c:2"}},
               .connect_timeout_seconds = std::chrono::seconds(1), .stall_timeout_seconds = std::chrono::seconds(2),
               .total_timeout_seconds = std::chrono::seconds(3), .max_response_megabytes = 4},
      .batch = {.client_participant_number = "P1", .version = "2", .abn_type = "abn", .landline_type = "LANDLINE",
                .mobile_type = "MOBILE", .gender = {{"1", "Male"}, {"2", "Female"}}, .default_funds = {"USI0001AU"},
                .location_id_as_context = true, .country_upper_case = true}};
  // clang-format on
  CreateConfigFile(Directory / "full.toml", Full);
  EXPECT_EQ(ModeOf(Directory / "full.toml"), 0600U);
  EXPECT_TRUE(ReadConfig(Directory / "full.toml") == Full) << ConfigText(Full);
  EXPECT_ERROR(CreateConfigFile(Directory / "full.toml", Full), "create");

  // Defaults, written or left out, come to the same; the file names start at the configuration's directory.
  CreateConfigFile(Directory / "default.toml", TReferenceConfig());
  const TReferenceConfig Defaults = ReadConfig(Directory / "default.toml");
  EXPECT_TRUE(ReadConfig(Directory.Write("empty.toml", "")) == Defaults);
  EXPECT_EQ(Defaults.files.common_database, Directory / "common.db");
  EXPECT_EQ(ReadConfig(Directory.Write("s.toml", "[files]\ncommon_database = \"sqlite:c.db\"")).files.common_database,
            "sqlite:" + Directory / "c.db");
}

TEST(Config, NamesFileLineAndExpectationOfAMistake) {
  const TTemporaryDirectory Directory;
  const std::pair<const char*, std::string> Cases[] = {
      {"[identity]\ncountry_code = \"5\"", "2: identity.country_code has to be an integer from 0 to 255, not a string"},
      {"[identity]\n\ncountry_code = 256", "3: identity.country_code has to be an integer from 0 to 255"},
      {"[identity]\ncountry_code = 5.0", "2: identity.country_code has to be an integer"},
      {"[identity]\ndomain = 1", "2: identity.domain has to be a string, not an integer"},
      {"[identity]\nagent = 0", "2: identity.agent has to be an integer from 1"},
      {"[identity]\nforce_environment = \"qa\"", "2: identity.force_environment has to be one of"},
      {"[identity]\ndisplay_request_editor = \"true\"", "2: identity.display_request_editor has to be true or false"},
      {"identity = 1", "1: identity has to be a table"},
      {"[identity]\ncustomer_pln = \"s3cret\"", "2: the key identity.customer_pln is unknown; known here: agent,"},
      {"\n[identitiy]\n", "2: the key identitiy is unknown; known tables: batch, database, files, http, identity"},
      {"[http]\nconnect_to = [\"a\"]", "2: http.connect_to has to be a table of strings, not an array"},
      {"[http.connect_to]\n\"a:1\" = 2", "2: http.connect_to.a:1 has to be a string"},
      {"[http]\nno_proxy = [\n\"a\",\n2]", "4: an element of http.no_proxy has to be a string"},
      {"[http]\ntotal_timeout_seconds = 0", "2: http.total_timeout_seconds has to be an integer from 1"},
      {"[http]\nproxy = \"socks5://s3cret@p:1\"", " The proxy (http.proxy) has an unknown scheme"},
      {"[http]\nproxy = \"http://a:s3cret@p:1\"\nproxy_user = \"a\"", " give the proxy's user either"},
      {"[http]\nno_proxy = [\"10.0.0.0/33\"]", " The entry \"10.0.0.0/33\""},
      {"[http]\nclient_key = \"k\"", " http.client_key needs http.client_certificate"},
      {"[batch]\nversion = 2024-01-01", "2: batch.version has to be a string, not a date"},
      {"[batch]\nversion = \"1\"\nversion = \"2\"", "3:"},
      {"[identity\n", "1:"},
  };
  for (const auto& [Text, Expected] : Cases) {
    const std::string Error = ErrorOf([&] { ReadConfig(Directory.Write("c.toml", Text)); });
    EXPECT_PRED2(Holds, Error, "c.toml:" + Expected) << Text;
    EXPECT_FALSE(Holds(Error, "s3cret")) << Error;
  }
  const char* const TwoPINs = "[identity]\ncustomer_pin = \"1\"\ncustomer_pin_file = \"f\"";
  EXPECT_ERROR(ReadConfig(Directory.Write("pins.toml", TwoPINs)), "not both");
  EXPECT_ERROR(ReadConfig(Directory.Write("wide.toml", "", 0644)), "chmod 600");
}

TEST(Secrets, AreKeptByChannelAndEnvironment) {
  const TTemporaryDirectory Directory;
  const std::string File = Directory / "secrets.toml";
  EXPECT_EQ(ReadScrambledSecret(File, "application", "Dev"), "");
  WriteScrambledSecret(File, "application", "Dev", "1 2 3");
  WriteScrambledSecret(File, "administrator", "Prod", "4 5 6 ");
  WriteScrambledSecret(File, "application", "Dev", "7 8 9");
  EXPECT_EQ(ReadScrambledSecret(File, "application", "Dev"), "7 8 9");
  EXPECT_EQ(ReadScrambledSecret(File, "administrator", "Prod"), "4 5 6 ");
  EXPECT_EQ(ReadScrambledSecret(File, "administrator", "Dev"), "");
  EXPECT_EQ(ModeOf(File), 0600U);
  EXPECT_ERROR(ReadScrambledSecret(File, "customer", "Dev"), "application, administrator");
  EXPECT_ERROR(WriteScrambledSecret(File, "application", "DEV", ""), "Dev, QA, Prod");
  for (const char* Wrong : {"[customer]\nDev = \"hidden\"", "application = \"hidden\"",
                            "[application]\nDev = 1 # hidden", "[application]\ndev = \"hidden\""}) {
    const std::string Error =
        ErrorOf([&] { ReadScrambledSecret(Directory.Write("w.toml", Wrong), "application", "Dev"); });
    EXPECT_TRUE(Holds(Error, "w.toml:") && !Holds(Error, "hidden")) << Error;
  }
  chmod(File.c_str(), 0660);
  EXPECT_ERROR(ReadScrambledSecret(File, "application", "Dev"), "chmod 600");
  EXPECT_ERROR(WriteScrambledSecret(File, "application", "Dev", "1"), "chmod 600");
}

TEST(Identity, TakesThePINFromTheConfigurationOrAPrivateFile) {
  const TTemporaryDirectory Directory;
  const auto PIN = [](const std::string& Text, const std::string& File) {
    TIdentityConfig Config;
    Config.customer_pin = Text;
    Config.customer_pin_file = File;
    return TConfigIdentity(Config, "").CustomerPIN();
  };
  EXPECT_EQ(PIN("0123", ""), "0123");
  EXPECT_EQ(PIN("", Directory.Write("pin", "0456\r\n")), "0456");
  EXPECT_ERROR(PIN("12a4", ""), "identity.customer_pin");
  EXPECT_ERROR(PIN("", Directory.Write("bad", "12 4\n")), "digits alone");
  EXPECT_ERROR(PIN("", Directory.Write("wide", "1234", 0644)), "chmod 600");
}

TEST(PrivateFile, IsReplacedInOneStepAndNeverThroughALink) {
  const TTemporaryDirectory Directory;
  const std::string File = Directory / "file";
  ReplacePrivateFile(File, "test file", "one");
  ReplacePrivateFile(File, "test file", "two");
  EXPECT_EQ(ReadFile(File), "two");
  EXPECT_EQ(ReadPrivateFile(File, "test file", 3), "two");
  EXPECT_ERROR(ReadPrivateFile(File, "test file", 2), "longer than 2 bytes");
  std::filesystem::create_symlink(File, Directory / "link");
  std::filesystem::create_symlink(Directory / "nowhere", Directory / "dangling");
  for (const char* Link : {"link", "dangling"}) {
    EXPECT_TRUE(PathExists(Directory / Link));
    EXPECT_ERROR(ReplacePrivateFile(Directory / Link, "test file", "three"), "symbolic link");
    EXPECT_ERROR(CreatePrivateFile(Directory / Link, "test file", "three"), "create");
  }
  EXPECT_EQ(ReadFile(File), "two");
  EXPECT_FALSE(PathExists(Directory / "nowhere"));
}

}  // namespace oxSuperAPI::tests
