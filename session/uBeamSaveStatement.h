#pragma once

#include <string_view>

namespace oxSuperAPI {

/// Writes one customer's row. Handed to the host exactly so, runs of blanks included: hosts and their servers know the
/// statement by its text. NEVER let a formatter touch it; a test holds its digest.
///
/// Its update has no where clause of its own: where a row exists, it rewrites every row of the table. A host whose
/// table holds more than one customer has to narrow it (docs/host.md).
// clang-format off
inline constexpr std::string_view SaveCredentialsSQL =
    "if exists (select * from dbo._iptblBeamSuperCustomerIDs where cUCID = :UCID and cEnvironment = :Env)"
    "  update dbo._iptblBeamSuperCustomerIDs"
    "      set cClientID = :ClientID, cClientSecret = :ClientSecret, cUUId = :UUID, cCustomerNumber = :CustomerNumber,"
    " cPIN = :PIN,          cCompanyName = :CompanyName, cAcknowledgementToken = :Token,"
    " cEnvironment = :Environment, dDateLastIssued = :DateLastIssued"
    " else   insert into _iptblBeamSuperCustomerIDs (cUCID, cClientID, cClientSecret, cUUId,"
    " cCustomerNumber, cPIN,              cCompanyName, cAcknowledgementToken, cEnvironment, dDateLastIssued)"
    "     values (:iUCID, :iClientID, :iClientSecret, :iUUID,"
    " :iCustomerNumber, :iPIN,               :iCompanyName, :iToken, :iEnvironment, :iDateLastIssued)";
// clang-format on

}  // namespace oxSuperAPI
