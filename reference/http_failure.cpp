#include "oxSuperAPI/reference/http_failure.h"

namespace oxSuperAPI {

namespace {

std::string CauseOf(const TFailedCall& Call) {
  return Call.Details[0] != '\0' ? Call.Details : curl_easy_strerror(Call.Code);
}

/// Why no connection through the proxy came about.
std::string ExplainProxy(const TFailedCall& Call) {
  const std::string Proxy = "the proxy " + Call.Proxy->Name;
  const long Status = Get<long>(Call.Handle, CURLINFO_HTTP_CONNECTCODE);
  const std::string Answer = " (its status " + std::to_string(Status) + ")";
  switch (Status) {
    case 0:
    case 200:  // and then something went wrong
      break;
    case 407:
      return Proxy + " wants another user name or password" + Answer +
             ". Check http.proxy_user and the password for it";
    case 403:
    case 405:
      return Proxy + " does not allow connections to this host" + Answer + ". Ask who runs it";
    case 502:
    case 503:
    case 504:
      return Proxy + " cannot reach this host" + Answer;
    default:
      return Proxy + " refuses the connection" + Answer;
  }
  switch (Call.Code) {
    case CURLE_COULDNT_RESOLVE_PROXY:
      return "the name of " + Proxy + " is not known. Check http.proxy and the network";
    case CURLE_COULDNT_CONNECT:
      return "no connection to " + Proxy + " (" + CauseOf(Call) + ")";
    case CURLE_OPERATION_TIMEDOUT:
      return "no connection in time through " + Proxy;
    case CURLE_SSL_CONNECT_ERROR:
      return "the TLS handshake with " + Proxy + " failed (" + CauseOf(Call) + ")";
    case CURLE_SSL_CACERT_BADFILE:
      return "the file of trusted authorities for " + Proxy + " cannot be read";
    default:
      return Proxy + " gave no understandable answer (" + CauseOf(Call) + ")";
  }
}

}  // namespace

std::string Explain(const TFailedCall& Call) {
  if (const std::string Problem = Call.TLS.CertificateProblem(); !Problem.empty()) return Problem;
  if (Call.Code == CURLE_SSL_CERTPROBLEM)
    return "the client certificate or its key cannot be used (" + CauseOf(Call) + ")";
  if (Call.Proxy && Call.NothingSent && !Call.TLS.ReachedServer()) return ExplainProxy(Call);
  if (!Call.TLS.RefusedClient().empty())
    return "the server refused this side's certificate, or the lack of one (" + Call.TLS.RefusedClient() +
           "). Check http.client_certificate";
  switch (Call.Code) {
    case CURLE_PEER_FAILED_VERIFICATION:
      return "the certificate of the server is for another name";
    case CURLE_SSL_CACERT_BADFILE:
      return "the file of trusted authorities cannot be read";
    case CURLE_COULDNT_RESOLVE_HOST:
      return "the host name is not known. Check the name and the network";
    case CURLE_COULDNT_CONNECT:
      return "no connection (" + CauseOf(Call) + ")";
    case CURLE_SSL_CONNECT_ERROR:
      return "the TLS handshake failed (" + CauseOf(Call) + ")";
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
      return "the connection broke (" + CauseOf(Call) + ")";
    case CURLE_OPERATION_TIMEDOUT:
      return Call.NothingSent ? "no connection in time" : "no complete answer in time";
    case CURLE_PARTIAL_FILE:
      return "the answer was cut short";
    case CURLE_GOT_NOTHING:
      return "the server closed the connection without an answer";
    default:
      return CauseOf(Call);
  }
}

std::string Diagnose(const TFailedCall& Call) {
  const auto Milliseconds = [&](CURLINFO Info) {
    return std::to_string(Get<curl_off_t>(Call.Handle, Info) / 1000) + " ms";
  };
  const char* const Peer = Get<char*>(Call.Handle, CURLINFO_PRIMARY_IP);
  std::string Result = "Transport: curl " + std::to_string(Call.Code) + " (" + curl_easy_strerror(Call.Code) + ")";
  if (Call.Details[0] != '\0') Result += std::string(": ") + Call.Details;
  if (Call.Proxy) Result += "; proxy " + Call.Proxy->Name;
  if (Peer && *Peer)
    Result += "; peer " + std::string(Peer) + ":" + std::to_string(Get<long>(Call.Handle, CURLINFO_PRIMARY_PORT));
  Result += Get<long>(Call.Handle, CURLINFO_NUM_CONNECTS) == 0 ? "; kept connection" : "; new connection";
  Result += "; name after " + Milliseconds(CURLINFO_NAMELOOKUP_TIME_T);
  Result += ", connection after " + Milliseconds(CURLINFO_CONNECT_TIME_T);
  Result += ", TLS after " + Milliseconds(CURLINFO_APPCONNECT_TIME_T);
  Result += ", first byte after " + Milliseconds(CURLINFO_STARTTRANSFER_TIME_T);
  Result += ", end after " + Milliseconds(CURLINFO_TOTAL_TIME_T);
  Result += "; body bytes sent " + std::to_string(Get<curl_off_t>(Call.Handle, CURLINFO_SIZE_UPLOAD_T));
  Result += ", received " + std::to_string(Get<curl_off_t>(Call.Handle, CURLINFO_SIZE_DOWNLOAD_T));
  return Result;
}

}  // namespace oxSuperAPI
