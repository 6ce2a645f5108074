// tests/ui/draw_test.cpp — every mark of a draw in order, and every refused call.
#include "ui/draw.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/ui/recording_host.h"

namespace varilum::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Draw, PaintsBothGraphsInOrder) {
  RecordingHost host;
  host.analyze();
  host.state().currentHistogram.red[255] = 2;
  EXPECT_EQ(host.send(PF_Event_DRAW), 0);
  EXPECT_EQ(host.event.evt_out_flags, PF_EO_HANDLED_EVENT);
  EXPECT_THAT(host.described(),
              ElementsAre("rect (1 0 0.2) 10,20 400x332",            //
                          "rect (0 0 0.4) 18,32 339x139",            //
                          "rect (0.502 0.502 0.502) 19,33 337x137",  //
                          "text (0.6667 0.6667 0.6667) 10,28 'Histogram Graph'",
                          "stroke (0 0 0) 1 258 points",     //
                          "fill (1 1 1) rule 0 258 points",  //
                          // 120 x 337 / 255 = 158.6; 125 x 337 / 255 = 165.2
                          "stroke (0 0 0) 1 177,170 169,162 185,162 177,170",
                          "fill (0.8667 0.8667 0) rule 0 177,170 169,162 185,162 177,170",
                          "stroke (0 0 0) 1 184,171 176,179 192,179 184,171",
                          "fill (0 0.8667 0) rule 0 184,171 176,179 192,179 184,171",
                          "text (0.8667 0.8667 0) 20,44 'Input = 120.00'",
                          "text (0 0.8667 0) 20,54 'Desired = 125.00'",
                          // 19 characters: 359 - (57 - 3) x 2
                          "text (0.7333 0 0) 251,44 '0.20  % red clipped'",
                          "text (0.6667 0.6667 0.6667) 359,44 'frame 2'",
                          "text (0.6667 0.6667 0.6667) 359,54 '1000 of 2000 pixels analyzed'",
                          "text (0.6667 0.6667 0.6667) 359,64 '90% unclipped'",
                          "rect (0 0 0.4) 18,192 339x136",            //
                          "rect (0.502 0.502 0.502) 19,193 337x134",  //
                          "text (0.6667 0.6667 0.6667) 10,190 'Luminance Graph'",
                          "text (0.6667 0.6667 0.6667) 14,340 '0'",
                          "text (0.6667 0.6667 0.6667) 145.5,340 'Time in Frames'",
                          "text (0.6667 0.6667 0.6667) 353,340 '5'",
                          "stroke (0.8667 0.8667 0) 1 5 points",    //
                          "stroke (0 0.7333 0) 1 5 points",         //
                          "stroke (0.7333 0 0) 1 187,193 187,327",  //
                          "text (0.8667 0.8667 0) 20,204 'Input variance 10.00 '",
                          "text (0.6667 0.6667 0.6667) 359,194 '255   '",
                          "text (0.6667 0.6667 0.6667) 359,330 '0     '"));
}

TEST(Draw, UsesTheDefaultFontInItsSize) {
  RecordingHost host;
  host.analyze();
  host.send(PF_Event_DRAW);
  EXPECT_EQ(host.calls["NewDefaultFont"], 1);
  for (const Primitive& primitive : host.drawn) {
    if (primitive.kind != Primitive::Kind::text) continue;
    EXPECT_EQ(primitive.size, 10.0F);
  }
}

TEST(Draw, KeepsWhereTheMouseWillClick) {
  RecordingHost host;
  host.analyze();
  host.send(PF_Event_DRAW);
  EXPECT_EQ(host.state().panelRect, (Rect{10, 20, 410, 342}));
  EXPECT_EQ(host.state().plotRect, (Rect{19, 33, 356, 156}));
  EXPECT_EQ(host.state().inputMarkerRect, (Rect{169, 162, 186, 171}));
  EXPECT_EQ(host.state().desiredHandleRect, (Rect{176, 171, 193, 180}));
  EXPECT_EQ(double{host.state().currentInput}, 120.0);
  EXPECT_EQ(double{host.state().currentDesired}, 125.0);
  EXPECT_EQ(float{host.state().currentSpread}, 12.5F);
}

TEST(Draw, DrawsNothingWhereItIsNotWanted) {
  RecordingHost host;
  host.analyze();
  host.event.evt_in_flags = PF_EI_DONT_DRAW;
  EXPECT_EQ(host.send(PF_Event_DRAW), 0);
  EXPECT_EQ(host.event.evt_out_flags, PF_EO_HANDLED_EVENT);
  host.event.evt_in_flags = 0;
  host.event.effect_win.area = PF_EA_PARAM_TITLE;
  EXPECT_EQ(host.send(PF_Event_DRAW), 0);
  EXPECT_THAT(host.drawn, IsEmpty());
}

