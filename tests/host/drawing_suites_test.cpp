// tests/host/drawing_suites_test.cpp — what an effect draws is what the record holds.
#include <gmock/gmock.h>

#include "host/drawing_text.h"
#include "host/panel.h"
#include "host/suite_registry.h"
#include "hostapi/events.h"
#include "hostapi/suites/basic.h"
#include "hostapi/suites/custom_ui.h"
#include "hostapi/suites/drawbot.h"
#include "tests/host/test_effect_fixture.h"

namespace {

using host::DrawnKind;
using host::DrawnPrimitive;
using testing::HasSubstr;

constexpr DRAWBOT_ColorRGBA kRed{1.0F, 0.25F, 0.0F, 0.5F};
constexpr host::DrawnColour kRedDrawn{1.0F, 0.25F, 0.0F, 0.5F};

// The suites of one DRAW, as an effect gets at them.
struct Tools {
  const SPBasicSuite* basic = nullptr;
  const DRAWBOT_DrawbotSuite1* draw = nullptr;
  const DRAWBOT_SupplierSuite1* supplier = nullptr;
  const DRAWBOT_SurfaceSuite2* surface = nullptr;
  const DRAWBOT_PathSuite1* path = nullptr;
  DRAWBOT_DrawRef drawing = nullptr;
  DRAWBOT_SupplierRef supplierRef = nullptr;
  DRAWBOT_SurfaceRef surfaceRef = nullptr;

  template <class Suite>
  void acquire(const char* name, std::int32_t version, const Suite*& suite) {
    const void* table = nullptr;
    EXPECT_EQ(basic->AcquireSuite(name, version, &table), 0) << name;
    EXPECT_EQ(basic->ReleaseSuite(name, version), 0);
    suite = static_cast<const Suite*>(table);
  }

  explicit Tools(const TestCall& call) : basic(call.in->pica_basicP) {
    const PF_EffectCustomUISuite1* ui = nullptr;
    acquire(kPFEffectCustomUISuite, 1, ui);
    acquire("DRAWBOT Draw Suite", 1, draw);
    acquire("DRAWBOT Supplier Suite", 1, supplier);
    acquire("DRAWBOT Surface Suite", 2, surface);
    acquire("DRAWBOT Path Suite", 1, path);
    PF_Context** context = static_cast<PF_EventExtra*>(call.extra)->contextH;
    EXPECT_EQ(ui->PF_GetDrawingReference(context, &drawing), 0);
    EXPECT_EQ(draw->GetSupplier(drawing, &supplierRef), 0);
    EXPECT_EQ(draw->GetSurface(drawing, &surfaceRef), 0);
  }

  DRAWBOT_PathRef newPath() const {
    DRAWBOT_PathRef made = nullptr;
    EXPECT_EQ(supplier->NewPath(supplierRef, &made), 0);
    return made;
  }
  DRAWBOT_PenRef newPen(float width) const {
    DRAWBOT_PenRef made = nullptr;
    EXPECT_EQ(supplier->NewPen(supplierRef, &kRed, width, &made), 0);
    return made;
  }
  DRAWBOT_BrushRef newBrush() const {
    DRAWBOT_BrushRef made = nullptr;
    EXPECT_EQ(supplier->NewBrush(supplierRef, &kRed, &made), 0);
    return made;
  }
  template <class Ref>
  std::int32_t release(Ref ref) const {
    return supplier->ReleaseObject(reinterpret_cast<DRAWBOT_ObjectRef>(ref));
  }
};

class DrawingSuites : public TestEffect {
 protected:
  DrawingSuites() : effect(ae, module), instance(effect, source) {}

  // What is on the record when the effect draws like this.
  host::DrawingRecord drawn(const std::function<void(const Tools&)>& drawing,
                            host::PanelOptions options = {}) {
    on(PF_Cmd_EVENT, [&](const TestCall& call) {
      if (static_cast<PF_EventExtra*>(call.extra)->e_type == PF_Event_DRAW) drawing(Tools(call));
      return 0;
    });
    host::Panel panel(instance, options);
    const host::DrawingRecord record = panel.draw();
    return record;
  }

