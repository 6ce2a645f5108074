// hostapi/suites/drawbot.h — drawing in panels.
#pragma once

#include <cstdint>

#include "hostapi/scalars.h"

struct DRAWBOT_ColorRGBA {
  float red;
  float green;
  float blue;
  float alpha;
};

struct DRAWBOT_PointF32 {
  float x;
  float y;
};

struct DRAWBOT_RectF32 {
  float left;
  float top;
  float width;
  float height;
};

struct DRAWBOT_Rect32 {
  std::int32_t left;
  std::int32_t top;
  std::int32_t width;
  std::int32_t height;
};

struct DRAWBOT_MatrixF32 {
  float mat[3][3];
};

struct DRAWBOT_DrawbotSuite1 {
  // drawing reference; out supplier (host keeps it)
  std::int32_t (*GetSupplier)(DRAWBOT_DrawRef, DRAWBOT_SupplierRef*);
  // drawing reference; out surface (host keeps it)
  std::int32_t (*GetSurface)(DRAWBOT_DrawRef, DRAWBOT_SurfaceRef*);
};

struct DRAWBOT_SupplierSuite1 {
  // supplier; colour; stroke width; out pen
  std::int32_t (*NewPen)(DRAWBOT_SupplierRef, const DRAWBOT_ColorRGBA*, float, DRAWBOT_PenRef*);
  // supplier; colour; out brush
  std::int32_t (*NewBrush)(DRAWBOT_SupplierRef, const DRAWBOT_ColorRGBA*, DRAWBOT_BrushRef*);
  // supplier; out flag
  std::int32_t (*SupportsText)(DRAWBOT_SupplierRef, std::uint8_t*);
  // supplier; out size
  std::int32_t (*GetDefaultFontSize)(DRAWBOT_SupplierRef, float*);
  // supplier; size; out font
  std::int32_t (*NewDefaultFont)(DRAWBOT_SupplierRef, float, DRAWBOT_FontRef*);
  std::int32_t (*NewImageFromBuffer)(DRAWBOT_SupplierRef, std::int32_t, std::int32_t, std::int32_t,
                                     std::int32_t, const void*, DRAWBOT_ImageRef*);
  // supplier; out path
  std::int32_t (*NewPath)(DRAWBOT_SupplierRef, DRAWBOT_PathRef*);
  std::int32_t (*SupportsPixelLayoutBGRA)(DRAWBOT_SupplierRef, std::uint8_t*);
  std::int32_t (*PrefersPixelLayoutBGRA)(DRAWBOT_SupplierRef, std::uint8_t*);
  std::int32_t (*SupportsPixelLayoutARGB)(DRAWBOT_SupplierRef, std::uint8_t*);
  std::int32_t (*PrefersPixelLayoutARGB)(DRAWBOT_SupplierRef, std::uint8_t*);
  // any object from a New call, cast to DRAWBOT_ObjectRef
  std::int32_t (*RetainObject)(DRAWBOT_ObjectRef);
  // any object from a New call, cast to DRAWBOT_ObjectRef
  std::int32_t (*ReleaseObject)(DRAWBOT_ObjectRef);
};

struct DRAWBOT_SurfaceSuite2 {
  // surface
  std::int32_t (*PushStateStack)(DRAWBOT_SurfaceRef);
  // surface
  std::int32_t (*PopStateStack)(DRAWBOT_SurfaceRef);
  // surface; colour; rectangle
  std::int32_t (*PaintRect)(DRAWBOT_SurfaceRef, const DRAWBOT_ColorRGBA*, const DRAWBOT_RectF32*);
  // surface; brush; path; fill rule
  std::int32_t (*FillPath)(DRAWBOT_SurfaceRef, DRAWBOT_BrushRef, DRAWBOT_PathRef, std::int32_t);
  // surface; pen; path
  std::int32_t (*StrokePath)(DRAWBOT_SurfaceRef, DRAWBOT_PenRef, DRAWBOT_PathRef);
  std::int32_t (*Clip)(DRAWBOT_SurfaceRef, DRAWBOT_SupplierRef, const DRAWBOT_Rect32*);
  std::int32_t (*GetClipBounds)(DRAWBOT_SurfaceRef, DRAWBOT_Rect32*);
  std::int32_t (*IsWithinClipBounds)(DRAWBOT_SurfaceRef, const DRAWBOT_Rect32*, std::uint8_t*);
  std::int32_t (*Transform)(DRAWBOT_SurfaceRef, const DRAWBOT_MatrixF32*);
  // surface; brush; font; UTF-16 text, NUL-terminated; origin; alignment; truncation; truncation
  // width
  std::int32_t (*DrawString)(DRAWBOT_SurfaceRef, DRAWBOT_BrushRef, DRAWBOT_FontRef,
                             const std::uint16_t*, const DRAWBOT_PointF32*, std::int32_t,
                             std::int32_t, float);
  std::int32_t (*DrawImage)(DRAWBOT_SurfaceRef, DRAWBOT_ImageRef, const DRAWBOT_PointF32*, float);
  std::int32_t (*SetInterpolationPolicy)(DRAWBOT_SurfaceRef, std::int32_t);
  std::int32_t (*GetInterpolationPolicy)(DRAWBOT_SurfaceRef, std::int32_t*);
  std::int32_t (*SetAntiAliasPolicy)(DRAWBOT_SurfaceRef, std::int32_t);
  std::int32_t (*GetAntiAliasPolicy)(DRAWBOT_SurfaceRef, std::int32_t*);
  std::int32_t (*Flush)(DRAWBOT_SurfaceRef);
  std::int32_t (*GetTransformToScreenScale)(DRAWBOT_SurfaceRef, float*);
};

