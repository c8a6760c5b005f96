#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "oxSuperAPI/host/uHostStrings.h"

namespace oxSuperAPI {

/// What is known of a request after the call: a submission may only be repeated without asking when it was `NotSent`.
enum class TRequestFate : std::uint8_t {
  None,            ///< no call was made yet
  NotSent,         ///< certainly nothing of the request left this machine
  MayHaveArrived,  ///< it left, wholly or in part, and no complete answer came back
  Answered         ///< a complete answer came back, whatever its status
};

/// A call without a complete answer. The text names the host and the reason; never a path, header, body or query.
class OXSUPERAPI_EXPORT THTTPError : public TBeamError {
 public:
  /// `Text` as described above.
  THTTPError(const std::string& Text, TRequestFate Fate) : TBeamError(Text), FFate(Fate) {}
  /// `NotSent` or `MayHaveArrived`.
  TRequestFate Fate() const { return FFate; }

 private:
  TRequestFate FFate;
};

/// A URL that may be sent.
struct TWireURL {
  std::string Text;  ///< percent-encoded where needed
  std::string Host;  ///< with the port, if one is given; for error texts
};

/// The form of `URL` in which it travels: bytes that a URL may not hold are percent-encoded, existing escapes stay.
/// Raises THTTPError (NotSent) for what could lead the request elsewhere: another scheme than https, a user name,
/// control characters, dot segments (plain or encoded) and "#".
OXSUPERAPI_EXPORT TWireURL EncodeURL(std::string_view URL);

/// Raises THTTPError (NotSent) unless every line is "name: value" without control characters and none of them is a
/// header by which the transport itself delimits messages.
OXSUPERAPI_EXPORT void CheckHeaders(const TStringList& Headers);

/// The name of a header line in lower case: what stands before the colon.
OXSUPERAPI_EXPORT std::string HeaderName(std::string_view Line);

/// Whether the first byte of the body that is no white space opens a JSON object or array.
OXSUPERAPI_EXPORT bool LooksLikeJSON(const TStringList& Body);

}  // namespace oxSuperAPI
