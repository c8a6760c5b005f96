-- The payroll database of one company on SQL Server 2016 and later, for "oxsuper db init" and for the vendor's
-- tools. What exists is left as it is, so that it can be run again; "oxsuper db check" compares.

-- Enciphered values are looked up byte by byte, hence the binary collation. cUUId is spelt as the library's statement
-- spells it: where the database's own collation is case-sensitive, so are names.
if object_id('dbo._iptblBeamSuperCustomerIDs', 'U') is null
create table dbo._iptblBeamSuperCustomerIDs (
  cUCID nvarchar(200) collate Latin1_General_BIN2 not null,
  cEnvironment nvarchar(100) collate Latin1_General_BIN2 not null,
  cUUId nvarchar(400) null,
  cClientID nvarchar(400) null,
  cClientSecret nvarchar(1000) null,
  cCustomerNumber nvarchar(200) null,
  cPIN nvarchar(200) null,
  cCompanyName nvarchar(1000) null,
  cAcknowledgementToken nvarchar(max) null,
  dDateLastIssued datetime2(3) null,
  constraint pk_iptblBeamSuperCustomerIDs primary key (cUCID, cEnvironment)
);
GO

-- dLogged is filled by the database: local time, as all date-times here.
if object_id('dbo._iptblBeamSuperLog', 'U') is null
create table dbo._iptblBeamSuperLog (
  idBeamSuperLog int identity(1, 1) not null constraint pk_iptblBeamSuperLog primary key,
  cSource nvarchar(100) null,
  cURL nvarchar(max) null,
  cMethod nvarchar(50) null,
  iAgentID int null,
  cRequestHeader nvarchar(max) null,
  cRequestBody nvarchar(max) null,
  cResponse nvarchar(max) null,
  cLogDetails nvarchar(max) null,
  cStatus nvarchar(3) null,
  dLogged datetime2(3) not null constraint df_iptblBeamSuperLog_dLogged default (sysdatetime())
);
GO

-- The host's own tables; a database of a payroll application has Entities already.
if object_id('dbo.Entities', 'U') is null
create table dbo.Entities (
  idEntity int identity(1, 1) not null constraint pk_Entities primary key,
  cClientNumber nvarchar(50) null,
  cSTPGatewayUsername nvarchar(100) null
);
GO

if object_id('dbo.HostSettings', 'U') is null
create table dbo.HostSettings (
  cName nvarchar(100) not null constraint pk_HostSettings primary key,
  cValue nvarchar(max) not null
);
GO
