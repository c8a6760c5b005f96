#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// One changed field.
struct TSuperFieldChange {
  /// The field's technical name, its new value as text, and its name for people. @{
  std::string FieldName;
  std::string StringValue;
  std::string FriendlyFieldName;
  /// @}
};

/// What a host changed, for its own records: up to 30 fields and a comment. Nothing of the library reads it.
class OXSUPERAPI_EXPORT TSuperFieldChanges {
 public:
  /// The table; entries from `GetChangeCount()` on are empty. @{
  static constexpr std::size_t MaxChanges = 30;

  std::array<TSuperFieldChange, MaxChanges> Changes;
  /// @}

  /// The index of the new entry, or -1 when the table is full; nothing is stored then.
  std::int32_t Add(std::string pFieldName, std::string pStringValue, std::string pFriendlyFieldName);
  /// Puts comments on lines of their own (CR LF between them). An empty one is ignored.
  void AddComment(std::string_view pComment);
  /// Empties the entries and keeps the comments.
  void Clear();

  /// Comments as one text; entries in use; entries there are. @{
  const std::string& Comments() const { return FComments; }
  std::int32_t GetChangeCount() const { return FChangeCount; }
  std::int32_t GetMaxChanges() const { return static_cast<std::int32_t>(MaxChanges); }
  /// @}

 private:
  std::string FComments;
  std::int32_t FChangeCount = 0;
};

}  // namespace oxSuperAPI
