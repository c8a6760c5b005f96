#include "oxSuperAPI/reference/reference_host.h"

#include <gtest/gtest.h>

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
  EXPECT_ERROR(Host.ADOMainConnection(), "payroll.db does not exist: run \"oxsuper init\"");
  EXPECT_ERROR(Host.Settings(), "payroll.db does not exist");
  EXPECT_EQ(Host.CreateResponseEditor(TEditorKind::Request), nullptr);

  CreateHostFiles(FConfig.files);
  const std::string Enciphered = Host.Cipher().DefEncrypt("text");
  Host.Settings().SetCurrentSystemValue("a", "b", false);
  CreateHostFiles(FConfig.files);  // keeps the key and the rows
  TReferenceHost Again(FConfig);
  EXPECT_EQ(Again.Cipher().DefDecrypt(Enciphered), "text");
  EXPECT_EQ(Again.Settings().GetCurrentSystemValue("a", "", false), "b");
  EXPECT_NE(Again.ADOMainCommonConnection(), Again.ADOMainConnection());

  FDirectory.Write("cipher.key", "too short");
  EXPECT_ERROR(CreateHostFiles(FConfig.files), "bytes instead of 64");
}

TEST_F(ReferenceHost, HandsOutTheSecretThatWasScrambledForItsChannel) {
  CreateHostFiles(FConfig.files);
  TReferenceHost Host(FConfig);
  WriteScrambledSecret(FConfig.files.secrets.string(), "application", "Dev", Host.Cipher().Scramble("app dev"));
  EXPECT_EQ(Host.Cipher().DecodeDecrypt(Host.Identity().ScrambledClientSecret("application", "Dev")), "app dev");
  EXPECT_EQ(Host.Identity().ScrambledClientSecret("administrator", "Dev"), "");
}

TEST_F(ReferenceHost, KeepsCredentialsAndTheCallLogOfTheLibrary) {
  CreateHostFiles(FConfig.files);
  TReferenceHost Host(FConfig);
  RegisterHost(&Host);

  const auto Save = [](const std::string& Customer, const std::string& Secret) {
    TBeamSuperCredentials Credentials;
    Credentials.UCID = Customer;
    Credentials.ClientID = "id " + Customer;
    Credentials.ClientSecret = Secret;
    Credentials.DateLastIssued = Now();
    Credentials.Save();
  };
  const auto SecretOf = [](const std::string& Customer) { return TBeamSuperCredentials(Customer).ClientSecret; };
  Save("A", "one");
  Save("B", "two");
  Save("A", "three");
  EXPECT_EQ(SecretOf("A"), "three");
  EXPECT_EQ(SecretOf("B"), "two");

  // The copy in the other database is brought back when it is lost, and brought up to date when it is older.
  Host.ADOMainCommonConnection()->Execute({"delete from _iptblBeamSuperCustomerIDs", {}});
  EXPECT_EQ(SecretOf("A"), "three");
  Host.ADOMainConnection()->Execute(
      {"update _iptblBeamSuperCustomerIDs set cClientSecret = '', dDateLastIssued = :Old", {{"Old", Now() - 1}}});
  EXPECT_EQ(SecretOf("A"), "three");
  EXPECT_EQ(SecretOf("B"), "");
  const auto Rows = Host.ADOMainConnection()->OpenRows(
      {"select cClientSecret from _iptblBeamSuperCustomerIDs order by cClientSecret", {}});
  EXPECT_EQ(Rows->FieldAsString("cClientSecret"), "");
  Rows->Next();
  EXPECT_EQ(Host.Cipher().DefDecrypt(Rows->FieldAsString("cClientSecret")), "three");

  EXPECT_EQ(TBeamSuperLog::AddToLog("Source", "url", "Get", "", "", "", "", "200"), 1);
  EXPECT_EQ(TBeamSuperLog::AddToLog("Source", "url", "Get", "", "", "", "", "200"), 2);
  Host.ADOMainConnection()->Execute({"drop table _iptblBeamSuperLog", {}});
  EXPECT_EQ(TBeamSuperLog::AddToLog("Source", "url", "Get", "", "", "", "", "200"), 0);
  EXPECT_NE(ReadFile(FConfig.files.log.string()).find("[info] 75 Using Super Clearing Dev Environment"),
            std::string::npos);
}

}  // namespace oxSuperAPI::tests
