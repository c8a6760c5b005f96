#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

// Files that hold keys, secrets or people's data belong to their owner alone. A link, another owner or wider rights are
// refused with a TBeamError that says what to do; no error text holds any content.
// `What` names the file's purpose in those texts ("key file").

/// The whole content. Raises when the file is missing, is not private or is longer than `MaxBytes`.
OXSUPERAPI_EXPORT std::string ReadPrivateFile(const std::string& Path, std::string_view What, std::size_t MaxBytes);

/// Raises unless `Path` is an existing private file.
OXSUPERAPI_EXPORT void CheckPrivateFile(const std::string& Path, std::string_view What);

/// Writes a new file with rights 0600 to the disk. Raises when something of that name exists; leaves nothing behind
/// when writing fails.
OXSUPERAPI_EXPORT void CreatePrivateFile(const std::string& Path, std::string_view What, std::string_view Content);

/// As CreatePrivateFile, but takes the place of a private file of that name, in one step: a reader sees the old or the
/// new content.
OXSUPERAPI_EXPORT void ReplacePrivateFile(const std::string& Path, std::string_view What, std::string_view Content);

/// Whether anything, a broken link included, has this name.
OXSUPERAPI_EXPORT bool PathExists(const std::string& Path);

}  // namespace oxSuperAPI
