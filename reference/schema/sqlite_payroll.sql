-- The payroll database of one company on SQLite. Every statement can be run again on a database that has the table.
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

-- dLogged is filled by the database: local time, as all date-times here.
create table if not exists _iptblBeamSuperLog (
  idBeamSuperLog integer primary key autoincrement,
  cSource text,
  cURL text,
  cMethod text,
  iAgentID integer,
  cRequestHeader text,
  cRequestBody text,
  cResponse text,
  cLogDetails text,
  cStatus text,
  dLogged text not null default (strftime('%Y-%m-%d %H:%M:%f', 'now', 'localtime'))
);

create table if not exists Entities (
  idEntity integer primary key,
  cClientNumber text,
  cSTPGatewayUsername text
);

create table if not exists HostSettings (
  cName text not null primary key,
  cValue text not null
);
