#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "oxSuperAPI/host/uHostDatabase.h"

namespace oxSuperAPI {

/// One side of a comparison, or a value to store.
struct TSQLColumn {
  std::string Name;
};
struct TSQLParameter {
  std::string Name;
};
using TSQLOperand = std::variant<TSQLColumn, TSQLParameter, TDBValue>;

struct TSQLCondition {
  TSQLOperand Left;
  TSQLOperand Right;
};

/// Conditions that must all hold; every row when there is none.
using TSQLWhere = std::vector<TSQLCondition>;

struct TSQLSelect {
  std::vector<std::string> Columns;  ///< empty for "*"
  std::string Table;
  TSQLWhere Where;
};

struct TSQLUpdate {
  std::string Table;
  std::vector<std::pair<std::string, TSQLOperand>> Assignments;
  TSQLWhere Where;
};

struct TSQLInsert {
  std::string Table;
  std::vector<std::string> Columns;
  std::vector<TSQLOperand> Values;
};

using TSQLChange = std::variant<TSQLUpdate, TSQLInsert>;

/// if exists (select ...) change [else change]
struct TSQLIfExists {
  TSQLSelect Probe;
  TSQLChange Then;
  std::optional<TSQLChange> Else;
};

using TSQLStatement = std::variant<TSQLSelect, TSQLUpdate, TSQLInsert, TSQLIfExists>;

struct TParsedSQL {
  TSQLStatement Statement;
  std::vector<std::string> Parameters;  ///< every parameter that the text has, once, in order
};

/// Reads the dialect of the fake database: select, update and insert of one table, "if exists ... else ...", and-ed
/// equalities, parameters, integers and quoted texts. Table names come without "dbo.". Raises TBeamError, naming the
/// place, when the text is anything else.
TParsedSQL ParseSQL(std::string_view SQL);

}  // namespace oxSuperAPI
