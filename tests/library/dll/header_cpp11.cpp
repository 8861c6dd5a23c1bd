// SPDX-License-Identifier: MIT
// A host in C++11. The public header comes first, so that it has to bring all that it needs.
#include "include/telescope_api.h"

#include <type_traits>

#include "tests/library/dll/header_alone.h"

// Every function has the type that the header names for it.
#define VELQUIN_SAME_TYPE(name) \
  static_assert(std::is_same<Telescope##name##Fn, decltype(&Telescope##name)>::value, #name)
VELQUIN_SAME_TYPE(AlignReset);
VELQUIN_SAME_TYPE(BaseSetting);
VELQUIN_SAME_TYPE(Check);
VELQUIN_SAME_TYPE(Dialog);
VELQUIN_SAME_TYPE(End);
VELQUIN_SAME_TYPE(GetEastWest);
VELQUIN_SAME_TYPE(GetParking);
VELQUIN_SAME_TYPE(GetPos);
VELQUIN_SAME_TYPE(GetSlewSpeedMax);
VELQUIN_SAME_TYPE(GetStatus);
VELQUIN_SAME_TYPE(Home);
VELQUIN_SAME_TYPE(Look);
VELQUIN_SAME_TYPE(Park);
VELQUIN_SAME_TYPE(SetEastWest);
VELQUIN_SAME_TYPE(SetGuideSpeed);
VELQUIN_SAME_TYPE(SetIni);
VELQUIN_SAME_TYPE(SetLogPath);
VELQUIN_SAME_TYPE(SetLogPrefix);
VELQUIN_SAME_TYPE(SetName);
VELQUIN_SAME_TYPE(SetPos);
VELQUIN_SAME_TYPE(SetVendor);
VELQUIN_SAME_TYPE(Slew);
VELQUIN_SAME_TYPE(SlewPulseDuration);
VELQUIN_SAME_TYPE(Start);
VELQUIN_SAME_TYPE(Stop);
VELQUIN_SAME_TYPE(Sync);
VELQUIN_SAME_TYPE(UnPark);

static_assert(TELESCOPE_NORTH == 1 && TELESCOPE_SOUTH == 2 && TELESCOPE_EAST == 3 &&
                  TELESCOPE_WEST == 4,
              "the numbers of the directions");
static_assert(std::is_convertible<TelescopeDirection, int32_t>::value,
              "a direction is an argument of TelescopeSlew as it is");

int AskSpeedStepsInCpp11(FindFunction find) {
  return reinterpret_cast<TelescopeGetSlewSpeedMaxFn>(find("TelescopeGetSlewSpeedMax"))(nullptr);
}
