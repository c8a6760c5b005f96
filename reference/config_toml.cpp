#include "oxSuperAPI/reference/config_toml.h"

#include <algorithm>
#include <array>
#include <limits>
#include <set>
#include <span>
#include <type_traits>

#include "oxSuperAPI/reference/db_open.h"
#include "oxSuperAPI/reference/http_proxy.h"
#include "oxSuperAPI/reference/private_file.h"
#include "oxSuperAPI/reference/toml_file.h"

namespace oxSuperAPI {

namespace {

constexpr std::string_view What = "configuration";

// A wrong letter here would lead to production without a word, so only the known values are accepted.
constexpr std::array<std::string_view, 4> Environments = {"", "DEV", "QA", "PROD"};
constexpr std::array<std::string_view, 3> Maskings = {"off", "tokens", "private"};

// Every key once: its name, where it is kept, and what it means. The reader and the writer both follow this list.
template <class Visitor, class Config>
void Describe(Visitor& File, Config& C) {
  File.Table("identity", "Who this host is, and for which company it works.");
  File.Key("country_code", C.identity.country_code, "5: the country whose clearing house this is");
  File.Key("domain", C.identity.domain, "domain name; \"\": the machine's own. It chooses the environment");
  File.Key("computer", C.identity.computer, "computer name; \"\": the machine's own");
  File.Choice("force_environment", C.identity.force_environment, Environments,
              "\"\", \"DEV\", \"QA\" or \"PROD\"; only some domains heed it");
  File.Key("agent", C.identity.agent, "id of the user that the call log names; left out: none");
  File.Key("login_database_name", C.identity.login_database_name, "characters 2 to 6 may give the customer number");
  File.Key("common_database_name", C.identity.common_database_name, "characters 1 to 5 may give the customer number");
  File.Key("customer_key", C.identity.customer_key, "customer key for the activation");
  File.Key("customer_pin", C.identity.customer_pin, "PIN for the activation (digits), or ...");
  File.Key("customer_pin_file", C.identity.customer_pin_file, "... a file of the owner's alone that holds it");
  File.Key("company_name", C.identity.company_name, "registered company name");
  File.Key("display_request_editor", C.identity.display_request_editor, "show requests before they are sent");
  File.Key("display_response_editor", C.identity.display_response_editor, "show responses when they arrive");

  File.Table("files", "Where things are kept; relative names start at this file's directory.");
  File.Address("common_database", C.files.common_database,
               "\"sqlite:FILE\" or \"odbc:CONNECTION STRING\"; shared by the companies");
  File.Address("payroll_database", C.files.payroll_database, "the same, of this company alone");
  File.Key("key", C.files.key, "key of the cipher: without it the credentials are lost, so back it up");
  File.Key("secrets", C.files.secrets, "scrambled client secrets");
  File.Key("log", C.files.log, "host log");
  File.Key("log_megabytes", C.files.log_megabytes, "size at which a new log file is begun");
  File.Key("log_kept_files", C.files.log_kept_files, "older log files kept");

  File.Table("database", "Databases behind ODBC. Their passwords: \"oxsuper config set-secret\".");
  File.Key("login_timeout_seconds", C.database.login_timeout_seconds, "until the server lets us in");
  File.Key("query_timeout_seconds", C.database.query_timeout_seconds, "for one statement");

  File.Table("log", "The call log: every request and its answer, a row each in the payroll database.");
  File.Choice("masking", C.log.masking, Maskings,
              "kept out of it: \"off\", \"tokens\", or \"private\": also people's data");

  File.Table("http", "How the service is reached.");
  File.Key("ca_file", C.http.ca_file, "PEM file with the authorities to trust; \"\": the system's");
  File.Key("client_certificate", C.http.client_certificate, "PEM file to show to the service; \"\": none");
  File.Key("client_key", C.http.client_key, "its key, a file of the owner's alone; \"\": in the same file");
  File.Key("proxy", C.http.proxy, "\"http://host:port\" or \"https://host:port\"; \"\": none");
  File.Key("proxy_user", C.http.proxy_user, "the password: \"oxsuper config set-secret proxy\"");
  File.Key("proxy_ca_file", C.http.proxy_ca_file, "authorities to trust for an https proxy; \"\": as ca_file");
  File.Key("no_proxy", C.http.no_proxy, "hosts, domains, IP addresses and networks reached without the proxy");
  File.Key("connect_to", C.http.connect_to, "\"host:port\" = \"address:port\" to connect to instead");
  File.Key("connect_timeout_seconds", C.http.connect_timeout_seconds, "until the connection stands");
  File.Key("stall_timeout_seconds", C.http.stall_timeout_seconds, "without a byte in either direction");
  File.Key("total_timeout_seconds", C.http.total_timeout_seconds, "for a whole call");
  File.Key("max_response_megabytes", C.http.max_response_megabytes, "a longer answer is refused");

  File.Table("batch", "What a pay-run file has no column for.");
  File.Key("client_participant_number", C.batch.client_participant_number, "sent with the batch when not empty");
  File.Key("version", C.batch.version, "sent with the batch when not empty");
  File.Key("abn_type", C.batch.abn_type, "business identifier type of an ABN");
  File.Key("landline_type", C.batch.landline_type, "phone number type of a landline");
  File.Key("mobile_type", C.batch.mobile_type, "phone number type of a mobile");
  File.Key("gender", C.batch.gender, "sex code of the file = text to send; left out: the code itself");
  File.Key("default_funds", C.batch.default_funds, "USIs or ABNs of the employers' default funds");
  File.Key("location_id_as_context", C.batch.location_id_as_context, "send the location id as the employer's context");
  File.Key("country_upper_case", C.batch.country_upper_case, "send country codes in upper case");
}

class TReader {
 public:
  TReader(const std::string& FileName, const toml::table& Root)
      : FFileName(FileName), FDirectory(std::filesystem::absolute(FileName).parent_path()), FRoot(Root) {}

