#include "oxSuperAPI/foundation/uBeamEnumerations.h"

namespace oxSuperAPI {

TPayrollProduct BeamPayrollProduct = ppKestrel;

}  // namespace oxSuperAPI
