#include "text_file.h"

#include <fstream>
#include <iterator>

#include "tool.h"

namespace oxSuperAPI {

std::string ReadWholeFile(const std::string& Name) {
  std::ifstream File(Name, std::ios::binary);
  std::string Text((std::istreambuf_iterator<char>(File)), {});
  if (!File.good() && Text.empty()) throw TToolError(exitFailed, "Cannot read the file " + Name);
  return Text;
}

}  // namespace oxSuperAPI
