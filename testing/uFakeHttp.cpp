#include "oxSuperAPI/testing/uFakeHttp.h"

#include <algorithm>

namespace oxSuperAPI {

bool TFakeRequest::HasHeader(std::string_view Line) const {
  return std::find(Headers.begin(), Headers.end(), Line) != Headers.end();
}

void TFakeHTTP::Answer(TFakeAnswer Next) {
  FQueue.push_back(std::move(Next));
}
void TFakeHTTP::Answer(std::int32_t Status, std::string Body) {
  Answer(TFakeAnswer{.Status = Status, .Body = std::move(Body)});
}

void TFakeHTTP::AnswerURL(std::string Part, TFakeAnswer Always) {
  FRules.emplace_back(std::move(Part), std::move(Always));
}
void TFakeHTTP::AnswerURL(std::string Part, std::int32_t Status, std::string Body) {
  AnswerURL(std::move(Part), TFakeAnswer{.Status = Status, .Body = std::move(Body)});
}

std::size_t TFakeHTTP::CountOf(std::string_view Part) const {
  const auto Contains = [&](const TFakeRequest& Request) { return Request.URL.find(Part) != std::string::npos; };
  return static_cast<std::size_t>(std::count_if(Requests.begin(), Requests.end(), Contains));
}

const TFakeRequest& TFakeHTTP::LastRequest() const {
  if (Requests.empty()) throw TBeamError("No request has reached the fake HTTP client");
  return Requests.back();
}

void TFakeHTTP::Clear() {
  Faults.Clear();
  Requests.clear();
  DefaultAnswer.reset();
  FQueue.clear();
  FRules.clear();
}

std::int32_t TFakeHTTP::httpNetGet(const std::string& URL, const TStringList& Headers, TStringList& LogDetails,
                                   TStringList& Response) {
  return Run("httpNetGet", {"Get", URL, {Headers.begin(), Headers.end()}, ""}, LogDetails, Response);
}

std::int32_t TFakeHTTP::httpNetPost(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                                    TStringList& LogDetails, TStringList& Response) {
  return Run("httpNetPost", {"Post", URL, {Headers.begin(), Headers.end()}, Body.Text()}, LogDetails, Response);
}

std::int32_t TFakeHTTP::httpNetPut(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                                   TStringList& LogDetails, TStringList& Response) {
  return Run("httpNetPut", {"Put", URL, {Headers.begin(), Headers.end()}, Body.Text()}, LogDetails, Response);
}

std::int32_t TFakeHTTP::Run(std::string_view Operation, TFakeRequest Request, TStringList& LogDetails,
                            TStringList& Response) {
  Requests.push_back(Request);
  Faults.Check(Operation);
  const TFakeAnswer Answer = NextAnswer(Request);  // a copy: During may send further requests and add answers
  for (const std::string& Line : Answer.LogDetails) LogDetails.Add(Line);
  if (Answer.During) Answer.During(Request);
  if (Answer.Fault) Answer.Fault->Raise();
  Response.SetText(Answer.Body);
  return Answer.Status;
}

TFakeAnswer TFakeHTTP::NextAnswer(const TFakeRequest& Request) {
  for (auto Rule = FRules.rbegin(); Rule != FRules.rend(); ++Rule)
    if (Request.URL.find(Rule->first) != std::string::npos) return Rule->second;
  if (!FQueue.empty()) {
    TFakeAnswer Answer = std::move(FQueue.front());
    FQueue.pop_front();
    return Answer;
  }
  if (DefaultAnswer) return *DefaultAnswer;
  throw TBeamError("The fake HTTP client has no answer for " + Request.Method + " " + Request.URL);
}

}  // namespace oxSuperAPI
