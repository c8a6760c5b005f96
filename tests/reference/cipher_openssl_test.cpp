#include "oxSuperAPI/reference/cipher_openssl.h"

#include <algorithm>
#include <map>

#include "oxSuperAPI/reference/json_rapidjson.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {
namespace {

TOpenSSLCipher CipherOf(std::uint8_t First) {
  TCipherKey::TBytes Bytes{};
  for (std::size_t Index = 0; Index < Bytes.size(); ++Index) Bytes[Index] = static_cast<std::uint8_t>(First + Index);
  return TOpenSSLCipher(TCipherKey(Bytes));
}

std::vector<std::uint8_t> Unhex(const std::string& Hex) {
  std::vector<std::uint8_t> Bytes;
  for (std::size_t At = 0; At + 1 < Hex.size(); At += 2)
    Bytes.push_back(static_cast<std::uint8_t>(std::stoi(Hex.substr(At, 2), nullptr, 16)));
  return Bytes;
}

TEST(Cipher, GivesTheSameResultForTheSameTextAndBackAgain) {
  TOpenSSLCipher Cipher = CipherOf(0);
  for (const std::string& Text : {std::string("x"), std::string("\xC3\xBC\0 end", 7), std::string(100'000, 'y')}) {
    const std::string Enciphered = Cipher.DefEncrypt(Text);
    EXPECT_EQ(Enciphered, CipherOf(0).DefEncrypt(Text));
    EXPECT_NE(Enciphered, CipherOf(1).DefEncrypt(Text));
    EXPECT_EQ(Cipher.DefDecrypt(Enciphered), Text);
  }
  EXPECT_EQ(Cipher.DefEncrypt("") + Cipher.DefDecrypt("") + Cipher.Scramble("") + Cipher.DecodeDecrypt(""), "");
  // Rows that were written must stay readable: neither the mode nor the purposes nor the encoding may change.
  EXPECT_EQ(Cipher.DefEncrypt("Prod"), "QNnuyVz4baT1uH4/lE7muHx74Is=");
  EXPECT_EQ(Cipher.Scramble("s3cret"), "41 8 80 115 108 85 219 225 35 104 131 139 212 28 53 24 152 45 236 174 218 183");
}

TEST(Cipher, RefusesChangedTextWithoutNamingContent) {
  TOpenSSLCipher Cipher = CipherOf(0);
  const std::string Good = Cipher.DefEncrypt("a client secret"), Cut = Good.substr(0, Good.size() - 4);
  std::vector<std::string> Bad = {"x",
                                  "====",
                                  "AAAA",
                                  Good + "\n",
                                  " " + Good,
                                  Good + "====",
                                  Good.substr(4),
                                  Cut,
                                  Cipher.Scramble("a client secret"),
                                  CipherOf(1).DefEncrypt("a client secret")};
  for (std::size_t At = 0; At < Good.size(); ++At) {
    Bad.push_back(Good);
    Bad.back()[At] = Good[At] == 'A' ? 'B' : 'A';
  }
  for (const std::string& Text : Bad) {
    EXPECT_THROW(Cipher.DefDecrypt(Text), TCipherError) << Text;
    EXPECT_ERROR(Cipher.DefDecrypt(Text), "A text could not be deciphered: it was changed, or");
  }
}

TEST(Cipher, ScramblesAClientSecretToNumbers) {
  TOpenSSLCipher Cipher = CipherOf(0);
  for (const std::size_t Length : {1U, 29U, 34U, 200U}) {
    const std::string Secret(Length, '~'), Scrambled = Cipher.Scramble(Secret);
    EXPECT_EQ(std::ranges::count(Scrambled, ' '), static_cast<std::ptrdiff_t>(Length + 16 - 1));
    EXPECT_EQ(Cipher.DecodeDecrypt(Scrambled), Secret);
    EXPECT_EQ(Cipher.DecodeDecrypt(Scrambled + " "), Secret);
    for (const std::string& Bad :
         {Scrambled + "  ", " " + Scrambled, Scrambled + " 1", "0" + Scrambled, Scrambled + "\n", "+" + Scrambled,
          "256 " + Scrambled, std::string("-1 1"), std::string("1  2"), std::string(" "), Cipher.DefEncrypt(Secret)})
      EXPECT_THROW(Cipher.DecodeDecrypt(Bad), TCipherError) << Bad;
  }
}

TEST(Cipher, AgreesWithThePublicVectors) {
  const std::string Text = ReadFile(SHARED_DIR "/vectors/aes_siv_cmac_test.json");
  if (Text.empty()) GTEST_SKIP() << "aes_siv_cmac_test.json is not there";
  const auto Document = TJSONRapidJson().Parse(Text);
  std::map<std::size_t, int> Sealed, Refused;  // by bytes of the key
  for (const TJSONValue& Group : Document->AsObject()->Find("testGroups")->AsArray()->Elements()) {
    for (const TJSONValue& Vector : Group.AsObject()->Find("tests")->AsArray()->Elements()) {
      const auto Member = [&](const char* Name) { return std::string(*Vector.AsObject()->Find(Name)->AsString()); };
      const auto Key = Unhex(Member("key")), Associated = Unhex(Member("aad")), Plain = Unhex(Member("msg")),
                 Cipher = Unhex(Member("ct"));
      if (Member("result") != "valid") {
        ++Refused[Key.size()];
        EXPECT_THROW(OpenSIV(Key, Associated, Cipher), TCipherError);
      } else if (!Plain.empty()) {
        ++Sealed[Key.size()];
        EXPECT_EQ(SealSIV(Key, Associated, Plain), Cipher);
        EXPECT_EQ(OpenSIV(Key, Associated, Cipher), std::string(Plain.begin(), Plain.end()));
      }
    }
  }
  for (const std::size_t Size : {32U, 48U, 64U}) EXPECT_TRUE(Sealed[Size] > 20 && Refused[Size] > 20) << Size;
}

TEST(KeyFile, IsMadeOnceForTheOwnerAlone) {
  const TTemporaryDirectory Directory;
  const std::string File = Directory / "cipher.key";
  CreateKeyFile(File);
  CreateKeyFile(Directory / "other.key");
  EXPECT_EQ(ModeOf(File), 0600U);
  EXPECT_EQ(ReadFile(File).size(), 64U);
  EXPECT_NE(ReadFile(File), ReadFile(Directory / "other.key"));
  EXPECT_EQ(TOpenSSLCipher(ReadKeyFile(File)).DefDecrypt(TOpenSSLCipher(ReadKeyFile(File)).DefEncrypt("x")), "x");
  EXPECT_ERROR(CreateKeyFile(File), "create");
}

TEST(KeyFile, IsRefusedUnlessItIsPrivateAndWhole) {
  const TTemporaryDirectory Directory;
  const std::string Bytes(64, 'k');
  std::filesystem::create_symlink(Directory.Write("good.key", Bytes), Directory / "link.key");
  ASSERT_EQ(mkfifo((Directory / "pipe.key").c_str(), 0600), 0);
  const std::pair<std::string, const char*> Cases[] = {
      {Directory.Write("group.key", Bytes, 0640), "chmod 600"},
      {Directory.Write("world.key", Bytes, 0604), "chmod 600"},
      {Directory.Write("short.key", Bytes.substr(1)), "63 bytes instead of 64: restore"},
      {Directory.Write("long.key", Bytes + "\n"), "65 bytes instead of 64"},
      {Directory.Write("huge.key", std::string(5000, 'k')), "longer than"},
      {Directory / "link.key", "symbolic link: name the file itself"},
      {Directory / "pipe.key", "not a regular file"},
      {Directory / "missing.key", "missing.key"},
  };
  for (const auto& [File, Advice] : Cases) EXPECT_ERROR(ReadKeyFile(File), Advice) << File;
  if (geteuid() != 0) return;
  const std::string Foreign = Directory.Write("foreign.key", Bytes);
  ASSERT_EQ(chown(Foreign.c_str(), 12345, 12345), 0);
  EXPECT_ERROR(ReadKeyFile(Foreign), "belongs to another user");
}

}  // namespace
}  // namespace oxSuperAPI::tests
