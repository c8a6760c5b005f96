#pragma once

namespace oxSuperAPI {

/// Days since 1899-12-30 00:00, the fraction being the time of day (45356.5 is 2024-03-05 12:00). Local time unless a
/// name says otherwise. 0 stands for "no date".
using TDateTime = double;

}  // namespace oxSuperAPI
