#pragma once

#include <memory>
#include <string>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

/// Who accepted the terms of an employer or of a direct-debit authority, and when (ISO 8601), as the service tells it.
class OXSUPERAPI_EXPORT TBeamTermsAcceptance {
 public:
  /// "" where the service knows of no acceptance. @{
  std::string TermsAndConditionsAcceptanceDate;
  std::string UserAcceptingTermsAndConditions;
  /// @}

  /// The wire form, both ways: a tree that the caller owns, or pretty-printed text. `Write` serves either sink. @{
  std::unique_ptr<TJSONObject> GetAsJsonObject() const;
  std::string GetAsJsonString() const;
  void LoadFromJsonObject(TJSONView Source);

  template <class Sink>
  void Write(Sink& Json) const;
  /// @}
};

}  // namespace oxSuperAPI
