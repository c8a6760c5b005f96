#include "oxSuperAPI/reference/settings_database.h"

namespace oxSuperAPI {

std::string TDatabaseSettings::GetCurrentSystemValue(const std::string& Name, const std::string& Default, bool) {
  const auto Query = FConnection.Open({"select cValue from HostSettings where cName = :Name", {{"Name", Name}}});
  return Query->Eof() ? Default : Query->FieldAsString("cValue");
}

void TDatabaseSettings::SetCurrentSystemValue(const std::string& Name, const std::string& Value, bool) {
  FConnection.Execute(
      {"if exists (select * from HostSettings where cName = :Name) "
       "update HostSettings set cValue = :Value where cName = :Name "
       "else insert into HostSettings (cName, cValue) values (:Name, :Value)",
       {{"Name", Name}, {"Value", Value}}});
}

}  // namespace oxSuperAPI
