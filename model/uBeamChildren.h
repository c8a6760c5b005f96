#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace oxSuperAPI {

/// The children of a record, shared with the host. Null is not added.
template <class Child>
void AddChild(std::vector<std::shared_ptr<Child>>& Children, std::shared_ptr<Child> Added) {
  if (Added) Children.push_back(std::move(Added));
}

/// Null for an index out of range.
template <class Child>
std::shared_ptr<Child> ChildAt(const std::vector<std::shared_ptr<Child>>& Children, std::ptrdiff_t Index) {
  if (Index < 0 || std::cmp_greater_equal(Index, Children.size())) return nullptr;
  return Children[static_cast<std::size_t>(Index)];
}

}  // namespace oxSuperAPI
