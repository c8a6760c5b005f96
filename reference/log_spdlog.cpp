#include "oxSuperAPI/reference/log_spdlog.h"

#include <fmt/format.h>
#include <spdlog/logger.h>
#include <spdlog/sinks/rotating_file_sink.h>

#include "oxSuperAPI/reference/private_file.h"

namespace oxSuperAPI {

namespace {

constexpr std::string_view What = "host log";

spdlog::level::level_enum Level(TLogSeverity Severity) {
  switch (Severity) {
    case TLogSeverity::Information:
      return spdlog::level::info;
    case TLogSeverity::Warning:
      return spdlog::level::warn;
    default:
      return spdlog::level::err;
  }
}

}  // namespace

TSpdlogLog::TSpdlogLog(const TSpdlogOptions& Options) : FOptions(Options) {
  Open();
}

TSpdlogLog::~TSpdlogLog() = default;

void TSpdlogLog::Open() {
  FFailed = false;
  // Before each opening, so that a file exists with its narrow rights before anything is written to it.
  spdlog::file_event_handlers Handlers;
  Handlers.before_open = [](const std::string& FileName) {
    if (PathExists(FileName))
      CheckPrivateFile(FileName, What);
    else
      CreatePrivateFile(FileName, What, {});
  };
  try {
    FLogger = std::make_unique<spdlog::logger>(
        "host", std::make_shared<spdlog::sinks::rotating_file_sink_mt>(FOptions.FileName, FOptions.MaxBytes,
                                                                       FOptions.KeptFiles, false, Handlers));
  } catch (const spdlog::spdlog_ex& Error) {
    throw TBeamError(fmt::format("Cannot open the {}: {}", What, Error.what()));
  }
  FLogger->set_pattern("%Y-%m-%d %H:%M:%S.%e [%l] %v");
  FLogger->flush_on(spdlog::level::trace);
  FLogger->set_error_handler([this](const std::string&) { FFailed = true; });  // the default prints to standard error
}

void TSpdlogLog::AddToLog(const std::string& Text, int Kind, TLogSeverity Severity) {
  try {
    if (!FLogger) Open();
    FLogger->log(Level(Severity), "{} {}", Kind, EscapeForLog(FOptions.Mask ? FOptions.Mask(Text) : Text));
  } catch (const std::exception&) {
    FFailed = true;
  }
  // After a failed rotation the sink has no open file and would write through a null pointer.
  if (FFailed) FLogger.reset();
}

std::string EscapeForLog(std::string_view Text) {
  std::string Result;
  Result.reserve(Text.size());
  for (std::size_t At = 0; At < Text.size(); ++At) {
    const auto Byte = static_cast<unsigned char>(Text[At]);
    const auto Next = static_cast<unsigned char>(At + 1 < Text.size() ? Text[At + 1] : 0);
    if (Byte == 0xC2 && Next >= 0x80 && Next < 0xA0) {  // U+0080 to U+009F
      Result += fmt::format("\\x{:02x}", Next);
      ++At;
    } else if (Byte == '\n') {
      Result += "\\n";
    } else if (Byte == '\r') {
      Result += "\\r";
    } else if (Byte == '\t') {
      Result += "\\t";
    } else if (Byte == '\\') {
      Result += "\\\\";
    } else if (Byte < 0x20 || Byte == 0x7F) {
      Result += fmt::format("\\x{:02x}", Byte);
    } else {
      Result += Text[At];
    }
  }
  return Result;
}

}  // namespace oxSuperAPI
