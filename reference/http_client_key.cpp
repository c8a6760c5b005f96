#include "oxSuperAPI/reference/http_client_key.h"

#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/pem.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>

#include "oxSuperAPI/reference/private_file.h"

namespace oxSuperAPI {

namespace {

constexpr std::size_t MaxBytes = 1u << 20;

template <auto Function>
struct TFreeBy {
  void operator()(auto* Object) const { Function(Object); }
};
using TMemory = std::unique_ptr<BIO, TFreeBy<BIO_free_all>>;
using TKey = std::unique_ptr<EVP_PKEY, TFreeBy<EVP_PKEY_free>>;

struct TWiped {
  ~TWiped() { OPENSSL_cleanse(Text.data(), Text.size()); }
  std::string Text;
};

TMemory Reader(const std::string& Text) {
  TMemory Result(BIO_new_mem_buf(Text.data(), static_cast<int>(Text.size())));
  if (!Result) throw std::bad_alloc();
  return Result;
}

std::string ReadCertificates(const std::string& File) {
  std::ifstream Stream(File, std::ios::binary);
  std::string Text(MaxBytes, '\0');
  Stream.read(Text.data(), static_cast<std::streamsize>(Text.size()));
  Text.resize(static_cast<std::size_t>(std::max<std::streamsize>(0, Stream.gcount())));
  if (Text.empty()) throw TBeamError("Cannot read the client certificate " + File + " (http.client_certificate)");
  return Text;
}

struct TQuestion {
  const std::function<std::string()>& Passphrase;
  bool Asked = false;
  std::exception_ptr Error = nullptr;
};

int OnPassphrase(char* Out, int Room, int, void* Context) noexcept {
  auto& Question = *static_cast<TQuestion*>(Context);
  Question.Asked = true;
  try {
    const TWiped Answer{Question.Passphrase ? Question.Passphrase() : ""};
    if (Answer.Text.empty() || Answer.Text.size() > static_cast<std::size_t>(Room)) return -1;
    std::copy(Answer.Text.begin(), Answer.Text.end(), Out);
    return static_cast<int>(Answer.Text.size());
  } catch (...) {
    Question.Error = std::current_exception();
    return -1;
  }
}

TKey ParseKey(const std::string& Text, const std::string& File, const std::function<std::string()>& Passphrase) {
  TQuestion Question{Passphrase};
  TKey Result(PEM_read_bio_PrivateKey(Reader(Text).get(), nullptr, &OnPassphrase, &Question));
  ERR_clear_error();
  if (Question.Error) std::rethrow_exception(Question.Error);
  if (!Result && Question.Asked)
    throw TBeamError("The key of the client certificate, " + File +
                     ", is enciphered and the stored passphrase does not open it: set it with \"oxsuper config "
                     "set-secret client-key\"");
  if (!Result) throw TBeamError("The file " + File + " holds no private key in PEM form (http.client_key)");
  return Result;
}

}  // namespace

TClientKey::~TClientKey() {
  OPENSSL_cleanse(Key.data(), Key.size());
}

TClientKey ReadClientKey(const std::string& CertificateFile, const std::string& KeyFile,
                         const std::function<std::string()>& Passphrase) {
  const std::string& File = KeyFile.empty() ? CertificateFile : KeyFile;
  const TWiped Text{ReadPrivateFile(File, "key of the client certificate", MaxBytes)};
  TClientKey Result;
  Result.Certificates = KeyFile.empty() ? Text.Text : ReadCertificates(CertificateFile);
  const std::unique_ptr<X509, TFreeBy<X509_free>> Certificate(
      PEM_read_bio_X509(Reader(Result.Certificates).get(), nullptr, nullptr, nullptr));
  ERR_clear_error();
  if (!Certificate)
    throw TBeamError("The file " + CertificateFile + " holds no certificate in PEM form (http.client_certificate)");
  Result.Own = SummaryOf(Certificate.get());

  const TKey Key = ParseKey(Text.Text, File, Passphrase);
  const bool Fits = X509_check_private_key(Certificate.get(), Key.get()) == 1;
  ERR_clear_error();
  if (!Fits) throw TBeamError("The key in " + File + " is not the one of the client certificate " + CertificateFile);
  const TMemory Plain(BIO_new(BIO_s_secmem()));
  if (!Plain || PEM_write_bio_PKCS8PrivateKey(Plain.get(), Key.get(), nullptr, nullptr, 0, nullptr, nullptr) != 1)
    throw TBeamError("The key in " + File + " cannot be used");
  char* Data = nullptr;
  const long Size = BIO_get_mem_data(Plain.get(), &Data);
  Result.Key.assign(Data, static_cast<std::size_t>(Size));
  return Result;
}

}  // namespace oxSuperAPI
