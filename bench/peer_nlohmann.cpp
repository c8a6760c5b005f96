#include <algorithm>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "peers.h"
#include "plain_member.h"

namespace bench {

namespace {

using TTree = nlohmann::ordered_json;

/// The library's tables have room for so many.
constexpr std::size_t MaxPhones = 5;

const TTree* Find(const TTree& Json, std::string_view Name) {
  const auto Found = Json.find(Name);
  return Found == Json.end() ? nullptr : &*Found;
}

/// The library's rules: what is missing, null or a container is empty, booleans and numbers are their text.
void Text(const TTree& Json, std::string_view Name, std::string& Out) {
  const TTree* const Value = Find(Json, Name);
  if (Value && Value->is_string())
    Out = Value->get_ref<const std::string&>();
  else if (Value && Value->is_primitive() && !Value->is_null())
    Out = Value->dump();
  else
    Out.clear();
}

double Number(const std::string& Text) {
  constexpr std::string_view Blanks = " \t\r\n";
  const std::size_t First = std::min(Text.find_first_not_of(Blanks), Text.size());
  const char* const End = Text.data() + Text.find_last_not_of(Blanks) + 1;
  double Result = 0;
  const auto [Stop, Error] = std::from_chars(Text.data() + First, End, Result);
  if (Error != std::errc{} || Stop != End || !std::isfinite(Result)) throw std::runtime_error("not an amount");
  return Result;
}

struct TMemberReader {
  const TTree* Json;
  TPlainMember& Member;

  void Text(std::string_view Name, std::string TPlainMember::*Field) { bench::Text(*Json, Name, Member.*Field); }
  void Flag(std::string_view Name, std::string TPlainMember::*Field) { Text(Name, Field); }
  void Amount(std::string_view Name, double TPlainMember::*Field) {
    const TTree* const Value = Find(*Json, Name);
    if (!Value) throw std::runtime_error("an amount is missing");
    Member.*Field = Value->is_string() ? Number(Value->get_ref<const std::string&>()) : Number(Value->dump());
  }
  template <class Fill>
  void Object(std::string_view Name, Fill FillObject) {
    const TTree* const Nested = Find(*Json, Name);
    if (!Nested || !Nested->is_object()) return;
    const TTree* const Outer = std::exchange(Json, Nested);
    FillObject();
    Json = Outer;
  }
  void Unused(std::string_view Name) {
    if (Find(*Json, Name)) throw std::runtime_error("a member that is not generated");
  }
  void Phones(std::string_view Name) {
    const TTree* const Array = Find(*Json, Name);
    if (!Array || !Array->is_array()) return;
    Member.phoneNumbers.resize(std::min(Array->size(), MaxPhones));
    for (std::size_t Index = 0; Index < Member.phoneNumbers.size(); ++Index) {
      TPlainPhone& Phone = Member.phoneNumbers[Index];
      bench::Text((*Array)[Index], "areaCode", Phone.areaCode);
      bench::Text((*Array)[Index], "number", Phone.number);
      bench::Text((*Array)[Index], "phoneNumberType", Phone.phoneNumberType);
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
    Fund.members.reserve(Members->size());
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
