#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "../support/documents.h"
#include "oxSuperAPI/model/uBeamContributionResponse.h"

namespace oxSuperAPI {

/// Every leaf of a document as "/name/0/name=value", sorted.
using TPaths = std::vector<std::string>;

inline void CollectPaths(const TJSONValue& Value, const std::string& Path, TPaths& Paths) {
  if (const TJSONObject* Object = Value.AsObject())
    for (const TJSONPair& Member : Object->Members())
      CollectPaths(Member.Value(), (Path + "/").append(Member.Name()), Paths);
  else if (const TJSONArray* Array = Value.AsArray())
    for (std::size_t Index = 0; Index < Array->Count(); ++Index)
      CollectPaths(*Array->At(Index), Path + "/" + std::to_string(Index), Paths);
  else
    Paths.push_back(Path + "=" + PrintJSON(Value, TJSONLayout::Compact));
}

inline TPaths PathsOf(std::string_view Text) {
  TPaths Paths;
  CollectPaths(Document(Text), "", Paths);
  std::ranges::sort(Paths);
  return Paths;
}

inline TPaths Without(const TPaths& All, const TPaths& Taken) {
  TPaths Rest;
  std::ranges::set_difference(All, Taken, std::back_inserter(Rest));
  return Rest;
}

/// Loads a record, old or new, from the text of an object.
template <class Record>
void Load(Record& Loaded, std::string_view Text) {
  const TJSONValue Json = Document(Text);
  if constexpr (requires { Loaded.LoadFromJsonObject(*Json.AsObject()); })
    Loaded.LoadFromJsonObject(*Json.AsObject());
  else
    Loaded.LoadFromJSONObject(*Json.AsObject());
}

template <class Record>
Record Loaded(std::string_view Text) {
  Record Result;
  Load(Result, Text);
  return Result;
}

/// The compact text of a record or list; both of its forms must agree.
template <class Record>
std::string Written(const Record& Source) {
  const auto Tree = Source.GetAsJsonObject();
  EXPECT_EQ(PrintJSON(*Tree, TJSONLayout::Pretty), Source.GetAsJsonString());
  return PrintJSON(*Tree, TJSONLayout::Compact);
}

/// What a record loses and gains on the way from `Text` through its reader and its writer.
template <class Record>
void ExpectLoss(const std::string& Text, TPaths Lost, TPaths Gained) {
  const TPaths Before = PathsOf(Text), After = PathsOf(Loaded<Record>(Text).GetAsJsonString());
  std::ranges::sort(Lost);
  std::ranges::sort(Gained);
  EXPECT_EQ(Without(Before, After), Lost);
  EXPECT_EQ(Without(After, Before), Gained);
}

}  // namespace oxSuperAPI
