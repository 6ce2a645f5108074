// hostapi/layout/world.cpp — sizes and offsets of hostapi/world.h, held at compile time.
#include "hostapi/world.h"
#include "hostapi/layout/assert_layout.h"

ASSERT_SIZE(PF_Pixel, 4);
ASSERT_ALIGN(PF_Pixel, 1);
ASSERT_FIELD(PF_Pixel, alpha, 0, 1);
ASSERT_FIELD(PF_Pixel, red, 1, 1);
ASSERT_FIELD(PF_Pixel, green, 2, 1);
ASSERT_FIELD(PF_Pixel, blue, 3, 1);

ASSERT_SIZE(PF_Pixel16, 8);
ASSERT_ALIGN(PF_Pixel16, 2);
ASSERT_FIELD(PF_Pixel16, alpha, 0, 2);
ASSERT_FIELD(PF_Pixel16, red, 2, 2);
ASSERT_FIELD(PF_Pixel16, green, 4, 2);
ASSERT_FIELD(PF_Pixel16, blue, 6, 2);

ASSERT_SIZE(PF_PixelFloat, 16);
ASSERT_ALIGN(PF_PixelFloat, 4);
ASSERT_FIELD(PF_PixelFloat, alpha, 0, 4);
ASSERT_FIELD(PF_PixelFloat, red, 4, 4);
ASSERT_FIELD(PF_PixelFloat, green, 8, 4);
ASSERT_FIELD(PF_PixelFloat, blue, 12, 4);

ASSERT_SIZE(PF_CompositeMode, 12);
ASSERT_ALIGN(PF_CompositeMode, 4);
ASSERT_FIELD(PF_CompositeMode, xfer, 0, 4);
ASSERT_FIELD(PF_CompositeMode, rand_seed, 4, 4);
ASSERT_FIELD(PF_CompositeMode, opacity, 8, 1);
ASSERT_FIELD(PF_CompositeMode, rgb_only, 9, 1);
ASSERT_FIELD(PF_CompositeMode, opacitySu, 10, 2);

ASSERT_SIZE(PF_LayerDef, 120);
ASSERT_ALIGN(PF_LayerDef, 8);
ASSERT_FIELD(PF_LayerDef, reserved0, 0, 8);
ASSERT_FIELD(PF_LayerDef, reserved1, 8, 8);
ASSERT_FIELD(PF_LayerDef, world_flags, 16, 4);
ASSERT_FIELD(PF_LayerDef, data, 24, 8);
ASSERT_FIELD(PF_LayerDef, rowbytes, 32, 4);
ASSERT_FIELD(PF_LayerDef, width, 36, 4);
ASSERT_FIELD(PF_LayerDef, height, 40, 4);
ASSERT_FIELD(PF_LayerDef, extent_hint, 44, 16);
ASSERT_FIELD(PF_LayerDef, platform_ref, 64, 8);
ASSERT_FIELD(PF_LayerDef, reserved_long1, 72, 4);
ASSERT_FIELD(PF_LayerDef, reserved_long4, 80, 8);
ASSERT_FIELD(PF_LayerDef, pix_aspect_ratio, 88, 8);
ASSERT_FIELD(PF_LayerDef, reserved_long2, 96, 8);
ASSERT_FIELD(PF_LayerDef, origin_x, 104, 4);
ASSERT_FIELD(PF_LayerDef, origin_y, 108, 4);
ASSERT_FIELD(PF_LayerDef, reserved_long3, 112, 4);
ASSERT_FIELD(PF_LayerDef, dephault, 116, 4);

ASSERT_SIZE(PF_MaskWorld, 136);
ASSERT_ALIGN(PF_MaskWorld, 8);
ASSERT_FIELD(PF_MaskWorld, mask, 0, 120);
ASSERT_FIELD(PF_MaskWorld, offset, 120, 8);
ASSERT_FIELD(PF_MaskWorld, what_is_mask, 128, 4);
