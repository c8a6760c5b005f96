#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

class TJSONStore;

/// Builds a tree from what a JSON reader meets, one operation each, in the order of the text. Much quicker than a tree
/// that is appended to, and smaller: what is below the root is allocated in large pieces and freed at once, every
/// container gets room for what it holds, and objects with the same names keep them once.
///
/// Each operation is false, and changes nothing, where JSON has no place for it (a value without a name in an object, a
/// second root, an end of what was not begun) and where the nesting would exceed MaxJSONDepth. Texts are copied, as by
/// TJSONValue.
class OXSUPERAPI_EXPORT TJSONTreeBuilder {
 public:
  TJSONTreeBuilder();
  TJSONTreeBuilder(const TJSONTreeBuilder&) = delete;
  TJSONTreeBuilder& operator=(const TJSONTreeBuilder&) = delete;
  ~TJSONTreeBuilder();

  /// One value: the root, an element, or what the last name stands for. @{
  bool Null() { return Put(TJSONContent(TJSONKind::Null)); }
  bool Boolean(bool Value) { return Put(TJSONContent(Value ? TJSONKind::True : TJSONKind::False)); }
  bool Number(std::string_view Text) { return PutText(TJSONKind::Number, Text); }
  bool String(std::string_view Text) { return PutText(TJSONKind::String, Text); }
  /// @}
  /// The name of the next member. Unescaped, as strings are.
  bool Name(std::string_view Text);
  /// What stands between begin and end is inside the container. @{
  bool BeginObject() { return Begin(TJSONKind::Object); }
  bool EndObject() { return End(TJSONKind::Object); }
  bool BeginArray() { return Begin(TJSONKind::Array); }
  bool EndArray() { return End(TJSONKind::Array); }
  /// @}

  /// The tree, after which the builder is as new; null, and nothing changes, as long as it is not complete.
  std::unique_ptr<TJSONValue> Take();

 private:
  enum class TAwaited : std::uint8_t { Value, Name, Nothing };
  struct TOpen {
    TJSONKind Kind;
    std::size_t FirstValue;
    std::size_t FirstName;
  };
  struct TKnownList {
    TJSONNames* Names = nullptr;
    std::size_t Count = 0;
  };
  bool PutText(TJSONKind Kind, std::string_view Text);
  bool Put(const TJSONContent& Content);
  bool Begin(TJSONKind Kind);
  bool End(TJSONKind Kind);
  void Enter();
  TJSONContent KnownName(std::string_view Text);
  TJSONNames* KnownList(std::span<const TJSONContent> Names);

  // Of the open containers: values, and the names of members.
  std::vector<TJSONContent> FValues, FNames;
  std::vector<TOpen> FOpen;
  // What comes next (an end may come for any but the value of a name), and what comes behind a value.
  TAwaited FAwaited = TAwaited::Value, FBehindValue = TAwaited::Nothing;
  std::unique_ptr<TJSONStore> FStore;
  // Tables by hash, of long names and of lists of names.
  std::vector<TJSONContent> FKnownNames;
  std::vector<TKnownList> FKnownLists;
};

}  // namespace oxSuperAPI
