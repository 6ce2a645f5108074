// hostapi/layout/suite_drawbot.cpp — sizes and offsets of hostapi/suites/drawbot.h, held at compile
// time.
#include "hostapi/layout/assert_layout.h"
#include "hostapi/suites/drawbot.h"

ASSERT_SIZE(DRAWBOT_ColorRGBA, 16);
ASSERT_ALIGN(DRAWBOT_ColorRGBA, 4);
ASSERT_FIELD(DRAWBOT_ColorRGBA, red, 0, 4);
ASSERT_FIELD(DRAWBOT_ColorRGBA, green, 4, 4);
ASSERT_FIELD(DRAWBOT_ColorRGBA, blue, 8, 4);
ASSERT_FIELD(DRAWBOT_ColorRGBA, alpha, 12, 4);

ASSERT_SIZE(DRAWBOT_PointF32, 8);
ASSERT_ALIGN(DRAWBOT_PointF32, 4);
ASSERT_FIELD(DRAWBOT_PointF32, x, 0, 4);
ASSERT_FIELD(DRAWBOT_PointF32, y, 4, 4);

ASSERT_SIZE(DRAWBOT_RectF32, 16);
ASSERT_ALIGN(DRAWBOT_RectF32, 4);
ASSERT_FIELD(DRAWBOT_RectF32, left, 0, 4);
ASSERT_FIELD(DRAWBOT_RectF32, top, 4, 4);
ASSERT_FIELD(DRAWBOT_RectF32, width, 8, 4);
ASSERT_FIELD(DRAWBOT_RectF32, height, 12, 4);

ASSERT_SIZE(DRAWBOT_Rect32, 16);
ASSERT_ALIGN(DRAWBOT_Rect32, 4);
ASSERT_FIELD(DRAWBOT_Rect32, left, 0, 4);
ASSERT_FIELD(DRAWBOT_Rect32, top, 4, 4);
ASSERT_FIELD(DRAWBOT_Rect32, width, 8, 4);
ASSERT_FIELD(DRAWBOT_Rect32, height, 12, 4);

ASSERT_SIZE(DRAWBOT_MatrixF32, 36);
ASSERT_ALIGN(DRAWBOT_MatrixF32, 4);
ASSERT_FIELD(DRAWBOT_MatrixF32, mat, 0, 36);

ASSERT_SIZE(DRAWBOT_DrawbotSuite1, 16);
ASSERT_ALIGN(DRAWBOT_DrawbotSuite1, 8);
ASSERT_FIELD(DRAWBOT_DrawbotSuite1, GetSupplier, 0, 8);
ASSERT_FIELD(DRAWBOT_DrawbotSuite1, GetSurface, 8, 8);

ASSERT_SIZE(DRAWBOT_SupplierSuite1, 104);
ASSERT_ALIGN(DRAWBOT_SupplierSuite1, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, NewPen, 0, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, NewBrush, 8, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, SupportsText, 16, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, GetDefaultFontSize, 24, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, NewDefaultFont, 32, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, NewImageFromBuffer, 40, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, NewPath, 48, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, SupportsPixelLayoutBGRA, 56, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, PrefersPixelLayoutBGRA, 64, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, SupportsPixelLayoutARGB, 72, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, PrefersPixelLayoutARGB, 80, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, RetainObject, 88, 8);
ASSERT_FIELD(DRAWBOT_SupplierSuite1, ReleaseObject, 96, 8);

ASSERT_SIZE(DRAWBOT_SurfaceSuite2, 136);
ASSERT_ALIGN(DRAWBOT_SurfaceSuite2, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, PushStateStack, 0, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, PopStateStack, 8, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, PaintRect, 16, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, FillPath, 24, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, StrokePath, 32, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, Clip, 40, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, GetClipBounds, 48, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, IsWithinClipBounds, 56, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, Transform, 64, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, DrawString, 72, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, DrawImage, 80, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, SetInterpolationPolicy, 88, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, GetInterpolationPolicy, 96, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, SetAntiAliasPolicy, 104, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, GetAntiAliasPolicy, 112, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, Flush, 120, 8);
ASSERT_FIELD(DRAWBOT_SurfaceSuite2, GetTransformToScreenScale, 128, 8);

ASSERT_SIZE(DRAWBOT_PathSuite1, 48);
ASSERT_ALIGN(DRAWBOT_PathSuite1, 8);
ASSERT_FIELD(DRAWBOT_PathSuite1, MoveTo, 0, 8);
ASSERT_FIELD(DRAWBOT_PathSuite1, LineTo, 8, 8);
ASSERT_FIELD(DRAWBOT_PathSuite1, BezierTo, 16, 8);
ASSERT_FIELD(DRAWBOT_PathSuite1, AddRect, 24, 8);
ASSERT_FIELD(DRAWBOT_PathSuite1, AddArc, 32, 8);
ASSERT_FIELD(DRAWBOT_PathSuite1, Close, 40, 8);

ASSERT_SIZE(DRAWBOT_PenSuite1, 8);
ASSERT_ALIGN(DRAWBOT_PenSuite1, 8);
ASSERT_FIELD(DRAWBOT_PenSuite1, SetDashPattern, 0, 8);

ASSERT_SIZE(DRAWBOT_ImageSuite1, 8);
ASSERT_ALIGN(DRAWBOT_ImageSuite1, 8);
ASSERT_FIELD(DRAWBOT_ImageSuite1, SetScaleFactor, 0, 8);

ASSERT_SIZE(DRAWBOT_Suites, 48);
ASSERT_ALIGN(DRAWBOT_Suites, 8);
ASSERT_FIELD(DRAWBOT_Suites, drawbot_suiteP, 0, 8);
ASSERT_FIELD(DRAWBOT_Suites, supplier_suiteP, 8, 8);
ASSERT_FIELD(DRAWBOT_Suites, surface_suiteP, 16, 8);
ASSERT_FIELD(DRAWBOT_Suites, path_suiteP, 24, 8);
ASSERT_FIELD(DRAWBOT_Suites, pen_suiteP, 32, 8);
ASSERT_FIELD(DRAWBOT_Suites, image_suiteP, 40, 8);
