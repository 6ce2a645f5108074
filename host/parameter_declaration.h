// host/parameter_declaration.h — keeping what an effect declares.
#pragma once

#include <cstdint>

#include "host/effect.h"

namespace host {

// Copies the record and the texts it points at; those pointers are null in the copy.
ParameterDeclaration declare(const PF_ParamDef& definition, std::int32_t index);

// The input layer, which no effect declares.
ParameterDeclaration declareLayer();

// Takes over the fields that an effect may redefine for an instance: the name, the appearance
// flags, and how a slider is shown. False when nothing changed.
bool redefine(PF_ParamDef& current, const PF_ParamDef& wanted);

}  // namespace host
