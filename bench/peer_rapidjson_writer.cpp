#include <rapidjson/prettywriter.h>

#include <charconv>

#include "peers.h"
#include "plain_member.h"

namespace bench {

namespace {

using TWriter = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void Key(TWriter& Writer, std::string_view Name) {
  Writer.Key(Name.data(), static_cast<rapidjson::SizeType>(Name.size()));
}

void Text(TWriter& Writer, std::string_view Name, const std::string& Value) {
  if (Value.empty()) return;
  Key(Writer, Name);
  Writer.String(Value.data(), static_cast<rapidjson::SizeType>(Value.size()));
}

struct TMemberWriter {
  TWriter& Writer;
  const TPlainMember& Member;

  void Text(std::string_view Name, std::string TPlainMember::*Field) { bench::Text(Writer, Name, Member.*Field); }
  void Flag(std::string_view Name, std::string TPlainMember::*Field) {
    if ((Member.*Field).empty()) return;
    Key(Writer, Name);
    Writer.Bool(Member.*Field == "true");
  }
  void Amount(std::string_view Name, double TPlainMember::*Field) {
    const double Value = Member.*Field;
    if (Value > -0.01 && Value < 0.01) return;
    char Digits[32];
    const char* const End = std::to_chars(Digits, Digits + sizeof Digits, Value, std::chars_format::fixed, 2).ptr;
    Key(Writer, Name);
    Writer.String(Digits, static_cast<rapidjson::SizeType>(End - Digits));
  }
  template <class Fill>
  void Object(std::string_view Name, Fill FillObject) {
    Key(Writer, Name);
    Writer.StartObject();
    FillObject();
    Writer.EndObject();
  }
  void Unused(std::string_view) {}
  void Phones(std::string_view Name) {
    Key(Writer, Name);
    Writer.StartArray();
    for (const TPlainPhone& Phone : Member.phoneNumbers) {
      Writer.StartObject();
      bench::Text(Writer, "areaCode", Phone.areaCode);
      bench::Text(Writer, "number", Phone.number);
      bench::Text(Writer, "phoneNumberType", Phone.phoneNumberType);
      Writer.EndObject();
    }
    Writer.EndArray();
  }
};

void WriteFund(TWriter& Writer, const TPlainFund& Fund) {
  Writer.StartObject();
  Text(Writer, "fundEmployerNumber", Fund.fundEmployerNumber);
  Key(Writer, "fundIdentifier");
  Writer.StartObject();
  Text(Writer, "abn", Fund.abn);
  Text(Writer, "usi", Fund.usi);
  Writer.EndObject();
  Key(Writer, "isDefaultFund");
  Writer.Bool(Fund.isDefaultFund);
  if (!Fund.members.empty()) {
    Key(Writer, "members");
    Writer.StartArray();
    for (const TPlainMember& Member : Fund.members) {
      Writer.StartObject();
      TMemberWriter Json{Writer, Member};
      DescribeMember(Json);
      Writer.EndObject();
    }
    Writer.EndArray();
  }
  Writer.EndObject();
}

}  // namespace

rapidjson::StringBuffer WriteWithRapidJson(const TPlainBatch& Batch) {
  rapidjson::StringBuffer Buffer;
  TWriter Writer(Buffer);
  Writer.SetIndent(' ', 2);
  Writer.StartObject();
  Key(Writer, "contributionDetail");
  Writer.StartObject();
  Key(Writer, "employers");
  Writer.StartArray();
  Writer.StartObject();
  Text(Writer, "employerTransactionContextId", Batch.employerTransactionContextId);
  Key(Writer, "funds");
  Writer.StartArray();
  for (const TPlainFund& Fund : Batch.funds) WriteFund(Writer, Fund);
  Writer.EndArray();
  Writer.EndObject();
  Writer.EndArray();
  Key(Writer, "participantDetail");
  Writer.StartObject();
  Text(Writer, "clientParticipantNumber", Batch.clientParticipantNumber);
  Writer.EndObject();
  Key(Writer, "paymentDetail");
  Writer.StartObject();
  Text(Writer, "paymentType", Batch.paymentType);
  Writer.EndObject();
  Writer.EndObject();
  Key(Writer, "identifier");
  Writer.StartObject();
  Text(Writer, "messageId", Batch.messageId);
  Text(Writer, "time", Batch.time);
  Writer.EndObject();
  Text(Writer, "version", Batch.version);
  Writer.EndObject();
  return Buffer;
}

}  // namespace bench
