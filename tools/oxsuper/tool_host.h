#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "editors.h"
#include "oxSuperAPI/reference/reference_host.h"

namespace oxSuperAPI {

/// What became of one request of this process.
struct TSentRequest {
  std::string Path;      ///< of the URL, without host and query
  bool Changes = false;  ///< it changes something at the service; a token or a validation does not
  TRequestFate Fate = TRequestFate::NotSent;
  std::int32_t Status = 0;  ///< of the answer, 0 when there is none
  std::string Problem{};    ///< why there is no answer; names no content
};

/// The reference host, with a record of the requests: the facades raise one fixed error for whatever went wrong, and
/// the tool has to tell "not sent" from "may have arrived".
class TToolHost final : public THost, private THTTPHelper {
 public:
  explicit TToolHost(TReferenceConfig Config) : FHost(std::move(Config)) {}

  THTTPHelper& HTTPHelper() override { return *this; }
  TJSONParser& JSONParser() override { return FHost.JSONParser(); }
  THostSettings& Settings() override { return FHost.Settings(); }
  THostCipher& Cipher() override { return FHost.Cipher(); }
  THostLog& Log() override { return FHost.Log(); }
  THostIdentity& Identity() override { return FHost.Identity(); }
  THostSystem& System() override { return FHost.System(); }
  TADOConnection* ADOMainCommonConnection() override { return FHost.ADOMainCommonConnection(); }
  TADOConnection* ADOMainConnection() override { return FHost.ADOMainConnection(); }
  std::unique_ptr<TfrmResponseEditor> CreateResponseEditor(TEditorKind Kind) override {
    return CreateEditor(Kind, FReview);
  }

  TReferenceHost& Reference() { return FHost; }
  /// In the order in which they were made.
  const std::vector<TSentRequest>& Requests() const { return FRequests; }

  /// What the person decided about the last request that was shown; Passed when none was.
  TReview Review() const { return FReview; }
  void ForgetReview() { FReview = TReview::Passed; }

  /// Called with the path before a request that changes something leaves. When it raises, nothing is sent.
  std::function<void(const std::string& Path)> BeforeChange;

 private:
  std::int32_t httpNetGet(const std::string& URL, const TStringList& Headers, TStringList& LogDetails,
                          TStringList& Response) override;
  std::int32_t httpNetPost(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                           TStringList& LogDetails, TStringList& Response) override;
  std::int32_t httpNetPut(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                          TStringList& LogDetails, TStringList& Response) override;

  template <class Send>
  std::int32_t Record(const std::string& URL, bool MayChange, Send Request);

  TReferenceHost FHost;
  std::vector<TSentRequest> FRequests;
  TReview FReview = TReview::Passed;
};

}  // namespace oxSuperAPI
