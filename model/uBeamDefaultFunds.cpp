#include "oxSuperAPI/model/uBeamDefaultFunds.h"

#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/model/uBeamChildren.h"
#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

using enum TAddNested;

template <class Sink>
void TBeamDefaultFund::Write(Sink& Json) const {
  Json.AddString("defaultFundId", DefaultFundId);
  Json.AddString("endDate", EndDate);
  Json.AddString("startDate", StartDate);
  Json.AddString("usi", USI);
}

void TBeamDefaultFund::Read(const TBeamRecordReader& Json) {
  DefaultFundId = Json.Text("defaultFundId");
  ReadInEmployer(Json);
}

void TBeamDefaultFund::ReadInEmployer(const TBeamRecordReader& Json) {
  // kept: wire behaviour, the id of an employer's fund is written and not read back
  EndDate = Json.Text("endDate");
  StartDate = Json.Text("startDate");
  USI = Json.Text("usi");
}

void TBeamDefaultFund::LoadFromJsonObject(TJSONView Source) {
  if (!Source.Object()) return;
  Read(TBeamRecordReader(Source));
}

template <class Array>
void TBeamDefaultFunds::WriteElements(Array& Json) const {
  for (const auto& Child : FDefaultFunds) Json.Element(Always, [&](auto& Fund) { Child->Write(Fund); });
}

void TBeamDefaultFunds::LoadFromJsonObject(TJSONView Source) {
  TBeamRecordReader::EachElement(Source.Array(), "default funds", [&](const TBeamRecordReader& Fund) {
    auto Child = std::make_shared<TBeamDefaultFund>();
    Child->Read(Fund);
    AddDefaultFund(std::move(Child));
  });
}

void TBeamDefaultFunds::AddDefaultFund(std::shared_ptr<TBeamDefaultFund> Fund) {
  AddChild(FDefaultFunds, std::move(Fund));
}

std::shared_ptr<TBeamDefaultFund> TBeamDefaultFunds::GetDefaultFund(std::ptrdiff_t Index) const {
  return ChildAt(FDefaultFunds, Index);
}

std::unique_ptr<TJSONObject> TBeamDefaultFund::GetAsJsonObject() const {
  return WriteToObject(*this);
}
std::string TBeamDefaultFund::GetAsJsonString() const {
  return WriteToText(*this);
}
std::unique_ptr<TJSONArray> TBeamDefaultFunds::GetAsJsonObject() const {
  return WriteToArray(*this);
}
std::string TBeamDefaultFunds::GetAsJsonString() const {
  return WriteToArrayText(*this);
}

template void TBeamDefaultFund::Write(TJSONObjectHelper&) const;
template void TBeamDefaultFund::Write(TJSONTextCounter&) const;
template void TBeamDefaultFund::Write(TJSONTextWriter&) const;
template void TBeamDefaultFunds::WriteElements(TJSONArrayHelper&) const;
template void TBeamDefaultFunds::WriteElements(TJSONTextCounter&) const;
template void TBeamDefaultFunds::WriteElements(TJSONTextWriter&) const;

}  // namespace oxSuperAPI