  void Table(std::string_view Name, std::string_view) {
    RefuseUnknownKeys();
    FTableName = Name;
    FTable = nullptr;
    FKnownKeys.clear();
    FTables.emplace(Name);
    if (const toml::node* Node = FRoot.get(Name)) {
      FTable = Node->as_table();
      if (!FTable) FailType(*Node, Name, "a table");
    }
  }

  void Key(std::string_view Name, std::string& Value, std::string_view) {
    if (const toml::node* Node = Find(Name)) Value = Text(*Node, Path(Name));
  }
  void Key(std::string_view Name, bool& Value, std::string_view) {
    if (const toml::node* Node = Find(Name)) {
      if (!Node->is_boolean()) FailType(*Node, Path(Name), "true or false");
      Value = Node->as_boolean()->get();
    }
  }
  void Key(std::string_view Name, std::uint8_t& Value, std::string_view) { Integer(Name, Value, 0, 255); }
  void Key(std::string_view Name, std::uint32_t& Value, std::string_view) { Integer(Name, Value, 1, 1024); }
  void Key(std::string_view Name, std::optional<std::int32_t>& Value, std::string_view) {
    std::int32_t Number = 0;
    if (Integer(Name, Number, 1, std::numeric_limits<std::int32_t>::max())) Value = Number;
  }
  void Key(std::string_view Name, std::chrono::seconds& Value, std::string_view) {
    std::int64_t Number = 0;
    if (Integer(Name, Number, 1, 86'400)) Value = std::chrono::seconds(Number);
  }
  void Key(std::string_view Name, std::filesystem::path& Value, std::string_view) {
    if (const toml::node* Node = Find(Name)) Value = Text(*Node, Path(Name));
    if (!Value.empty()) Value = (FDirectory / Value).lexically_normal();
  }
  void Address(std::string_view Name, std::string& Value, std::string_view Meaning) {
    Key(Name, Value, Meaning);
    Value = AddressFrom(FDirectory, Value);
  }
  void Key(std::string_view Name, std::vector<std::string>& Value, std::string_view) {
    const toml::node* Node = Find(Name);
    if (!Node) return;
    if (!Node->is_array()) FailType(*Node, Path(Name), "an array of strings");
    Value.clear();
    for (const toml::node& Element : *Node->as_array()) Value.push_back(Text(Element, "an element of " + Path(Name)));
  }
  void Key(std::string_view Name, std::map<std::string, std::string>& Value, std::string_view) {
    const toml::node* Node = Find(Name);
    if (!Node) return;
    if (!Node->is_table()) FailType(*Node, Path(Name), "a table of strings");
    Value.clear();
    for (const auto& [Member, Content] : *Node->as_table())
      Value.emplace(Member.str(), Text(Content, fmt::format("{}.{}", Path(Name), Member.str())));
  }
  void Choice(std::string_view Name, std::string& Value, std::span<const std::string_view> Choices, std::string_view) {
    const toml::node* Node = Find(Name);
    if (!Node) return;
    Value = Text(*Node, Path(Name));
    if (std::ranges::find(Choices, Value) == Choices.end())
      FailAt(FFileName, *Node, fmt::format("{} has to be one of \"{}\"", Path(Name), fmt::join(Choices, "\", \"")));
  }

  /// Raises for keys and tables that were never asked for.
  void Finish() {
    RefuseUnknownKeys();
    for (const auto& [Name, Node] : FRoot)
      if (!FTables.contains(Name.str()))
        FailAt(FFileName, Name,
               fmt::format("the key {} is unknown; known tables: {}", Name.str(), fmt::join(FTables, ", ")));
  }

 private:
  using TNames = std::set<std::string, std::less<>>;

  const toml::node* Find(std::string_view Name) {
    FKnownKeys.emplace(Name);
    return FTable ? FTable->get(Name) : nullptr;
  }
  std::string Path(std::string_view Name) const { return fmt::format("{}.{}", FTableName, Name); }

  std::string Text(const toml::node& Node, std::string_view Name) const {
    if (!Node.is_string()) FailType(Node, Name, "a string");
    return Node.as_string()->get();
  }
  template <class Number>
  bool Integer(std::string_view Name, Number& Value, std::int64_t Least, std::int64_t Most) {
    const toml::node* Node = Find(Name);
    if (!Node) return false;
    const std::string Expected = fmt::format("an integer from {} to {}", Least, Most);
    if (!Node->is_integer()) FailType(*Node, Path(Name), Expected);
    const std::int64_t Found = Node->as_integer()->get();
    if (Found < Least || Found > Most) FailAt(FFileName, *Node, fmt::format("{} has to be {}", Path(Name), Expected));
    Value = static_cast<Number>(Found);
    return true;
  }
  [[noreturn]] void FailType(const toml::node& Node, std::string_view Name, std::string_view Expected) const {
    FailAt(FFileName, Node, fmt::format("{} has to be {}, not {}", Name, Expected, KindOf(Node)));
  }
  void RefuseUnknownKeys() const {
    if (!FTable) return;
    for (const auto& [Name, Node] : *FTable)
      if (!FKnownKeys.contains(Name.str()))
        FailAt(FFileName, Name,
               fmt::format("the key {} is unknown; known here: {}", Path(Name.str()), fmt::join(FKnownKeys, ", ")));
  }

  const std::string& FFileName;
  std::filesystem::path FDirectory;
  const toml::table& FRoot;
  const toml::table* FTable = nullptr;
  std::string FTableName;
  TNames FTables;
  TNames FKnownKeys;
};

class TWriter {
 public:
  void Table(std::string_view Name, std::string_view Meaning) {
    FText += fmt::format("{}# {}\n[{}]\n", FText.empty() ? "" : "\n", Meaning, Name);
  }
  template <class Value>
  void Key(std::string_view Name, const Value& Content, std::string_view Meaning) {
    FText += fmt::format("{}  # {}\n", Assignment(Name, Content), Meaning);
  }
  void Address(std::string_view Name, const std::string& Content, std::string_view Meaning) {
    Key(Name, Content, Meaning);
  }
  void Choice(std::string_view Name, const std::string& Content, std::span<const std::string_view>,
              std::string_view Meaning) {
    Key(Name, Content, Meaning);
  }
  const std::string& Text() const { return FText; }

 private:
  template <class Value>
  static std::string Assignment(std::string_view Name, const Value& Content) {
    if constexpr (std::is_same_v<Value, std::optional<std::int32_t>>)
      return Content ? fmt::format("{} = {}", Name, *Content) : fmt::format("# {} = 1", Name);
    else
      return fmt::format("{} = {}", Name, Printed(Content));
  }
  static std::string Printed(const std::string& Value) { return QuotedTOML(Value); }
  static std::string Printed(const std::filesystem::path& Value) { return QuotedTOML(Value.string()); }
  static std::string Printed(bool Value) { return Value ? "true" : "false"; }
  static std::string Printed(std::uint8_t Value) { return std::to_string(Value); }
  static std::string Printed(std::uint32_t Value) { return std::to_string(Value); }
  static std::string Printed(std::chrono::seconds Value) { return std::to_string(Value.count()); }
  static std::string Printed(const std::vector<std::string>& Values) {
    std::vector<std::string> Pieces;
    for (const std::string& Value : Values) Pieces.push_back(QuotedTOML(Value));
    return fmt::format("[{}]", fmt::join(Pieces, ", "));
  }
  static std::string Printed(const std::map<std::string, std::string>& Values) {
    std::vector<std::string> Pieces;
    for (const auto& [Name, Value] : Values) Pieces.push_back(QuotedTOML(Name) + " = " + QuotedTOML(Value));
    return fmt::format("{{{}}}", fmt::join(Pieces, ", "));
  }

  std::string FText;
};

/// The adapter checks this as well, but only when it is first used.
void CheckProxy(const std::string& FileName, const THttpConfig& Config) try {
  const TProxy Proxy = ParseProxy(Config.proxy);
  static_cast<void>(TNoProxy(Config.no_proxy));
  if (!Proxy.User.empty() && !Config.proxy_user.empty())
    throw TBeamError("give the proxy's user either in http.proxy or in http.proxy_user, not both");
} catch (const TBeamError& Error) {
  throw TBeamError(FileName + ": " + Error.what());
}

}  // namespace

TReferenceConfig ReadConfig(const std::filesystem::path& FileName) {
  const std::string Name = FileName.string();
  const toml::table Root = ReadTOMLFile(Name, What);
  TReferenceConfig Config;
  TReader Reader(Name, Root);
  Describe(Reader, Config);
  Reader.Finish();
  if (!Config.identity.customer_pin.empty() && !Config.identity.customer_pin_file.empty())
    throw TBeamError(Name + ": give either identity.customer_pin or identity.customer_pin_file, not both");
  if (!Config.http.client_key.empty() && Config.http.client_certificate.empty())
    throw TBeamError(Name + ": http.client_key needs http.client_certificate");
  CheckProxy(Name, Config.http);
  return Config;
}

std::string ConfigText(const TReferenceConfig& Config) {
  TWriter Writer;
  Describe(Writer, Config);
  return Writer.Text();
}

void CreateConfigFile(const std::filesystem::path& FileName, const TReferenceConfig& Config) {
  CreatePrivateFile(FileName.string(), What, ConfigText(Config));
}

}  // namespace oxSuperAPI
