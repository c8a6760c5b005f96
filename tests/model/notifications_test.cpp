#include "../support/test_host.h"
#include "loss.h"
#include "oxSuperAPI/model/uBeamNotifications.h"

namespace oxSuperAPI {
namespace {

std::string Quoted(std::string_view Text) {
  std::string Result;
  AppendJSONString(Result, Text);
  return Result;
}

// The element of a list with this payload (JSON text).
std::string Element(const std::string& Type, const std::string& Payload) {
  return R"({"create_date":"2024-03-05","notificationId":"7","notification_type":")" + Type + R"(","payload":)" +
         Payload + R"(,"processId":"p1"})";
}

// Loads it twice, as an object and as the text of one, and hands out the second.
std::shared_ptr<TBeamNotification> Read(const std::string& Type, const std::string& Payload) {
  TFakeHost Host;
  TBeamNotifications List;
  List.LoadFromJsonObject(Document("[" + Element(Type, Payload) + "," + Element(Type, Quoted(Payload)) + "]"));
  const auto Plain = List.GetNotification(0), Result = List.GetNotification(1);
  EXPECT_EQ(Plain->Payload, Payload);
  EXPECT_EQ(Result->Payload, Quoted(Payload));
  EXPECT_EQ(Plain->Summary + Plain->StatusMessage + Plain->EventItem.ContextId + Plain->EventItem.MemberNumber,
            Result->Summary + Result->StatusMessage + Result->EventItem.ContextId + Result->EventItem.MemberNumber);
  return Result;
}

std::string Response(const std::string& Parameters) {
  return R"({"summary":"s","eventItem":{"contextId":"c","errorCode":"e","severityCode":"v","shortDescription":"sd",)"
         R"("detailedDescription":"dd"},"parameters":[)" +
         Parameters + "]}";
}

std::string Parameter(const std::string& Name, const std::string& Value) {
  return R"({"name":")" + Name + R"(","value":)" + Value + "}";
}

TEST(Notifications, TheTypeDecidesWhatIsReadFromThePayload) {
  const std::string Everything =
      R"({"statusMessage":"Processed","summary":"s","exceptionType":"x","message":"m","eventItem":{"contextId":"c",)"
      R"("errorCode":"e","severityCode":"v","shortDescription":"sd","detailedDescription":"dd"}})";
  // Type; status, summary, context and type of the exception.
  const std::pair<std::string, const char*> Cases[] = {{"STATUS", "Processed,,,"},
                                                       {"CONTRIBUTION_RESPONSE", ",s,c,"},
                                                       {"MEMBER_RESPONSE", ",s,c,"},
                                                       {"EXCEPTION", ",,,x"},
                                                       {"OTHER", ",,,"},
                                                       {"status", ",,,"}};
  for (const auto& [Type, Found] : Cases) {
    SCOPED_TRACE(Type);
    const auto One = Read(Type, Everything);
    EXPECT_EQ(One->Createdate + One->NotificationType + One->ProcessId, "2024-03-05" + Type + "p1");
    EXPECT_EQ(One->NotificationId, 7);
    EXPECT_EQ(
        One->StatusMessage + "," + One->Summary + "," + One->EventItem.ContextId + "," + One->Exception.ExceptionType,
        Found);
    EXPECT_EQ(
        One->EventItem.Summary + One->EventItem.MemberContextId + One->Exception.Channel + One->Exception.ProcessId,
        "");
  }
}

TEST(Notifications, EachParameterFillsItsFieldByItsExactName) {
  // clang-format off
  const char* const Names[] = {
      "SuperannuationFundDetails.MemberClient.Identifier", "Identifier", "Scheme", "ContextID", "EmployersABNDimension",
      "ReportPartyTypeDimension", "SuperFundUniqueSuperannuationIdentifierDimension", "SuperFundABNDimension",
      "elementname", "RefundPaymentReferenceNumber", "elementvalue"};
  // clang-format on
  std::string All;
  for (int Value = 0; const char* Name : Names) All += Parameter(Name, '"' + std::to_string(++Value) + '"') + ",";
  const auto Item = Read("MEMBER_RESPONSE", Response(All + R"({"name":"contextid","value":"no"},null,)"
                                                           R"({"name":"Scheme ","value":5},{"value":"no"})"))
                        ->EventItem;
  const TLines Fields = {
      Item.MemberNumber,    Item.Identifier, Item.Scheme,  Item.ContextId,   Item.EmployersABN,
      Item.ReportPartyType, Item.FundUSI,    Item.FundABN, Item.ElementName, Item.RefundPaymentReferenceNumber,
      Item.ElementValue};
  EXPECT_EQ(Fields, (TLines{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"}));
  EXPECT_EQ(Item.ErrorCode + Item.SeverityCode + Item.ShortDescription + Item.DetailedDescription, "evsddd");
}

TEST(Notifications, ARefundThatIsNoNumberIsIgnored) {
  const std::pair<const char*, double> Cases[] = {{R"("12.50")", 12.5}, {"12.50", 12.5},    {R"(" 3 ")", 3},
                                                  {R"("-1e1")", -10},   {R"("n/a")", 0.25}, {R"("")", 0.25},
                                                  {"null", 0.25},       {R"("inf")", 0.25}, {R"("nan")", 0.25},
                                                  {R"("1,5")", 0.25},   {R"("$5")", 0.25}};
  for (const auto& [Value, Expected] : Cases)
    for (const char* Name : {"RefundAmount", "RefundPaymentTotal"}) {
      const auto Item =
          Read("MEMBER_RESPONSE", Response(Parameter(Name, R"("0.25")") + "," + Parameter(Name, Value)))->EventItem;
      EXPECT_EQ(Item.RefundAmount + Item.RefundPaymentTotal, Expected) << Name << Value;
      EXPECT_EQ(Name == std::string_view("RefundAmount") ? Item.RefundPaymentTotal : Item.RefundAmount, 0) << Name;
    }
}

TEST(Notifications, ParametersOfTheEventItemComeBeforeThoseBesideIt) {
  const std::string Item = R"("eventItem":{"contextId":"c","errorCode":"","severityCode":"","shortDescription":"",)"
                           R"("detailedDescription":"")",
                    Inside = R"("parameters":[{"name":"Scheme","value":"inside"}])",
                    Beside = R"("parameters":[{"name":"Scheme","value":"beside"}])";
  const std::pair<std::string, const char*> Cases[] = {
      {"{" + Beside + R"(,"summary":"s",)" + Item + "," + Inside + "}}", "inside"},
      {"{" + Beside + R"(,"summary":"s",)" + Item + R"(,"parameters":"none"}})", ""},
      {R"({"summary":"s",)" + Item + "},\"body\":{" + Beside + "}}", "beside"},
      {R"({"body":{" Summary ":"s"},)" + Beside + "}", "beside"},
      {R"({"summary":"s",)" + Item + "}}", ""},
      {R"({"summary":"s"})", ""},
  };
  for (const auto& [Payload, Scheme] : Cases) {
    const auto Notification = Read("CONTRIBUTION_RESPONSE", Payload);
    EXPECT_EQ(Notification->EventItem.Scheme, Scheme) << Payload;
    EXPECT_EQ(Notification->Summary, "s");
  }
}

TEST(Notifications, AnExceptionBringsThePaymentToMake) {
  const auto Read1 = Read("EXCEPTION", R"({"exceptionType":"PAYMENT","detail":{"message":"m"},"body":{"properties":{)"
                                       R"("Amount":"1","BSB":"2","Account":"3","Account Name":"4","RefNo":"5",)"
                                       "\"BPAY\xC2\xAE Biller Code\":\"6\",\"Reference\":7,\"account\":\"no\"}}}");
  const auto& Properties = Read1->Exception.Properties;
  EXPECT_EQ(Read1->Exception.ExceptionType + Read1->Exception.ExceptionMessage, "PAYMENTm");
  EXPECT_EQ(Properties.Amount + Properties.BSB + Properties.account + Properties.accountName + Properties.RefNo +
                Properties.BPAYBillerCode + Properties.Reference,
            "1234567");
  EXPECT_EQ(Read("EXCEPTION", R"({"exceptionType":"x","message":null,"properties":[{"Amount":"1"}]})")
                ->Exception.Properties.Amount,
            "");
}

TEST(Notifications, AMissingMemberStopsTheLoadAndThoseBeforeStay) {
  const std::string Full = Response("");
  const auto Lacking = [&](const std::string& Member) { return ReplaceFirst(Full, "\"" + Member + "\"", "\"-\""); };
  // The element, and what it misses: "" for nothing.
  // clang-format off
  const std::pair<std::string, const char*> Cases[] = {
      {R"({"notification_type":"OTHER","processId":"p"})", "payload"},
      {R"({"notification_type":"OTHER","payload":"x"})", "processId"}, {R"({"payload":null,"processId":null})", ""},
      {"null", "payload"}, {"5", "notifications"}, {Element("MEMBER_RESPONSE", Lacking("summary")), "summary"},
      {Element("MEMBER_RESPONSE", Lacking("contextId")), "contextId"},
      {Element("MEMBER_RESPONSE", Lacking("errorCode")), "errorCode"},
      {Element("CONTRIBUTION_RESPONSE", Lacking("severityCode")), "severityCode"},
      {Element("CONTRIBUTION_RESPONSE", Lacking("shortDescription")), "shortDescription"},
      {Element("CONTRIBUTION_RESPONSE", Lacking("detailedDescription")), "detailedDescription"},
      {Element("MEMBER_RESPONSE", Lacking("eventItem")), ""},
      {Element("MEMBER_RESPONSE", ReplaceFirst(Full, "\"c\"", "null")), ""},
      {Element("MEMBER_RESPONSE", Response("1")), "parameters"},
      {Element("EXCEPTION", R"({"message":"m"})"), "exceptionType"},
      {Element("EXCEPTION", R"({"exceptionType":"x"})"), "message"},
      {Element("EXCEPTION", R"({"exceptionType":null,"message":null})"), ""}, {Element("STATUS", "{}"), ""},
      {Element("EXCEPTION", R"("no object")"), ""}, {Element("MEMBER_RESPONSE", "[]"), ""},
      {Element("MEMBER_RESPONSE", R"("{\"summary\":")"), ""}};
  // clang-format on
  for (const auto& [Json, Missing] : Cases) {
    TFakeHost Host;
    TBeamNotifications List;
    const TJSONValue Both = Document("[" + Element("OTHER", "1") + "," + Json + "]");
    const std::string Error = ErrorOf([&] { List.LoadFromJsonObject(Both); });
    const bool Fails = *Missing != '\0';
    EXPECT_NE(Error.find(Fails ? Missing : "no error"), std::string::npos) << Json << Error;
    EXPECT_EQ(List.GetNotificationCount(), Fails ? 1u : 2u) << Json;
  }
}

TEST(Notifications, APayloadKeepsItsJsonTextAndItsFirstProcessIdIsFoundAtAnyDepth) {
  const std::tuple<std::string, const char*, const char*> Cases[] = {
      {R"({"processId":"own","payload":{"processId":"inner"}})", R"({"processId":"inner"})", "own"},
      {R"({"payload":{"processId":"inner"},"processId":"own"})", R"({"processId":"inner"})", "inner"},
      {R"({"payload":"{\"processId\":\"quoted\"}","PROCESSID":12})", R"("{\"processId\":\"quoted\"}")", "12"},
      {R"({"payload":null,"processId":"p"})", "null", "p"},
      {R"({"payload":1.50,"processId":null})", "1.50", ""},
  };
  for (const auto& [Json, Payload, ProcessId] : Cases) {
    TBeamNotifications List;
    List.LoadFromJsonObject(Document("[" + Json + "]"));
    EXPECT_EQ(List.GetNotification(0)->Payload, Payload);
    EXPECT_EQ(List.GetNotification(0)->ProcessId, ProcessId) << Json;
  }
}

TEST(Notifications, OneReadOnItsOwnHasAFlatForm) {
  const std::string Flat =
      R"(,"eventItem":{"contextId":"c","severityCode":"v","errorCode":"e","shortDescription":"sd",)"
      R"("detailedDescription":"dd"},"parameters":[{"name":"Scheme","value":"x"},null]})";
  const std::tuple<std::string, const char*, const char*> Cases[] = {
      // payload and what was read from it
      {R"({"payload":{"statusMessage":"m","summary":"s","eventItem":{"contextId":"no"}})" + Flat, "", "m,s,c,x"},
      {R"({"payload":"{\"statusMessage\":\"m\"}")" + Flat, R"({"statusMessage":"m"})", ",,c,x"},
      {R"({"payload":null)" + Flat, "", ",,c,x"},
      {R"({"other":1)" + Flat, "", ",,,"},
      {R"({"payload":"p"})", "p", ",,,"},
  };
  for (const auto& [Json, Payload, Read] : Cases) {
    const auto One = Loaded<TBeamNotification>(Json);
    EXPECT_EQ(One.Payload, Payload) << Json;
    EXPECT_EQ(One.StatusMessage + "," + One.Summary + "," + One.EventItem.ContextId + "," + One.EventItem.Scheme, Read);
  }
  TBeamNotification One;
  EXPECT_THROW(Load(One, R"({"payload":"p","parameters":["x"]})"), TBeamTypeError);
}

TEST(Notifications, OnlyTheHeaderIsWrittenAndAListIsABareArray) {
  const std::string Header =
      R"({"create_date":"d","notificationId":"7","notification_type":"t","payload":"{\"a\":1}","processId":"p"})";
  ExpectLoss<TBeamNotification>(Header, {}, {});
  TBeamNotifications List;
  EXPECT_EQ(Written(List), "[]");
  for (const char* Text : {"{}", "null", R"({"0":{"payload":"p"}})"}) List.LoadFromJsonObject(Document(Text));
  List.LoadFromJsonObject(nullptr);
  List.AddNotification(nullptr);
  auto One = std::make_shared<TBeamNotification>();
  One->Summary = One->StatusMessage = One->EventItem.ContextId = One->Exception.ExceptionType = "not written";
  One->SetOtherProperties("not", "written");
  List.AddNotification(One);
  EXPECT_EQ(Written(List), R"([{"notificationId":"0"}])");
  EXPECT_EQ(List.GetNotification(0), One);
  EXPECT_FALSE(List.GetNotification(-1) || List.GetNotification(1));
  // A list keeps the payload's JSON text, so that writing quotes it a second time.
  List = TBeamNotifications();
  List.LoadFromJsonObject(Document("[" + Header + "]"));
  EXPECT_EQ(List.GetNotification(0)->Payload, R"("{\"a\":1}")");
  EXPECT_NE(Written(List).find(R"("payload":"\"{\\\"a\\\":1}\"")"), std::string::npos);
}

}  // namespace
}  // namespace oxSuperAPI
