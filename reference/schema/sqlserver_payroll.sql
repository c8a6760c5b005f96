-- The payroll database of one company on SQL Server. Enciphered values are looked up byte by byte, hence the binary collation.
if object_id('dbo._iptblBeamSuperCustomerIDs') is null
create table dbo._iptblBeamSuperCustomerIDs (
  cUCID nvarchar(200) collate Latin1_General_BIN2 not null,
  cEnvironment nvarchar(100) collate Latin1_General_BIN2 not null,
  cUUID nvarchar(400) null,
  cClientID nvarchar(400) null,
  cClientSecret nvarchar(1000) null,
  cCustomerNumber nvarchar(200) null,
  cPIN nvarchar(200) null,
  cCompanyName nvarchar(1000) null,
  cAcknowledgementToken nvarchar(max) null,
  dDateLastIssued datetime2(3) null,
  constraint pk_iptblBeamSuperCustomerIDs primary key (cUCID, cEnvironment)
);

-- dLogged is filled by the database: local time, as all date-times here.
if object_id('dbo._iptblBeamSuperLog') is null
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

if object_id('dbo.Entities') is null
create table dbo.Entities (
  idEntity int identity(1, 1) not null constraint pk_Entities primary key,
  cClientNumber nvarchar(50) null,
  cSTPGatewayUsername nvarchar(100) null
);

if object_id('dbo.HostSettings') is null
create table dbo.HostSettings (
  cName nvarchar(100) not null constraint pk_HostSettings primary key,
  cValue nvarchar(max) not null
);
