// tests/effect/fault_visits.h — what users and hosts do, as short scripts for faults to happen in.
#pragma once

#include <ostream>
#include <vector>

#include "tests/effect/fault_scene.h"

namespace effect_test {

struct FaultVisit {
  const char* name;
  host::Role role;
  void (*prepare)(Scene&);  // without faults
  void (*act)(Scene&);      // with them; leaves in Scene::seen what came of it
  host::Stress stress{};
};

const std::vector<FaultVisit>& faultVisits();

inline void PrintTo(const FaultVisit& visit, std::ostream* out) {
  *out << visit.name;
}

}  // namespace effect_test
