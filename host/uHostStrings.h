#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// An ordered list of UTF-8 text lines: headers, bodies, responses and diagnostics travel in it.
/// An entry may itself hold line breaks; they are carried through unchanged.
class OXSUPERAPI_EXPORT TStringList {
 public:
  /// Takes the lines over as they are; nothing is split. @{
  TStringList() = default;
  explicit TStringList(std::vector<std::string> Lines) : FLines(std::move(Lines)) {}
  /// @}

  /// Line breaks in the entry stay part of it. @{
  void Add(std::string Line) { FLines.push_back(std::move(Line)); }
  void Clear() { FLines.clear(); }
  /// @}

  /// The list then holds exactly one entry, or none when `Text` is empty. Line breaks in it are not split.
  void SetText(std::string Text);

  /// Entries, not lines of the text: an entry may hold line breaks. @{
  std::size_t Count() const { return FLines.size(); }
  bool IsEmpty() const { return FLines.empty(); }
  /// @}

  /// Raises TBeamRangeError when `Index` is not below `Count()`.
  const std::string& operator[](std::size_t Index) const;
  /// Iterators over the entries; they hold until the next change of the list. @{
  auto begin() const { return FLines.begin(); }
  auto end() const { return FLines.end(); }
  /// @}

  /// The entries with CR LF between them; none after the last. A list of one entry, as large bodies and answers are,
  /// can give it without a copy: the view is then of the entry, else of `Joined`, which holds the text. @{
  std::string Text() const;
  std::string_view Text(std::string& Joined) const;
  /// @}

 private:
  std::vector<std::string> FLines;
};

}  // namespace oxSuperAPI
