#include "oxSuperAPI/testing/uFault.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

TFault::TFault(TSort Sort, std::string Text, int Value) : FSort(Sort), FText(std::move(Text)), FValue(Value) {}

TFault TFault::Standard(std::string Text) {
  return {TSort::Standard, std::move(Text), 0};
}
TFault TFault::Beam(std::string Text) {
  return {TSort::Beam, std::move(Text), 0};
}
TFault TFault::NonStandard(int Value) {
  return {TSort::NonStandard, {}, Value};
}

void TFault::Raise() const {
  switch (FSort) {
    case TSort::Standard:
      throw std::runtime_error(FText);
    case TSort::Beam:
      throw TBeamError(FText);
    case TSort::NonStandard:
      break;
  }
  throw int{FValue};
}

TFaults::TFaults(std::initializer_list<std::string_view> Operations)
    : FOperations(Operations.begin(), Operations.end()) {}

void TFaults::FailOn(std::string_view Operation, TFault Fault) {
  Arm({std::string(Operation), std::move(Fault), false, 0});
}

void TFaults::FailOnce(std::string_view Operation, TFault Fault, std::size_t Skip) {
  Arm({std::string(Operation), std::move(Fault), true, Skip});
}

void TFaults::Arm(TArmed Armed) {
  if (std::find(FOperations.begin(), FOperations.end(), Armed.Operation) == FOperations.end())
    throw std::invalid_argument("This facility has no operation \"" + Armed.Operation + "\" that could fail");
  FArmed.push_back(std::move(Armed));
}

void TFaults::Check(std::string_view Operation) {
  for (auto Armed = FArmed.begin(); Armed != FArmed.end(); ++Armed) {
    if (Armed->Operation != Operation) continue;
    if (Armed->Skip > 0) {
      --Armed->Skip;
      continue;
    }
    const TFault Fault = Armed->Fault;
    if (Armed->Once) FArmed.erase(Armed);
    Fault.Raise();
  }
}

}  // namespace oxSuperAPI
