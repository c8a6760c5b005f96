#include "oxSuperAPI/reference/reference_host.h"

#include "oxSuperAPI/log/uBeamSuperLog.h"
#include "oxSuperAPI/reference/secrets_toml.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {

class ReferenceHost : public testing::Test {
 protected:
  ReferenceHost() {
    FConfig.identity.domain = "UKTEST";
    FConfig.files.common_database = FDirectory / "common.db";
    FConfig.files.payroll_database = FDirectory / "payroll.db";
    FConfig.files.key = FDirectory / "cipher.key";
    FConfig.files.secrets = FDirectory / "secrets.toml";
    FConfig.files.log = FDirectory / "host.log";
  }
  ~ReferenceHost() override {
    TBeamSuperGlobal::Finalize();
    RegisterHost(nullptr);
  }

  TTemporaryDirectory FDirectory;
  TReferenceConfig FConfig;
};

TEST_F(ReferenceHost, SaysWhatIsMissingAndGoesOnOnceItIsThere) {
  TReferenceHost Host(FConfig);
  EXPECT_ERROR(Host.Cipher(), "cipher.key does not exist: run \"oxsuper init\"");
  EXPECT_ERROR(Host.ADOMainCommonConnection(), "common.db does not exist: run \"oxsuper init\"");
  EXPECT_ERROR(Host.Settings(), "payroll.db does not exist: run \"oxsuper init\"");
  EXPECT_EQ(Host.CreateResponseEditor(TEditorKind::Request), nullptr);

  CreateHostFiles(FConfig.files);
  const std::string Enciphered = Host.Cipher().DefEncrypt("text");
  Host.Settings().SetCurrentSystemValue("a", "b", false);
  WriteScrambledSecret(FConfig.files.secrets.string(), "application", "Dev", Host.Cipher().Scramble("app dev"));
  CreateHostFiles(FConfig.files);  // keeps the key and the rows
  TReferenceHost Again(FConfig);
  EXPECT_EQ(Again.Cipher().DefDecrypt(Enciphered), "text");
  EXPECT_EQ(Again.Settings().GetCurrentSystemValue("a", "", false), "b");
  EXPECT_NE(Again.ADOMainCommonConnection(), &Again.PayrollDatabase());
  EXPECT_EQ(Again.Cipher().DecodeDecrypt(Again.Identity().ScrambledClientSecret("application", "Dev")), "app dev");
  EXPECT_EQ(Again.Identity().ScrambledClientSecret("administrator", "Dev"), "");

  FDirectory.Write("cipher.key", "too short");
  EXPECT_ERROR(CreateHostFiles(FConfig.files), "bytes instead of 64");
}

TEST_F(ReferenceHost, KeepsCredentialsAndTheCallLogOfTheLibrary) {
  CreateHostFiles(FConfig.files);
  TReferenceHost Host(FConfig);
  RegisterHost(&Host);
  const auto SecretOf = [](const std::string& Customer) { return TBeamSuperCredentials(Customer).ClientSecret; };
  for (const auto& [Customer, Secret] : {std::pair{"A", "one"}, {"B", "two"}, {"A", "three"}}) {
    TBeamSuperCredentials Credentials;
    Credentials.UCID = Credentials.ClientID = Customer;
    Credentials.ClientSecret = Secret;
    Credentials.DateLastIssued = Now();
    Credentials.Save();
  }
  EXPECT_EQ(SecretOf("A") + SecretOf("B"), "threetwo");
  // The copy in the other database is brought back when it is lost, and brought up to date when it is older.
  Host.ADOMainCommonConnection()->Execute({"delete from _iptblBeamSuperCustomerIDs", {}});
  EXPECT_EQ(SecretOf("A"), "three");
  Host.ADOMainConnection()->Execute(
      {"update _iptblBeamSuperCustomerIDs set cClientSecret = '', dDateLastIssued = :Old", {{"Old", Now() - 1}}});
  EXPECT_EQ(SecretOf("A") + SecretOf("B"), "three");

  const auto Log = [] { return TBeamSuperLog::AddToLog("Source", "url", "Get", "", "", "", "", "200"); };
  EXPECT_EQ(Log(), 1);
  EXPECT_EQ(Log(), 2);
  Host.ADOMainConnection()->Execute({"drop table _iptblBeamSuperLog", {}});
  EXPECT_EQ(Log(), 0);
  EXPECT_PRED2(Holds, ReadFile(FConfig.files.log.string()), "[info] 75 Using Super Clearing Dev Environment");
}

}  // namespace oxSuperAPI::tests
