#include "oxSuperAPI/foundation/uBeamJSONSinks.h"

void Write(oxSuperAPI::TJSONObjectHelper& Json, const int* Pointer) {
  Json.AddPair("amount", 1.5).AddPair("count", 5).AddPair("flag", Pointer != nullptr).AddString("text", "text");
#if defined TEXT  // would become the boolean true
  Json.AddPair("text", "text");
#elif defined STRING
  Json.AddPair("text", std::string("text"));
#elif defined LONG      // could be cut
  Json.AddPair("count", 5L);
#elif defined UNSIGNED  // could change its sign
  Json.AddPair("count", 5u);
#elif defined FLOAT     // has lost cents before it comes here
  Json.AddPair("amount", 1.5f);
#elif defined POINTER   // would become a boolean
  Json.AddPair("flag", Pointer);
#endif
}
