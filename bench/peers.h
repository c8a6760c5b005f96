#pragma once

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>

#include <nlohmann/json_fwd.hpp>
#include <string_view>

#include "batch_generator.h"

namespace bench {

// The work of the library, done with other well-made libraries on plain structs.

/// Pretty text as the library writes it, with RapidJSON's SAX writer.
rapidjson::StringBuffer WriteWithRapidJson(const TPlainBatch& Batch);
/// Text to plain structs in one pass, with RapidJSON's SAX reader. Raises std::runtime_error for what is not a batch.
TPlainBatch ReadWithRapidJson(std::string_view Text);
/// Parsed tree to plain structs.
TPlainBatch ReadWithNlohmann(const nlohmann::ordered_json& Tree);

/// RapidJSON's document, with the checks that the library's parser makes: encoding validated, numbers kept as text.
/// Recursive, which is quicker than iterative.
using TRapidDocument = rapidjson::Document;
inline constexpr unsigned RapidFlags = rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;

}  // namespace bench
