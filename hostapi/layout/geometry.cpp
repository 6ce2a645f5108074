// hostapi/layout/geometry.cpp — sizes and offsets of hostapi/geometry.h, held at compile time.
#include "hostapi/geometry.h"
#include "hostapi/layout/assert_layout.h"

ASSERT_SIZE(A_Time, 8);
ASSERT_ALIGN(A_Time, 4);
ASSERT_FIELD(A_Time, value, 0, 4);
ASSERT_FIELD(A_Time, scale, 4, 4);

ASSERT_SIZE(A_Ratio, 8);
ASSERT_ALIGN(A_Ratio, 4);
ASSERT_FIELD(A_Ratio, num, 0, 4);
ASSERT_FIELD(A_Ratio, den, 4, 4);

ASSERT_SIZE(A_FloatPoint, 16);
ASSERT_ALIGN(A_FloatPoint, 8);
ASSERT_FIELD(A_FloatPoint, x, 0, 8);
ASSERT_FIELD(A_FloatPoint, y, 8, 8);

ASSERT_SIZE(A_Matrix4, 128);
ASSERT_ALIGN(A_Matrix4, 8);
ASSERT_FIELD(A_Matrix4, mat, 0, 128);

ASSERT_SIZE(A_LegacyRect, 8);
ASSERT_ALIGN(A_LegacyRect, 2);
ASSERT_FIELD(A_LegacyRect, top, 0, 2);
ASSERT_FIELD(A_LegacyRect, left, 2, 2);
ASSERT_FIELD(A_LegacyRect, bottom, 4, 2);
ASSERT_FIELD(A_LegacyRect, right, 6, 2);

ASSERT_SIZE(A_LRect, 16);
ASSERT_ALIGN(A_LRect, 4);
ASSERT_FIELD(A_LRect, left, 0, 4);
ASSERT_FIELD(A_LRect, top, 4, 4);
ASSERT_FIELD(A_LRect, right, 8, 4);
ASSERT_FIELD(A_LRect, bottom, 12, 4);

ASSERT_SIZE(A_LPoint, 8);
ASSERT_ALIGN(A_LPoint, 4);
ASSERT_FIELD(A_LPoint, x, 0, 4);
ASSERT_FIELD(A_LPoint, y, 4, 4);

ASSERT_SIZE(PF_LegacyPoint, 4);
ASSERT_ALIGN(PF_LegacyPoint, 2);
ASSERT_FIELD(PF_LegacyPoint, v, 0, 2);
ASSERT_FIELD(PF_LegacyPoint, h, 2, 2);

ASSERT_SIZE(PF_LegacyRect, 8);
ASSERT_ALIGN(PF_LegacyRect, 2);
ASSERT_FIELD(PF_LegacyRect, top, 0, 2);
ASSERT_FIELD(PF_LegacyRect, left, 2, 2);
ASSERT_FIELD(PF_LegacyRect, bottom, 4, 2);
ASSERT_FIELD(PF_LegacyRect, right, 6, 2);

ASSERT_SIZE(PF_Point, 8);
ASSERT_ALIGN(PF_Point, 4);
ASSERT_FIELD(PF_Point, h, 0, 4);
ASSERT_FIELD(PF_Point, v, 4, 4);

ASSERT_SIZE(PF_LRect, 16);
ASSERT_ALIGN(PF_LRect, 4);
ASSERT_FIELD(PF_LRect, left, 0, 4);
ASSERT_FIELD(PF_LRect, top, 4, 4);
ASSERT_FIELD(PF_LRect, right, 8, 4);
ASSERT_FIELD(PF_LRect, bottom, 12, 4);

ASSERT_SIZE(PF_RationalScale, 8);
ASSERT_ALIGN(PF_RationalScale, 4);
ASSERT_FIELD(PF_RationalScale, num, 0, 4);
ASSERT_FIELD(PF_RationalScale, den, 4, 4);

ASSERT_SIZE(PF_FixedPoint, 8);
ASSERT_ALIGN(PF_FixedPoint, 4);
ASSERT_FIELD(PF_FixedPoint, x, 0, 4);
ASSERT_FIELD(PF_FixedPoint, y, 4, 4);

ASSERT_SIZE(PF_FloatMatrix, 72);
ASSERT_ALIGN(PF_FloatMatrix, 8);
ASSERT_FIELD(PF_FloatMatrix, mat, 0, 72);
