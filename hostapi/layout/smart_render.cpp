// hostapi/layout/smart_render.cpp — sizes and offsets of hostapi/smart_render.h, held at compile
// time.
#include "hostapi/smart_render.h"
#include "hostapi/layout/assert_layout.h"

ASSERT_SIZE(PF_RenderRequest, 44);
ASSERT_ALIGN(PF_RenderRequest, 4);
ASSERT_FIELD(PF_RenderRequest, rect, 0, 16);
ASSERT_FIELD(PF_RenderRequest, field, 16, 4);
ASSERT_FIELD(PF_RenderRequest, channel_mask, 20, 4);
ASSERT_FIELD(PF_RenderRequest, preserve_rgb_of_zero_alpha, 24, 1);
ASSERT_FIELD(PF_RenderRequest, unused, 25, 3);
ASSERT_FIELD(PF_RenderRequest, reserved, 28, 16);

ASSERT_SIZE(PF_PreRenderInput, 64);
ASSERT_ALIGN(PF_PreRenderInput, 8);
ASSERT_FIELD(PF_PreRenderInput, output_request, 0, 44);
ASSERT_FIELD(PF_PreRenderInput, bitdepth, 44, 2);
ASSERT_FIELD(PF_PreRenderInput, gpu_data, 48, 8);
ASSERT_FIELD(PF_PreRenderInput, what_gpu, 56, 4);
ASSERT_FIELD(PF_PreRenderInput, device_index, 60, 4);

ASSERT_SIZE(PF_PreRenderOutput, 56);
ASSERT_ALIGN(PF_PreRenderOutput, 8);
ASSERT_FIELD(PF_PreRenderOutput, result_rect, 0, 16);
ASSERT_FIELD(PF_PreRenderOutput, max_result_rect, 16, 16);
ASSERT_FIELD(PF_PreRenderOutput, solid, 32, 1);
ASSERT_FIELD(PF_PreRenderOutput, reserved, 33, 1);
ASSERT_FIELD(PF_PreRenderOutput, flags, 34, 2);
ASSERT_FIELD(PF_PreRenderOutput, pre_render_data, 40, 8);
ASSERT_FIELD(PF_PreRenderOutput, delete_pre_render_data_func, 48, 8);

ASSERT_SIZE(PF_CheckoutResult, 76);
ASSERT_ALIGN(PF_CheckoutResult, 4);
ASSERT_FIELD(PF_CheckoutResult, result_rect, 0, 16);
ASSERT_FIELD(PF_CheckoutResult, max_result_rect, 16, 16);
ASSERT_FIELD(PF_CheckoutResult, par, 32, 8);
ASSERT_FIELD(PF_CheckoutResult, solid, 40, 1);
ASSERT_FIELD(PF_CheckoutResult, reservedB, 41, 3);
ASSERT_FIELD(PF_CheckoutResult, ref_width, 44, 4);
ASSERT_FIELD(PF_CheckoutResult, ref_height, 48, 4);
ASSERT_FIELD(PF_CheckoutResult, reserved, 52, 24);

ASSERT_SIZE(PF_PreRenderCallbacks, 16);
ASSERT_ALIGN(PF_PreRenderCallbacks, 8);
ASSERT_FIELD(PF_PreRenderCallbacks, checkout_layer, 0, 8);
ASSERT_FIELD(PF_PreRenderCallbacks, GuidMixInPtr, 8, 8);

ASSERT_SIZE(PF_PreRenderExtra, 24);
ASSERT_ALIGN(PF_PreRenderExtra, 8);
ASSERT_FIELD(PF_PreRenderExtra, input, 0, 8);
ASSERT_FIELD(PF_PreRenderExtra, output, 8, 8);
ASSERT_FIELD(PF_PreRenderExtra, cb, 16, 8);

ASSERT_SIZE(PF_SmartRenderInput, 72);
ASSERT_ALIGN(PF_SmartRenderInput, 8);
ASSERT_FIELD(PF_SmartRenderInput, output_request, 0, 44);
ASSERT_FIELD(PF_SmartRenderInput, bitdepth, 44, 2);
ASSERT_FIELD(PF_SmartRenderInput, pre_render_data, 48, 8);
ASSERT_FIELD(PF_SmartRenderInput, gpu_data, 56, 8);
ASSERT_FIELD(PF_SmartRenderInput, what_gpu, 64, 4);
ASSERT_FIELD(PF_SmartRenderInput, device_index, 68, 4);

ASSERT_SIZE(PF_SmartRenderCallbacks, 24);
ASSERT_ALIGN(PF_SmartRenderCallbacks, 8);
ASSERT_FIELD(PF_SmartRenderCallbacks, checkout_layer_pixels, 0, 8);
ASSERT_FIELD(PF_SmartRenderCallbacks, checkin_layer_pixels, 8, 8);
ASSERT_FIELD(PF_SmartRenderCallbacks, checkout_output, 16, 8);

ASSERT_SIZE(PF_SmartRenderExtra, 16);
ASSERT_ALIGN(PF_SmartRenderExtra, 8);
ASSERT_FIELD(PF_SmartRenderExtra, input, 0, 8);
ASSERT_FIELD(PF_SmartRenderExtra, cb, 8, 8);
