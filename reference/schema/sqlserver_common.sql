-- The common database on SQL Server 2016 and later, for "oxsuper db init" and for the vendor's
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
