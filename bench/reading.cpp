// Text to tree, tree to records, text to records.
#include <simdjson.h>

#include <nlohmann/json.hpp>
#include <optional>

#include "groups.h"
#include "memory_meter.h"
#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/reference/reference_host.h"
#include "peers.h"

namespace bench {

namespace {

using oxSuperAPI::TBeamContributionDetail;
using oxSuperAPI::TJSONValue;

std::string_view View(const rapidjson::StringBuffer& Buffer) {
  return {Buffer.GetString(), Buffer.GetSize()};
}

std::unique_ptr<TBeamContributionDetail> Load(const TJSONValue& Tree) {
  auto Batch = std::make_unique<TBeamContributionDetail>();
  Batch->LoadFromJsonObject(Tree);
  return Batch;
}

std::unique_ptr<TRapidDocument> ParseWithRapidJson(const std::string& Text) {
  auto Document = std::make_unique<TRapidDocument>();
  Document->Parse<RapidFlags>(Text.data(), Text.size());
  return Document;
}

struct TData {
  oxSuperAPI::TReferenceHost Host{{}};  // only its parser is used
  std::string Text;
  std::unique_ptr<TJSONValue> Tree;
  nlohmann::ordered_json PeerTree;
  simdjson::dom::parser Simdjson;

  TData() {
    oxSuperAPI::RegisterHost(&Host);
    const TPlainBatch Plain = GenerateBatch(20'000);
    Text = ToRecords(Plain)->GetAsJsonString();
    Tree = oxSuperAPI::ParseJSON(Text);
    PeerTree = nlohmann::ordered_json::parse(Text);
    NeedEqual(Tree && PrintJSON(*Tree, oxSuperAPI::TJSONLayout::Pretty) == Text, "our own tree");
    NeedEqual(nlohmann::ordered_json::parse(Text) == PeerTree, "nlohmann's tree");
    NeedEqual(!ParseWithRapidJson(Text)->HasParseError(), "RapidJSON's document");
    // What is read, written again: the readers saw every field.
    NeedEqual(Load(*Tree)->GetAsJsonString() == Text, "our own records");
    NeedEqual(View(WriteWithRapidJson(ReadWithRapidJson(Text))) == Text, "RapidJSON's plain structs");
    NeedEqual(View(WriteWithRapidJson(ReadWithNlohmann(PeerTree))) == Text, "nlohmann's plain structs");
  }
  ~TData() { oxSuperAPI::RegisterHost(nullptr); }
};
std::optional<TData> Data;
const TGroup Group(
    "reading", [] { Data.emplace(); }, [] { Data.reset(); });

template <class TWork>
void Add(const char* Name, TWork Work) {
  Once(Name, [Work](benchmark::State& State) { Loop(State, Work); });
}

const bool Added = [] {
  Add("reading/tree", [] { return oxSuperAPI::ParseJSON(Data->Text); });
  Add("reading/tree_rapidjson", [] { return ParseWithRapidJson(Data->Text); });
  Add("reading/tree_simdjson", [] { return Data->Simdjson.parse(Data->Text).error(); });
  Add("reading/records", [] { return Load(*Data->Tree); });
  Add("reading/records_nlohmann", [] { return ReadWithNlohmann(Data->PeerTree); });
  Add("reading/whole", [] { return Load(*oxSuperAPI::ParseJSON(Data->Text)); });
  Add("reading/whole_rapidjson", [] { return ReadWithRapidJson(Data->Text); });
  Once("reading/memory", [](benchmark::State& State) {
    for (auto _ : State) {
      {
        const TMemoryMeter Meter;
        const auto Tree = oxSuperAPI::ParseJSON(Data->Text);
        State.counters["ours"] = Meter.Held();
      }
      const TMemoryMeter Meter;
      const auto Document = ParseWithRapidJson(Data->Text);
      State.counters["rapidjson"] = Meter.Held();
    }
  });
  return true;
}();

}  // namespace

}  // namespace bench
