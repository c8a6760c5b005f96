#pragma once

#include <string>

namespace oxSuperAPI {

/// Makes an interrupt (SIGINT, SIGTERM) end the process with exit code 130, until a request that changes something is
/// under way.
void InstallInterrupt();

/// From here on an interrupt only leaves a line: the answer decides about people's money and has to be written down.
/// A second one ends the process with the exit code for an unknown outcome.
void DeferInterrupt();

/// Back to ending at once, for a command that goes on after its requests; ends the process when an interrupt came
/// meanwhile.
void ResumeInterrupt();

/// A line from standard input, without its line end. On a terminal `Prompt` is shown and what is typed is not; an
/// interrupt restores the terminal. Raises TToolError when there is nothing to read.
std::string ReadSecretLine(const std::string& Prompt);

}  // namespace oxSuperAPI