  host::Effect effect;
  host::Instance instance;
};

TEST_F(DrawingSuites, RectanglesAsPainted) {
  const auto record = drawn([](const Tools& tools) {
    const DRAWBOT_RectF32 rect{1.5F, 2.0F, 30.0F, 4.0F};
    EXPECT_EQ(tools.surface->PaintRect(tools.surfaceRef, &kRed, &rect), 0);
  });
  DrawnPrimitive expected;
  expected.kind = DrawnKind::rect;
  expected.colour = kRedDrawn;
  expected.rect = {1.5F, 2.0F, 30.0F, 4.0F};
  ASSERT_EQ(record.primitives.size(), 1U);
  EXPECT_EQ(record.primitives[0], expected);
  EXPECT_EQ(record.describe(), "rect (1 0.25 0 0.5) 1.5,2 30x4\n");
}

TEST_F(DrawingSuites, PathsAsBuiltInBothWaysOfPainting) {
  const auto record = drawn([](const Tools& tools) {
    const DRAWBOT_PathRef path = tools.newPath();
    EXPECT_EQ(tools.path->MoveTo(path, 1, 2), 0);
    EXPECT_EQ(tools.path->LineTo(path, 3, 4), 0);
    EXPECT_EQ(tools.path->MoveTo(path, 5, 6), 0);
    EXPECT_EQ(tools.path->LineTo(path, 7, 8), 0);
    EXPECT_EQ(tools.path->LineTo(path, 9, 8), 0);
    EXPECT_EQ(tools.path->Close(path), 0);
    const DRAWBOT_PenRef pen = tools.newPen(2.5F);
    const DRAWBOT_BrushRef brush = tools.newBrush();
    EXPECT_EQ(tools.surface->StrokePath(tools.surfaceRef, pen, path), 0);
    EXPECT_EQ(tools.surface->FillPath(tools.surfaceRef, brush, path, 0), 0);
    EXPECT_EQ(tools.surface->FillPath(tools.surfaceRef, brush, path, 1), 0);
    EXPECT_EQ(tools.release(pen), 0);
    EXPECT_EQ(tools.release(brush), 0);
    EXPECT_EQ(tools.release(path), 0);
  });
  EXPECT_EQ(record.describe(),
            "stroke (1 0.25 0 0.5) width 2.5 M 1,2 L 3,4 M 5,6 L 7,8 L 9,8 Z\n"
            "fill (1 0.25 0 0.5) even-odd M 1,2 L 3,4 M 5,6 L 7,8 L 9,8 Z\n"
            "fill (1 0.25 0 0.5) winding M 1,2 L 3,4 M 5,6 L 7,8 L 9,8 Z\n");
}

TEST_F(DrawingSuites, APathPaintedKeepsItsShapeWhenItGrowsAfterwards) {
  const auto record = drawn([](const Tools& tools) {
    const DRAWBOT_PathRef path = tools.newPath();
    const DRAWBOT_PenRef pen = tools.newPen(1);
    tools.path->MoveTo(path, 0, 0);
    tools.path->LineTo(path, 1, 0);
    tools.surface->StrokePath(tools.surfaceRef, pen, path);
    tools.path->LineTo(path, 2, 0);
    tools.release(pen);
    tools.release(path);
  });
  EXPECT_EQ(record.describe(), "stroke (1 0.25 0 0.5) width 1 M 0,0 L 1,0\n");
}

TEST_F(DrawingSuites, TextsInTheirAlignments) {
  host::PanelOptions options;
  options.fontSize = 17.0F;
  const auto record = drawn(
      [](const Tools& tools) {
        float size = 0.0F;
        EXPECT_EQ(tools.supplier->GetDefaultFontSize(tools.supplierRef, &size), 0);
        EXPECT_EQ(size, 17.0F);
        DRAWBOT_FontRef font = nullptr;
        EXPECT_EQ(tools.supplier->NewDefaultFont(tools.supplierRef, 9.5F, &font), 0);
        const DRAWBOT_BrushRef brush = tools.newBrush();
        const std::uint16_t text[] = {'5', ' ', 0x20AC, 0xD83D, 0xDE00, 0};
        const DRAWBOT_PointF32 origin{10, 20};
        for (const std::int32_t alignment : {0, 1, 2}) {
          EXPECT_EQ(tools.surface->DrawString(tools.surfaceRef, brush, font, text, &origin,
                                              alignment, 0, 0),
                    0);
        }
        tools.release(brush);
        tools.release(font);
      },
      options);
  EXPECT_EQ(record.describe(),
            "text (1 0.25 0 0.5) size 9.5 left 10,20 \"5 \xE2\x82\xAC\xF0\x9F\x98\x80\"\n"
            "text (1 0.25 0 0.5) size 9.5 centre 10,20 \"5 \xE2\x82\xAC\xF0\x9F\x98\x80\"\n"
            "text (1 0.25 0 0.5) size 9.5 right 10,20 \"5 \xE2\x82\xAC\xF0\x9F\x98\x80\"\n");
}

TEST_F(DrawingSuites, LoneSurrogatesBecomeReplacements) {
  const std::uint16_t text[] = {0xDC00, 'a', 0xD800, 'b', 0xD800, 0};
  EXPECT_EQ(host::fromUtf16(text, 100),
            "\xEF\xBF\xBD"
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD");
  EXPECT_EQ(host::fromUtf16(text, 2),
            "\xEF\xBF\xBD"
            "a");
}

TEST_F(DrawingSuites, WhatIsNotReleasedIsReportedAndCounted) {
  drawn([](const Tools& tools) {
    tools.newPath();
    tools.newPen(1);
  });
  EXPECT_THAT(listener.complaints(), HasSubstr("DRAW did not release 2 drawing objects"));
  EXPECT_EQ(ae.outstanding().drawingObjects, 2);
}

TEST_F(DrawingSuites, RetainedObjectsNeedAsManyReleases) {
  drawn([](const Tools& tools) {
    const DRAWBOT_PathRef path = tools.newPath();
    EXPECT_EQ(tools.supplier->RetainObject(reinterpret_cast<DRAWBOT_ObjectRef>(path)), 0);
    EXPECT_EQ(tools.release(path), 0);
    EXPECT_EQ(tools.path->MoveTo(path, 0, 0), 0);
    EXPECT_EQ(tools.release(path), 0);
    EXPECT_NE(tools.release(path), 0);
    EXPECT_NE(tools.path->MoveTo(path, 0, 0), 0);
  });
  EXPECT_EQ(ae.outstanding().drawingObjects, 0);
  EXPECT_THAT(listener.complaints(), HasSubstr("released already"));
}

TEST_F(DrawingSuites, TheHostsOwnPartsAreNotReleased) {
  drawn([](const Tools& tools) {
    EXPECT_NE(tools.release(tools.supplierRef), 0);
    EXPECT_NE(tools.release(tools.surfaceRef), 0);
  });
  EXPECT_EQ(ae.outstanding().drawingObjects, 0);
}

TEST_F(DrawingSuites, APenIsNoBrushAndNothingIsNoPath) {
  const auto record = drawn([](const Tools& tools) {
    const DRAWBOT_PenRef pen = tools.newPen(1);
    const DRAWBOT_PathRef path = tools.newPath();
    const auto brush = reinterpret_cast<DRAWBOT_BrushRef>(pen);
    EXPECT_NE(tools.surface->FillPath(tools.surfaceRef, brush, path, 0), 0);
    EXPECT_NE(tools.surface->StrokePath(tools.surfaceRef, pen, nullptr), 0);
    EXPECT_NE(tools.path->LineTo(path, 1, 1), 0) << "a path begins with a move";
    tools.release(pen);
    tools.release(path);
  });
  EXPECT_TRUE(record.primitives.empty());
}

TEST_F(DrawingSuites, DrawingIsOverWhenTheEventIs) {
  DRAWBOT_SurfaceRef kept = nullptr;
  const DRAWBOT_SurfaceSuite2* surface = nullptr;
  std::int32_t late = 0;
  on(PF_Cmd_EVENT, [&](const TestCall& call) {
    const std::int32_t type = static_cast<PF_EventExtra*>(call.extra)->e_type;
    if (type == PF_Event_DRAW) {
      const Tools tools(call);
      kept = tools.surfaceRef;
      surface = tools.surface;
    } else if (type == PF_Event_IDLE) {
      const DRAWBOT_RectF32 rect{0, 0, 1, 1};
      late = surface->PaintRect(kept, &kRed, &rect);
    }
    return 0;
  });
  host::Panel panel(instance);
  panel.draw();
  panel.idle();
  EXPECT_EQ(late, kSPBadParameterError);
  EXPECT_TRUE(panel.shown().primitives.empty());
}

TEST_F(DrawingSuites, NoReferenceOutsideDraws) {
  std::int32_t result = 0;
  auto drawing = reinterpret_cast<DRAWBOT_DrawRef>(&result);
  on(PF_Cmd_EVENT, [&](const TestCall& call) {
    const auto& extra = *static_cast<PF_EventExtra*>(call.extra);
    if (extra.e_type != PF_Event_IDLE) return 0;
    const void* table = nullptr;
    call.in->pica_basicP->AcquireSuite(kPFEffectCustomUISuite, 1, &table);
    result = static_cast<const PF_EffectCustomUISuite1*>(table)->PF_GetDrawingReference(
        extra.contextH, &drawing);
    return call.in->pica_basicP->ReleaseSuite(kPFEffectCustomUISuite, 1);
  });
  host::Panel panel(instance);
  panel.idle();
  EXPECT_EQ(result, PF_Err_BAD_CALLBACK_PARAM);
  EXPECT_EQ(drawing, nullptr);
}

TEST_F(DrawingSuites, EachKindOfCallCanBeRefused) {
  using host::CallKind;
  for (const CallKind kind :
       {CallKind::newDrawingObject, CallKind::pathCall, CallKind::drawCall, CallKind::fontSize}) {
    SCOPED_TRACE(static_cast<int>(kind));
    std::vector<std::int32_t> results;
    drawn([&](const Tools& tools) {
      const DRAWBOT_PathRef path = tools.newPath();
      ae.faults().arm(kind, 1, 4711);
      DRAWBOT_BrushRef brush = nullptr;
      const DRAWBOT_RectF32 rect{0, 0, 1, 1};
      float size = 0;
      results = {tools.supplier->NewBrush(tools.supplierRef, &kRed, &brush),
                 tools.path->MoveTo(path, 1, 1),
                 tools.surface->PaintRect(tools.surfaceRef, &kRed, &rect),
                 tools.supplier->GetDefaultFontSize(tools.supplierRef, &size)};
      ae.faults().disarm();
      if (brush != nullptr) tools.release(brush);
      tools.release(path);
    });
    EXPECT_EQ(std::count(results.begin(), results.end(), 4711), 1);
    EXPECT_EQ(std::count(results.begin(), results.end(), 0), 3);
  }
}

TEST_F(DrawingSuites, EveryRoleHasThem) {
  for (const host::Role role : {host::Role::premiere, host::Role::other}) {
    EXPECT_GE(host::findSuite(role, kDRAWBOT_DrawSuite, 1), 0);
    EXPECT_GE(host::findSuite(role, kDRAWBOT_SurfaceSuite, 1), 0);
    EXPECT_GE(host::findSuite(role, kDRAWBOT_SurfaceSuite, 2), 0);
    EXPECT_LT(host::findSuite(role, kDRAWBOT_SurfaceSuite, 3), 0);
  }
}

}  // namespace
