#include <charconv>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "peers.h"
#include "plain_member.h"

namespace bench {

namespace {

using TTree = nlohmann::ordered_json;

const TTree* Find(const TTree& Json, std::string_view Name) {
  const auto Found = Json.find(Name);
  return Found == Json.end() ? nullptr : &*Found;
}

void Text(const TTree& Json, std::string_view Name, std::string& Out) {
  const TTree* const Value = Find(Json, Name);
  if (Value) Out = Value->get_ref<const std::string&>();
}

struct TMemberReader {
  const TTree* Json;
  TPlainMember& Member;

  void Text(std::string_view Name, std::string TPlainMember::*Field) { bench::Text(*Json, Name, Member.*Field); }
  void Flag(std::string_view Name, std::string TPlainMember::*Field) {
    if (const TTree* const Value = Find(*Json, Name)) Member.*Field = Value->get<bool>() ? "true" : "false";
  }
  void Amount(std::string_view Name, double TPlainMember::*Field) {
    const TTree* const Value = Find(*Json, Name);
    if (!Value) throw std::runtime_error("an amount is missing");
    const std::string& Digits = Value->get_ref<const std::string&>();
    const char* const End = Digits.data() + Digits.size();
    const auto [Stop, Error] = std::from_chars(Digits.data(), End, Member.*Field);
    if (Error != std::errc{} || Stop != End) throw std::runtime_error("not an amount");
  }
  template <class Fill>
  void Object(std::string_view Name, Fill FillObject) {
    const TTree* const Nested = Find(*Json, Name);
    if (!Nested) return;
    const TTree* const Outer = std::exchange(Json, Nested);
    FillObject();
    Json = Outer;
  }
  void Phones(std::string_view Name) {
    const TTree* const Array = Find(*Json, Name);
    if (!Array) return;
    for (const TTree& Element : *Array) {
      TPlainPhone& Phone = Member.phoneNumbers.emplace_back();
      bench::Text(Element, "areaCode", Phone.areaCode);
      bench::Text(Element, "number", Phone.number);
      bench::Text(Element, "phoneNumberType", Phone.phoneNumberType);
    }
  }
};

}  // namespace

TPlainBatch ReadWithNlohmann(const TTree& Tree) {
  TPlainBatch Batch;
  const TTree& Detail = Tree.at("contributionDetail");
  const TTree& Employer = Detail.at("employers").at(0);
  Text(Employer, "employerTransactionContextId", Batch.employerTransactionContextId);
  for (const TTree& FundJson : Employer.at("funds")) {
    TPlainFund& Fund = Batch.funds.emplace_back();
    Text(FundJson, "fundEmployerNumber", Fund.fundEmployerNumber);
    Text(FundJson.at("fundIdentifier"), "abn", Fund.abn);
    Text(FundJson.at("fundIdentifier"), "usi", Fund.usi);
    Fund.isDefaultFund = FundJson.at("isDefaultFund").get<bool>();
    const TTree* const Members = Find(FundJson, "members");
    if (!Members) continue;
    for (const TTree& MemberJson : *Members) {
      TMemberReader Reader{&MemberJson, Fund.members.emplace_back()};
      DescribeMember(Reader);
    }
  }
  Text(Detail.at("participantDetail"), "clientParticipantNumber", Batch.clientParticipantNumber);
  Text(Detail.at("paymentDetail"), "paymentType", Batch.paymentType);
  Text(Tree.at("identifier"), "messageId", Batch.messageId);
  Text(Tree.at("identifier"), "time", Batch.time);
  Text(Tree, "version", Batch.version);
  return Batch;
}

}  // namespace bench