struct DRAWBOT_PathSuite1 {
  // path; x; y
  std::int32_t (*MoveTo)(DRAWBOT_PathRef, float, float);
  // path; x; y
  std::int32_t (*LineTo)(DRAWBOT_PathRef, float, float);
  std::int32_t (*BezierTo)(DRAWBOT_PathRef, const DRAWBOT_PointF32*, const DRAWBOT_PointF32*,
                           const DRAWBOT_PointF32*);
  // path; rectangle
  std::int32_t (*AddRect)(DRAWBOT_PathRef, const DRAWBOT_RectF32*);
  std::int32_t (*AddArc)(DRAWBOT_PathRef, const DRAWBOT_PointF32*, float, float, float);
  // path
  std::int32_t (*Close)(DRAWBOT_PathRef);
};

struct DRAWBOT_PenSuite1 {
  std::int32_t (*SetDashPattern)(DRAWBOT_PenRef, const float*, std::int32_t);
};

struct DRAWBOT_ImageSuite1 {
  std::int32_t (*SetScaleFactor)(DRAWBOT_ImageRef, float);
};

struct DRAWBOT_Suites {
  DRAWBOT_DrawbotSuite1* drawbot_suiteP;
  DRAWBOT_SupplierSuite1* supplier_suiteP;
  DRAWBOT_SurfaceSuite2* surface_suiteP;
  DRAWBOT_PathSuite1* path_suiteP;
  DRAWBOT_PenSuite1* pen_suiteP;
  DRAWBOT_ImageSuite1* image_suiteP;
};

inline constexpr const char* kDRAWBOT_DrawSuite = "DRAWBOT Draw Suite";
inline constexpr const char* kDRAWBOT_SupplierSuite = "DRAWBOT Supplier Suite";
inline constexpr const char* kDRAWBOT_SurfaceSuite = "DRAWBOT Surface Suite";
inline constexpr const char* kDRAWBOT_PathSuite = "DRAWBOT Path Suite";
inline constexpr const char* kDRAWBOT_PenSuite = "DRAWBOT Pen Suite";
inline constexpr const char* kDRAWBOT_ImageSuite = "DRAWBOT Image Suite";

inline constexpr std::int32_t kDRAWBOT_DrawSuite_Version1 = 1;
inline constexpr std::int32_t kDRAWBOT_SupplierSuite_Version1 = 1;
inline constexpr std::int32_t kDRAWBOT_SurfaceSuite_Version2 = 2;
inline constexpr std::int32_t kDRAWBOT_PathSuite_Version1 = 1;
inline constexpr std::int32_t kDRAWBOT_PenSuite_Version1 = 1;
inline constexpr std::int32_t kDRAWBOT_ImageSuite_Version1 = 1;

inline constexpr std::int32_t kDRAWBOT_FillType_EvenOdd = 0;
inline constexpr std::int32_t kDRAWBOT_FillType_Winding = 1;
inline constexpr std::int32_t kDRAWBOT_FillType_Default = 1;

inline constexpr std::int32_t kDRAWBOT_TextAlignment_Left = 0;
inline constexpr std::int32_t kDRAWBOT_TextAlignment_Center = 1;
inline constexpr std::int32_t kDRAWBOT_TextAlignment_Right = 2;
inline constexpr std::int32_t kDRAWBOT_TextAlignment_Default = 0;

inline constexpr std::int32_t kDRAWBOT_TextTruncation_None = 0;
inline constexpr std::int32_t kDRAWBOT_TextTruncation_End = 1;
inline constexpr std::int32_t kDRAWBOT_TextTruncation_EndEllipsis = 2;
inline constexpr std::int32_t kDRAWBOT_TextTruncation_PathEllipsis = 3;

inline constexpr std::int32_t kDRAWBOT_AntiAliasPolicy_None = 0;
inline constexpr std::int32_t kDRAWBOT_AntiAliasPolicy_Med = 1;
inline constexpr std::int32_t kDRAWBOT_AntiAliasPolicy_High = 2;
inline constexpr std::int32_t kDRAWBOT_AntiAliasPolicy_Default = 0;

inline constexpr std::int32_t kDRAWBOT_InterpolationPolicy_None = 0;
inline constexpr std::int32_t kDRAWBOT_InterpolationPolicy_Med = 1;
inline constexpr std::int32_t kDRAWBOT_InterpolationPolicy_High = 2;
inline constexpr std::int32_t kDRAWBOT_InterpolationPolicy_Default = 0;

inline constexpr std::int32_t kDRAWBOT_PixelLayout_24RGB = 0;
inline constexpr std::int32_t kDRAWBOT_PixelLayout_24BGR = 1;
inline constexpr std::int32_t kDRAWBOT_PixelLayout_32RGB = 2;
inline constexpr std::int32_t kDRAWBOT_PixelLayout_32BGR = 3;
inline constexpr std::int32_t kDRAWBOT_PixelLayout_32ARGB_Straight = 4;
inline constexpr std::int32_t kDRAWBOT_PixelLayout_32ARGB_Premul = 5;
inline constexpr std::int32_t kDRAWBOT_PixelLayout_32BGRA_Straight = 6;
inline constexpr std::int32_t kDRAWBOT_PixelLayout_32BGRA_Premul = 7;
