#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <array>
#include <charconv>
#include <stdexcept>
#include <variant>

#include "peers.h"
#include "plain_member.h"

namespace bench {

namespace {

enum class TArray : std::uint8_t { Funds, Members, Phones, Other };

using TTarget =
    std::variant<std::monostate, std::string TPlainMember::*, double TPlainMember::*, std::string TPlainPhone::*,
                 std::string TPlainFund::*, bool TPlainFund::*, std::string TPlainBatch::*, TArray>;

/// Where the value of each name goes. Every name stands for one field only, so the name alone decides. A small hash
/// table over length and three letters, since a general one costs more than the reading itself.
class TTargets {
 public:
  TTargets() {
    DescribeMember(*this);
    Put("areaCode", &TPlainPhone::areaCode);
    Put("number", &TPlainPhone::number);
    Put("phoneNumberType", &TPlainPhone::phoneNumberType);
    Put("fundEmployerNumber", &TPlainFund::fundEmployerNumber);
    Put("abn", &TPlainFund::abn);
    Put("usi", &TPlainFund::usi);
    Put("isDefaultFund", &TPlainFund::isDefaultFund);
    Put("funds", TArray::Funds);
    Put("members", TArray::Members);
    Put("phoneNumbers", TArray::Phones);
    Put("employerTransactionContextId", &TPlainBatch::employerTransactionContextId);
    Put("clientParticipantNumber", &TPlainBatch::clientParticipantNumber);
    Put("paymentType", &TPlainBatch::paymentType);
    Put("messageId", &TPlainBatch::messageId);
    Put("time", &TPlainBatch::time);
    Put("version", &TPlainBatch::version);
  }

  const TTarget& Find(std::string_view Name) const {
    for (std::size_t Slot = Hash(Name);; ++Slot) {
      const TSlot& Found = FSlots[Slot % FSlots.size()];
      if (Found.Name.empty() || Found.Name == Name) return Found.Target;
    }
  }

  void Text(std::string_view Name, std::string TPlainMember::*Field) { Put(Name, Field); }
  void Flag(std::string_view Name, std::string TPlainMember::*Field) { Put(Name, Field); }
  void Amount(std::string_view Name, double TPlainMember::*Field) { Put(Name, Field); }
  template <class Fill>
  void Object(std::string_view, Fill FillObject) {
    FillObject();
  }
  void Unused(std::string_view) {}
  void Phones(std::string_view) {}

 private:
  struct TSlot {
    std::string_view Name;
    TTarget Target;
  };
  static std::size_t Hash(std::string_view Name) {
    if (Name.empty()) return 0;
    const auto Byte = [&](std::size_t At) { return static_cast<std::size_t>(static_cast<unsigned char>(Name[At])); };
    return Name.size() * 7 + Byte(0) * 31 + Byte(Name.size() / 2) * 127 + Byte(Name.size() - 1) * 61;
  }
  void Put(std::string_view Name, TTarget Target) {
    std::size_t Slot = Hash(Name);
    while (!FSlots[Slot % FSlots.size()].Name.empty()) ++Slot;
    FSlots[Slot % FSlots.size()] = {Name, Target};
  }
  std::array<TSlot, 512> FSlots;
};

class TBatchReader : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TBatchReader> {
 public:
  TPlainBatch Batch;

  bool Key(const char* Data, rapidjson::SizeType Size, bool) {
    FTarget = &FTargets.Find({Data, Size});
    return true;
  }
  bool String(const char* Data, rapidjson::SizeType Size, bool) {
    const std::string_view Value(Data, Size);
    if (const auto* Text = std::get_if<std::string TPlainMember::*>(FTarget))
      Member().*(*Text) = Value;
    else if (const auto* Amount = std::get_if<double TPlainMember::*>(FTarget)) {
      const auto [End, Error] = std::from_chars(Data, Data + Size, Member().*(*Amount));
      return Error == std::errc{} && End == Data + Size;
    } else if (const auto* OfPhone = std::get_if<std::string TPlainPhone::*>(FTarget))
      Member().phoneNumbers.back().*(*OfPhone) = Value;
    else if (const auto* OfFund = std::get_if<std::string TPlainFund::*>(FTarget))
      Batch.funds.back().*(*OfFund) = Value;
    else if (const auto* OfBatch = std::get_if<std::string TPlainBatch::*>(FTarget))
      Batch.*(*OfBatch) = Value;
    return true;
  }
  bool Bool(bool Value) {
    if (const auto* Flag = std::get_if<std::string TPlainMember::*>(FTarget))
      Member().*(*Flag) = Value ? "true" : "false";
    else if (const auto* OfFund = std::get_if<bool TPlainFund::*>(FTarget))
      Batch.funds.back().*(*OfFund) = Value;
    return true;
  }
  bool StartArray() {
    const auto* const Known = std::get_if<TArray>(FTarget);
    FArrays.push_back(Known ? *Known : TArray::Other);
    FDepths.push_back(FDepth);
    return true;
  }
  bool EndArray(rapidjson::SizeType) {
    FArrays.pop_back();
    FDepths.pop_back();
    return true;
  }
  bool StartObject() {
    if (!FDepths.empty() && FDepths.back() == FDepth) {  // an element
      if (FArrays.back() == TArray::Funds) Batch.funds.emplace_back();
      if (FArrays.back() == TArray::Members) Batch.funds.back().members.emplace_back();
      if (FArrays.back() == TArray::Phones) Member().phoneNumbers.emplace_back();
    }
    ++FDepth;
    return true;
  }
  bool EndObject(rapidjson::SizeType) {
    --FDepth;
    return true;
  }

 private:
  TPlainMember& Member() { return Batch.funds.back().members.back(); }

  const TTargets FTargets;
  const TTarget* FTarget = &FTargets.Find("");
  std::vector<TArray> FArrays;
  std::vector<std::size_t> FDepths;  // of objects, where each open array began
  std::size_t FDepth = 0;
};

}  // namespace

TPlainBatch ReadWithRapidJson(std::string_view Text) {
  TBatchReader Handler;
  rapidjson::MemoryStream Stream(Text.data(), Text.size());
  if (rapidjson::Reader().Parse<RapidFlags>(Stream, Handler).IsError()) throw std::runtime_error("not a batch");
  return std::move(Handler.Batch);
}

}  // namespace bench
