#include "oxSuperAPI/host/uHostJson.h"

const oxSuperAPI::TJSONValue Text(std::string("text"));
#if defined LITERAL  // would become the boolean true
const oxSuperAPI::TJSONValue Literal("text");
#endif
#if defined INTEGER
const oxSuperAPI::TJSONValue Integer(5);
#endif
