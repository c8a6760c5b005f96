#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

/// Remembers where members were found. Objects of one document with the same names share them, and whoever reads such
/// objects asks for the same members in the same order: each name is then looked for once, not once an object. The
/// document has to outlive it and stay as it is.
class OXSUPERAPI_EXPORT TJSONPlaces {
 private:
  friend class TJSONMemberFinder;
  struct TPlace {
    const char* Name = nullptr;  // the literal that was asked for; null behind the last one
    std::size_t At = 0;          // of the object's values; beyond them when there is none
  };
  // As many as a record asks for, and as many kinds of objects as there mostly are.
  static constexpr std::size_t MaxPlaces = 95, MaxLists = 16;
  struct TList {
    const TJSONNames* Names;
    std::unique_ptr<TPlace[]> Places;
  };
  // One place more than MaxPlaces; null when there are too many lists.
  TPlace* Of(const TJSONNames* Names);

  std::vector<TList> FLists;
};

/// Finds members of one object by name, exactly as `TJSONObject::Find` does.
class OXSUPERAPI_EXPORT TJSONMemberFinder {
 public:
  /// In nothing when `Object` is null. The object has to outlive the finder and stay as it is; so has `Places`, when it
  /// is given.
  explicit TJSONMemberFinder(const TJSONObject* Object, TJSONPlaces* Places = nullptr);

  /// The first member of that name, or null. Borrowed from the object.
  [[gnu::always_inline]] const TJSONValue* Find(const TJSONKey& Key) {  // so that the key of a literal is constants
    if (!FNext || !Key.IsLiteral() || FNext->Name != Key.Text().data()) return FindElsewhere(Key);
    const std::size_t At = FNext++->At;
    return At < FCount ? FValues + At : nullptr;
  }

 private:
  const TJSONValue* FindElsewhere(TJSONKey Key);

  const TJSONObject* FObject;
  const TJSONValue* FValues = nullptr;
  std::size_t FCount = 0;
  TJSONPlaces::TPlace* FNext = nullptr;  // behind the last one used; null when nothing is remembered
  TJSONPlaces::TPlace* FEnd = nullptr;
};

}  // namespace oxSuperAPI
