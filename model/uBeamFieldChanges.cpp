#include "oxSuperAPI/model/uBeamFieldChanges.h"

#include <utility>

namespace oxSuperAPI {

std::int32_t TSuperFieldChanges::Add(std::string pFieldName, std::string pStringValue, std::string pFriendlyFieldName) {
  if (FChangeCount == GetMaxChanges()) return -1;
  Changes[static_cast<std::size_t>(FChangeCount)] = {std::move(pFieldName), std::move(pStringValue),
                                                     std::move(pFriendlyFieldName)};
  return FChangeCount++;
}

void TSuperFieldChanges::AddComment(std::string_view pComment) {
  if (pComment.empty()) return;
  const std::string Added(pComment);  // it may refer into the comments
  if (!FComments.empty()) FComments += "\r\n";
  FComments += Added;
}

void TSuperFieldChanges::Clear() {
  Changes = {};
  FChangeCount = 0;
}

}  // namespace oxSuperAPI
