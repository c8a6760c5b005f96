#include "oxSuperAPI/reference/toml_file.h"

#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/reference/private_file.h"

namespace oxSuperAPI {

toml::table ReadTOMLFile(const std::string& FileName, std::string_view What) {
  const std::string Text = ReadPrivateFile(FileName, What, 1u << 20);
  try {
    return toml::parse(Text, FileName);
  } catch (const toml::parse_error& Error) {
    FailAt(FileName, Error, Error.description());
  }
}

std::string_view KindOf(const toml::node& Node) {
  switch (Node.type()) {
    case toml::node_type::table:
      return "a table";
    case toml::node_type::array:
      return "an array";
    case toml::node_type::string:
      return "a string";
    case toml::node_type::integer:
      return "an integer";
    case toml::node_type::floating_point:
      return "a number with a fraction";
    case toml::node_type::boolean:
      return "true or false";
    default:
      return "a date or a time";
  }
}

std::string QuotedTOML(std::string_view Text) {
  // A basic string of TOML is escaped as a JSON string is, and has to escape DEL besides.
  std::string JSON;
  AppendJSONString(JSON, Text);
  std::string Result;
  for (const char Character : JSON) {
    if (Character == '\x7f')
      Result += "\\u007F";
    else
      Result += Character;
  }
  return Result;
}

}  // namespace oxSuperAPI
