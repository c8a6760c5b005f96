#pragma once

#include <string_view>

namespace oxSuperAPI::tests {

// The statement by which credentials are saved, with its runs of blanks: 741 characters.
inline constexpr std::string_view SaveStatement =
    "if exists (select * from dbo._iptblBeamSuperCustomerIDs where cUCID = :UCID and cEnvironment = "
    ":Env)  update dbo._iptblBeamSuperCustomerIDs      set cClientID = :ClientID, cClientSecret = "
    ":ClientSecret, cUUId = :UUID, cCustomerNumber = :CustomerNumber, cPIN = :PIN,          cCompanyName "
    "= :CompanyName, cAcknowledgementToken = :Token, cEnvironment = :Environment, dDateLastIssued = "
    ":DateLastIssued else   insert into _iptblBeamSuperCustomerIDs (cUCID, cClientID, cClientSecret, "
    "cUUId, cCustomerNumber, cPIN,              cCompanyName, cAcknowledgementToken, cEnvironment, "
    "dDateLastIssued)     values (:iUCID, :iClientID, :iClientSecret, :iUUID, :iCustomerNumber, :iPIN,   "
    "            :iCompanyName, :iToken, :iEnvironment, :iDateLastIssued)";

}  // namespace oxSuperAPI::tests
