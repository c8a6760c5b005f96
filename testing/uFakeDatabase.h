#pragma once

#include <cstddef>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "oxSuperAPI/host/uHostDatabase.h"
#include "oxSuperAPI/testing/uFakeTable.h"

namespace oxSuperAPI {

/// Tables in memory that run the select, update, insert and "if exists" statements of the library as they stand.
/// A column or table that does not exist, a parameter without a value and one that the statement does not have raise
/// TBeamError; a statement that fails changes nothing.
class TFakeDatabase {
 public:
  /// The reference holds until the table is dropped.
  TFakeTable& AddTable(std::string Name, std::vector<TFakeColumn> Columns, std::vector<std::string> UniqueKey = {});
  /// Later statements that name it are refused.
  void DropTable(std::string_view Name);
  /// `Name` with or without "dbo."; raises TBeamError "Invalid object name ..." when there is none.
  TFakeTable& Table(std::string_view Name);

  /// What a select found. There is no next row to go to, so the first one is enough.
  struct TSelection {
    /// The table stays the database's; the row is a copy. @{
    TFakeTable* pTable = nullptr;
    std::vector<std::size_t> Columns;  ///< positions of the selected columns
    std::optional<TFakeRow> FirstRow;
    /// @}
  };
  /// Run one statement; raise as said above. @{
  TSelection Select(const TDBStatement& Statement);
  void Execute(const TDBStatement& Statement);
  /// @}

 private:
  std::list<TFakeTable> FTables;
};

}  // namespace oxSuperAPI
