// hostapi/layout/assert_layout.h — how the layout sources state sizes and offsets.
#pragma once

#include <cstddef>

#define ASSERT_SIZE(record, bytes) static_assert(sizeof(record) == (bytes), #record)
#define ASSERT_ALIGN(record, bytes) static_assert(alignof(record) == (bytes), #record)
#define ASSERT_FIELD(record, field, offset, bytes)                        \
  static_assert(offsetof(record, field) == (offset), #record "." #field); \
  static_assert(sizeof(static_cast<record*>(nullptr)->field) == (bytes), #record "." #field)
