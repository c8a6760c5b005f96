#pragma once

#include <stdexcept>
#include <string>

/// Marks what a host uses from the library when it is built as a shared object with hidden visibility. Exceptions need
/// it too: a type that is not exported cannot be caught across the boundary.
#define OXSUPERAPI_EXPORT __attribute__((visibility("default")))

namespace oxSuperAPI {

/// Everything that the library itself raises. `what()` is the text for people; it never holds a secret's value.
class OXSUPERAPI_EXPORT TBeamError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A text that is not the number or date it has to be, or a number that has no wire form (NaN, infinity).
class OXSUPERAPI_EXPORT TBeamConversionError : public TBeamError {
 public:
  using TBeamError::TBeamError;
};

/// A JSON value of another kind than the reader needs.
class OXSUPERAPI_EXPORT TBeamTypeError : public TBeamError {
 public:
  using TBeamError::TBeamError;
};

/// An index or an ordinal outside its range.
class OXSUPERAPI_EXPORT TBeamRangeError : public TBeamError {
 public:
  using TBeamError::TBeamError;
};

}  // namespace oxSuperAPI
