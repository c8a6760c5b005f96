#include "options.h"

#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

#include "json.h"

namespace sandbox {
namespace {

std::chrono::milliseconds Milliseconds(double seconds) {
  return std::chrono::milliseconds(static_cast<std::int64_t>(seconds * 1000));
}

void ReadSecrets(Options& options) {
  std::ifstream file(options.secrets);
  if (!file) throw std::runtime_error("Cannot read the secrets file " + options.secrets);
  const std::string text((std::istreambuf_iterator<char>(file)), {});
  std::string problem;
  const json::value document = Parse(text, problem);
  options.applicationSecret = TextAt(&document, "application");
  options.administratorSecret = TextAt(&document, "administrator");
  if (options.applicationSecret.empty() || options.administratorSecret.empty())
    throw std::runtime_error("The secrets file " + options.secrets +
                             R"( must be {"application":"...","administrator":"..."})");
}

}  // namespace

std::optional<Options> ReadOptions(int argc, char** argv, int& exitCode) {
  constexpr double kDay = 86400;
  Options options;
  options.hosts = {"api.dev.beam.example",    "api.qa.beam.example",    "api.beam.example",
                   "portal.dev.beam.example", "portal.qa.beam.example", "portal.beam.example"};
  double timeStep = 3;
  double lifetime = 0;
  int tokenLifetime = 3599;

  CLI::App app{
      "beam-sandbox: the clearing house on your own machine, over HTTPS on 127.0.0.1.\n"
      "Prints one line of JSON when it is ready; ends on SIGINT or SIGTERM.",
      "beam-sandbox"};
  app.add_option("--port", options.port, "TCP port; 0 takes a free one")->capture_default_str();
  app.add_option("--host", options.hosts,
                 "Host name for the server certificate, instead of the default six (repeatable)")
      ->allow_extra_args(false)
      ->capture_default_str();
  app.add_option("--dir", options.dir, "Directory for ca.pem (default: a temporary one, removed at the end)");
  app.add_option("--state", options.state, "File that keeps the state across restarts");
  app.add_option("--secrets", options.secrets,
                 R"(JSON file {"application":"...","administrator":"..."} instead of the default secrets)");
  app.add_option("--time-step", timeStep, "Seconds a batch stays in a status; 0: until told to move")
      ->check(CLI::Range(0.0, 365 * kDay))
      ->capture_default_str();
  app.add_option("--token-lifetime", tokenLifetime, "Seconds a token is valid")
      ->check(CLI::Range(0, 1000000000))
      ->capture_default_str();
  app.add_option("--lifetime", lifetime, "End after this many seconds; 0: never")
      ->check(CLI::Range(0.0, 365 * kDay))
      ->capture_default_str();
  app.add_option("--pre-registered", options.preRegistered, "UUID of a customer that may activate (repeatable)")
      ->allow_extra_args(false);
  app.add_flag("--pre-register-all", options.preRegisterAll, "Every customer may activate, also again");
  app.add_flag("--parent-pipe", options.parentPipe, "End when standard input ends");
  app.add_flag("--verbose", options.verbose, "One line for each request on standard error");
  try {
    app.parse(argc, argv);
    if (!options.secrets.empty()) ReadSecrets(options);
  } catch (const CLI::ParseError& error) {
    exitCode = app.exit(error) == 0 ? 0 : 2;
    return std::nullopt;
  } catch (const std::exception& error) {
    std::cerr << "beam-sandbox: " << error.what() << "\n";
    exitCode = 2;
    return std::nullopt;
  }
  options.timeStep = Milliseconds(timeStep);
  options.lifetime = Milliseconds(lifetime);
  options.tokenLifetime = std::chrono::seconds(tokenLifetime);
  return options;
}

}  // namespace sandbox
