// hostapi/layout/suite_handle.cpp — sizes and offsets of hostapi/suites/handle.h, held at compile
// time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/handle.h"

ASSERT_SIZE(PF_HandleSuite1, 48);
ASSERT_ALIGN(PF_HandleSuite1, 8);
ASSERT_FIELD(PF_HandleSuite1, host_new_handle, 0, 8);
ASSERT_FIELD(PF_HandleSuite1, host_lock_handle, 8, 8);
ASSERT_FIELD(PF_HandleSuite1, host_unlock_handle, 16, 8);
ASSERT_FIELD(PF_HandleSuite1, host_dispose_handle, 24, 8);
ASSERT_FIELD(PF_HandleSuite1, host_get_handle_size, 32, 8);
ASSERT_FIELD(PF_HandleSuite1, host_resize_handle, 40, 8);
