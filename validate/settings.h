// validate/settings.h — values to try out on parameters.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "host/instance.h"
#include "host/parameter_store.h"

namespace validate {

/// The ends of what the parameter may be set to, and beyond where the interface allows that. Empty
/// for kinds without values of their own.
std::vector<host::Value> extremesOf(host::Instance& instance, std::int32_t index);

/// Any value that a user could set.
host::Value anyValueOf(host::Instance& instance, std::int32_t index, std::mt19937_64& random);

/// Edits the parameter at the time cursor, as a user does.
void setValue(host::Instance& instance, std::int32_t index, const host::Value& value);
/// A keyframe on this frame, as a user sets it.
void setKeyframe(host::Instance& instance, std::int32_t index, std::int32_t frame,
                 const host::Value& value);

bool mayHaveKeyframes(host::Instance& instance, std::int32_t index);

/// "Amount" (3), for steps.
std::string labelOf(host::Instance& instance, std::int32_t index);

/// "12.5", "(1, 2)", for steps.
std::string textOf(const host::Value& value, host::ValueKind kind);

}  // namespace validate
