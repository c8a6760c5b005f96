-- The common database on SQL Server. Enciphered values are looked up byte by byte, hence the binary collation.
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
