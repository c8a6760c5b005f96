#include "oxSuperAPI/model/uBeamFundSearch.h"

#include "oxSuperAPI/model/uBeamRecordReader.h"

namespace oxSuperAPI {

void TSuperFundSearchResult::Clear() {
  Funds = {};
  FundCount = 0;
}

void TSuperFundSearchResult::LoadFromJSONObject(TJSONView Source) {
  Clear();
  const TJSONArray* Found = Source.Array();
  for (std::size_t Index = 0; Found && Index < Found->Count() && Index < Funds.size(); ++Index) {
    const TBeamRecordReader Json = TBeamRecordReader::OfElement(*Found->At(Index), "funds");
    TSuperFund& Fund = Funds[Index];
    Fund.USI = Json.Text("uniqueSuperannuationIdentifier");
    Fund.ABN = Json.Text("australianBusinessNumber");
    Fund.FundName = Json.Text("productName");
    ++FundCount;
  }
}

}  // namespace oxSuperAPI