TEST(Draw, NeedsAllArrays) {
  for (int n = 1; n <= 5; ++n) {
    RecordingHost host;
    host.analyze();
    host.memory.refuseLock(1 + n);  // the first lock is the instance's own
    EXPECT_EQ(host.send(PF_Event_DRAW), 0) << n;
    EXPECT_THAT(host.drawn, IsEmpty()) << n;
    EXPECT_EQ(host.event.evt_out_flags, PF_EO_HANDLED_EVENT);
  }
}

TEST(Draw, DrawsNothingWithoutAnInstance) {
  RecordingHost host;
  void** handle = std::exchange(host.out.sequence_data, nullptr);
  EXPECT_EQ(host.send(PF_Event_DRAW), 0);
  EXPECT_THAT(host.drawn, IsEmpty());
  host.out.sequence_data = handle;
}

TEST(Draw, SaysThatTheSuitesAreMissing) {
  RecordingHost host;
  host.hideSuites = true;
  EXPECT_EQ(host.send(PF_Event_DRAW), 516);
  EXPECT_EQ(host.event.evt_out_flags, 0);
  EXPECT_EQ(host.out.out_flags, 0x100);
  EXPECT_STREQ(host.out.return_msg, "Not able to acquire AEFX Suite.");
  EXPECT_THAT(host.drawn, IsEmpty());
}

TEST(Draw, ALayerWithoutFramesHasEmptyGraphs) {
  RecordingHost host{0, 0};
  host.global.isAfterEffects = 0;
  ASSERT_EQ(host.state().frameCount, 0);
  EXPECT_EQ(host.send(PF_Event_DRAW), 0);
  EXPECT_THAT(host.texts(), ElementsAre("Histogram Graph", "frame 0", "Luminance Graph", "0",
                                        "Time in Frames", "0", "255   ", "0     "));
}

// Everything that a host can refuse while a panel is drawn, each call in turn.
class DrawRefusals : public ::testing::TestWithParam<const char*> {};

void prepareForRefusals(RecordingHost& host) {
  host.analyze();
  for (const std::int32_t index : {PARAM_SHOW_RED, PARAM_SHOW_GREEN, PARAM_SHOW_BLUE}) {
    host.param(index).u.bd.value = 1;
  }
  host.state().currentHistogram.red[255] = 10;
}

TEST_P(DrawRefusals, FirstErrorIsTheResultAndEverythingComesBack) {
  int count = 0;
  {
    RecordingHost host;
    prepareForRefusals(host);
    ASSERT_EQ(host.send(PF_Event_DRAW), 0);
    count = host.calls[GetParam()];
  }
  ASSERT_GT(count, 0);
  for (int n = 1; n <= count; ++n) {
    RecordingHost host;
    prepareForRefusals(host);
    host.refuse(GetParam(), n);
    const bool isSuite = std::string{GetParam()}.ends_with("Suite");
    EXPECT_EQ(host.send(PF_Event_DRAW), isSuite ? 516 : 4711) << GetParam() << " " << n;
    EXPECT_TRUE(host.refused);
    EXPECT_EQ(host.event.evt_out_flags, 0);
    EXPECT_EQ(host.outstanding(), 0) << GetParam() << " " << n;
    EXPECT_EQ(host.out.out_flags, isSuite ? 0x100 : 0);
  }
}

INSTANTIATE_TEST_SUITE_P(EveryCall, DrawRefusals,
                         ::testing::Values("AcquireSuite", "ReleaseSuite", "GetSupplier",
                                           "GetSurface", "PF_GetDrawingReference",
                                           "PF_AppGetBgColor", "GetDefaultFontSize",
                                           "NewDefaultFont", "NewPen", "NewBrush", "NewPath",
                                           "ReleaseObject", "PaintRect", "StrokePath", "FillPath",
                                           "DrawString", "MoveTo", "LineTo"),
                         [](const auto& call) { return std::string{call.param}; });

TEST(Draw, StopsDrawingAtTheFirstError) {
  RecordingHost host;
  host.analyze();
  host.refuse("FillPath", 1);
  EXPECT_EQ(host.send(PF_Event_DRAW), 4711);
  EXPECT_EQ(host.drawn.size(), 5U);  // the histogram's outline was the last
}

}  // namespace
}  // namespace varilum::test
