// From a response of 20 MB to ResponseAsJson, beside one parse of it.
#include <optional>

#include "groups.h"
#include "oxSuperAPI/calls/uBeamAPICall.h"
#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/reference/reference_host.h"

namespace bench {

namespace {

using namespace oxSuperAPI;

/// An answer of the service to a large batch: mostly findings.
std::string LargeResponse() {
  std::string Text = "{\n  \"identifier\": {\"messageId\": \"m\", \"processId\": \"p\"},\n  \"validations\": [";
  for (int Number = 0; Text.size() < 20'000'000; ++Number)
    Text += std::string(Number ? "," : "") + "\n    {\n      \"context\": \"employers[0].funds[3].members[" +
            std::to_string(Number) + "]\",\n      \"errorCode\": \"E" + std::to_string(1000 + Number % 50) +
            "\",\n      \"message\": \"The date of birth is missing or lies in the future\",\n      \"severity\": "
            "\"WARNING\",\n      \"path\": \"dob\"\n    }";
  return Text + "\n  ],\n  \"processed\": true,\n  \"status\": \"ACCEPTED\"\n}\n";
}

/// Answers every GET with a text that is put in place beforehand. It has no database, so no log row is written.
class TAnsweringHost : public THost, public THTTPHelper {
 public:
  std::string Answer;

  std::int32_t httpNetGet(const std::string&, const TStringList&, TStringList&, TStringList& Response) override {
    Response.SetText(std::move(Answer));
    return 200;
  }
  std::int32_t httpNetPost(const std::string&, const TStringList&, const TStringList&, TStringList&,
                           TStringList&) override {
    return 0;
  }
  std::int32_t httpNetPut(const std::string&, const TStringList&, const TStringList&, TStringList&,
                          TStringList&) override {
    return 0;
  }
  THTTPHelper& HTTPHelper() override { return *this; }
  TJSONParser& JSONParser() override { return FRest.JSONParser(); }
  THostSettings& Settings() override { return FRest.Settings(); }
  THostCipher& Cipher() override { return FRest.Cipher(); }
  THostLog& Log() override { return FRest.Log(); }
  THostIdentity& Identity() override { return FRest.Identity(); }
  THostSystem& System() override { return FRest.System(); }
  TADOConnection* ADOMainCommonConnection() override { return nullptr; }
  TADOConnection* ADOMainConnection() override { return nullptr; }

 private:
  TReferenceHost FRest{{}};
};

struct TGet : TBeamAPICall {
  TGet() { SetBeamCallMethod(bcmGet); }
};

struct TData {
  TAnsweringHost Host;
  std::string Text = LargeResponse();

  TData() { RegisterHost(&Host); }
  ~TData() { RegisterHost(nullptr); }
  /// Ready to be answered.
  std::unique_ptr<TGet> Call() {
    Host.Answer = Text;
    return std::make_unique<TGet>();
  }
};
std::optional<TData> Data;

void Prepare() {
  Data.emplace();
  const auto Call = Data->Call();
  Call->MakeCall();
  NeedEqual(Call->ResponseAsJson() && PrintJSON(*Call->ResponseAsJson(), TJSONLayout::Compact) ==
                                          PrintJSON(*ParseJSON(Data->Text), TJSONLayout::Compact),
            "the parsed response");
}
const TGroup Group("response", Prepare, [] { Data.reset(); });

const auto Whole = Once("response/call", [](benchmark::State& State) {
  for (auto _ : State) {
    State.PauseTiming();
    auto Call = Data->Call();
    State.ResumeTiming();
    Call->MakeCall();
    State.PauseTiming();
    Call.reset();
    State.ResumeTiming();
  }
});
const auto Parse =
    Once("response/parse", [](benchmark::State& State) { Loop(State, [] { return ParseJSON(Data->Text); }); });

}  // namespace

}  // namespace bench
