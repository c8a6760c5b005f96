-- The common database on SQLite. Every statement can be run again on a database that has the table.
create table if not exists _iptblBeamSuperCustomerIDs (
  cUCID text not null,
  cEnvironment text not null,
  cUUID text,
  cClientID text,
  cClientSecret text,
  cCustomerNumber text,
  cPIN text,
  cCompanyName text,
  cAcknowledgementToken text,
  dDateLastIssued text,
  primary key (cUCID, cEnvironment)
);
