// host/saved_values.h — parameter values as a project keeps them.
#pragma once

#include <vector>

#include "host/instance.h"
#include "host/sequence_copy.h"

namespace host {

std::vector<SavedParameter> saveAll(SequenceCopy& copy);

// By id, or by name where the saved id is 0. Throws Error when the effect has no such parameter, or
// has one of another type.
void loadOne(SequenceCopy& copy, const SavedParameter& saved);

// Parameters that the effect no longer has are passed over; those that the project does not know
// get the value meant for old projects.
void loadAll(SequenceCopy& copy, const std::vector<SavedParameter>& saved);

}  // namespace host
