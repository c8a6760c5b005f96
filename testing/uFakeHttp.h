#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "oxSuperAPI/host/uHostHttp.h"
#include "oxSuperAPI/testing/uFault.h"

namespace oxSuperAPI {

/// A request as it reached the fake client.
struct TFakeRequest {
  std::string Method;  ///< "Get", "Post" or "Put"
  /// As the client was given it.
  std::string URL;
  std::vector<std::string> Headers;  ///< one "name: value" an entry, in order
  std::string Body;                  ///< the body lines with CR LF between them; "" for Get

  /// Whether an entry is exactly this line.
  bool HasHeader(std::string_view Line) const;
};

/// What the fake client does with one request, in the order of the fields.
struct TFakeAnswer {
  /// The HTTP status.
  std::int32_t Status = 200;
  std::string Body = {};                                      ///< becomes the only line of the response; "" gives none
  std::vector<std::string> LogDetails = {};                   ///< diagnostic lines to add
  std::function<void(const TFakeRequest&)> During = nullptr;  ///< run while the request is "under way"
  std::optional<TFault> Fault = {};                           ///< raised instead of answering
};

/// An HTTP client that sends nothing: it keeps every request and gives scripted answers. An answer for an address comes
/// first, then the next of the queue, then the default answer; a request that finds none of them raises TBeamError
/// naming method and URL.
class TFakeHTTP : public THTTPHelper {
 public:
  /// Armed by a test; an armed operation raises instead of working.
  TFaults Faults{"httpNetGet", "httpNetPost", "httpNetPut"};
  /// Every request in the order of arrival, those that ended in a fault included.
  std::vector<TFakeRequest> Requests;
  /// For requests that nothing else answers; none at first.
  std::optional<TFakeAnswer> DefaultAnswer;

  /// Queues an answer for the next request that no address rule takes. @{
  void Answer(TFakeAnswer Next);
  void Answer(std::int32_t Status, std::string Body = {});
  /// @}

  /// Answers every request whose URL contains `Part`. The rule that was added last wins. @{
  void AnswerURL(std::string Part, TFakeAnswer Always);
  void AnswerURL(std::string Part, std::int32_t Status, std::string Body);
  /// @}

  /// Answers still in the queue.
  std::size_t Unused() const { return FQueue.size(); }
  /// Requests whose URL contains `Part`.
  std::size_t CountOf(std::string_view Part) const;
  /// The last request; raises TBeamError when there was none.
  const TFakeRequest& LastRequest() const;
  /// Forgets requests, answers, rules and faults.
  void Clear();

  std::int32_t httpNetGet(const std::string& URL, const TStringList& Headers, TStringList& LogDetails,
                          TStringList& Response) override;
  std::int32_t httpNetPost(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                           TStringList& LogDetails, TStringList& Response) override;
  std::int32_t httpNetPut(const std::string& URL, const TStringList& Headers, const TStringList& Body,
                          TStringList& LogDetails, TStringList& Response) override;

 private:
  std::int32_t Run(std::string_view Operation, TFakeRequest Request, TStringList& LogDetails, TStringList& Response);
  TFakeAnswer NextAnswer(const TFakeRequest& Request);

  std::deque<TFakeAnswer> FQueue;
  std::vector<std::pair<std::string, TFakeAnswer>> FRules;
};

}  // namespace oxSuperAPI
