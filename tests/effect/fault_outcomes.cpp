// tests/effect/fault_outcomes.cpp — how visits are to end when the host refuses a call.
#include "tests/effect/fault_outcomes.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace effect_test {
namespace {

struct Row {
  const char* kind;
  const char* visits;  // with blanks between them
  std::vector<std::string> outcomes;
};

const std::vector<Row>& rows() {
  static const std::vector<Row> all{
      {"newHandle",
       "SetUp Flags ClassicRender8 ClassicRender16 ClassicPassedOver ClassicHalf ClassicNotice "
       "Reopen13 "
       "PremiereSetUp",
       {"512", R"(E "Not enough memory to analyze this layer.")", "done"}},
      {"newHandle",
       "Edit",
       {"512", "altered", "done", R"(host: The effect cannot read the value "110".)",
        R"(host: The effect cannot read the value "90".)"}},
      {"newHandle",
       "Render8 Render16 RenderFloat RenderKeyframes RenderNotice8 RenderNoticeFloat",
       {"512", "E", R"(E "Not enough memory to analyze this layer.")", "done"}},
      {"newHandle", "Analyze AnalyzeSubrectangle Clear Save", {"512", "done"}},
      {"newHandle",
       "Reopen14 ReopenDamaged",
       {"512", R"(E "Not enough memory to analyze this layer.")", "done",
        R"(host: The value of "Luminance" is damaged.)"}},
      {"newHandle",
       "PremiereEdit",
       {"512", "altered", "done", R"(done "Not enough memory to analyze this layer.")",
        R"(host: The effect cannot read the value "110".)",
        R"(host: The effect cannot read the value "90".)"}},
      {"newHandle",
       "PremiereAnalyze PremiereClear PremiereSave",
       {"512", "done", R"(done "Not enough memory to analyze this layer.")"}},
      {"newHandle",
       "ClosePanel Close PremiereRender PremiereRenderPassedOver PremiereRenderNotice "
       "PremiereClose",
       {"done"}},
      {"newHandle",
       "Panel PanelUnanalyzed PanelOtherFrame Click Drag PremierePanel PremiereClick "
       "PremiereDrag",
       {"altered", "done"}},
      {"newHandle",
       "PremiereReopen14",
       {"512", R"(E "Not enough memory to analyze this layer.")", "done",
        R"(done "Not enough memory to analyze this layer.")",
        R"(host: The value of "Luminance" is damaged.)"}},
      {"newHandle",
       "PremiereReopen13",
       {"512", R"(E "Not enough memory to analyze this layer.")", "done",
        R"(done "Not enough memory to analyze this layer.")"}},
      {"newHandle", "AnalyzeForKeyframes", {"512", "altered", "done"}},
      {"lockHandle",
       "SetUp PremiereSetUp",
       {"512", "E", R"(E "Not enough memory to analyze this layer.")", "altered", "done"}},
      {"lockHandle",
       "Edit",
       {"512", "altered", "done", R"(host: The effect cannot read the value "110".)",
        R"(host: The effect cannot read the value "90".)", "no data"}},
      {"lockHandle",
       "Flags ClassicRender8 ClassicRender16 ClassicPassedOver ClassicHalf ClassicNotice Reopen13",
       {"512", R"(E "Not enough memory to analyze this layer.")", "altered", "done", "no data"}},
      {"lockHandle",
       "Render8 Render16 RenderFloat RenderKeyframes RenderNotice8 RenderNoticeFloat",
       {"512", "E", R"(E "Not enough memory to analyze this layer.")", "altered", "done",
        "no data"}},
      {"lockHandle",
       "Analyze AnalyzeSubrectangle AnalyzeForKeyframes Clear Save",
       {"512", "altered", "done", "no data"}},
      {"lockHandle",
       "Reopen14 ReopenDamaged",
       {"512", R"(E "Not enough memory to analyze this layer.")", "altered", "done",
        R"(host: The value of "Luminance" is damaged.)", "no data"}},
      {"lockHandle",
       "PremiereEdit",
       {"512", "altered", "done", R"(done "Not enough memory to analyze this layer.")",
        R"(host: The effect cannot read the value "110".)",
        R"(host: The effect cannot read the value "90".)"}},
      {"lockHandle",
       "PremiereAnalyze PremiereClear PremiereSave",
       {"512", "altered", "done", R"(done "Not enough memory to analyze this layer.")"}},
      {"lockHandle",
       "Panel PanelUnanalyzed PanelOtherFrame Click Drag PremiereRender "
       "PremiereRenderPassedOver PremiereRenderNotice PremierePanel PremiereClick "
       "PremiereDrag",
       {"altered", "done"}},
      {"lockHandle",
       "PremiereReopen14",
       {"512", R"(E "Not enough memory to analyze this layer.")", "altered", "done",
        R"(done "Not enough memory to analyze this layer.")",
        R"(host: The value of "Luminance" is damaged.)"}},
      {"lockHandle",
       "PremiereReopen13",
       {"512", R"(E "Not enough memory to analyze this layer.")", "altered", "done",
        R"(done "Not enough memory to analyze this layer.")"}},
      {"lockHandle", "ClosePanel Close PremiereClose", {"done"}},
      {"checkoutParam", "Edit PanelUnanalyzed PremiereEdit PremiereAnalyze", {"altered", "done"}},
      {"checkoutParam",
       "Render8 Render16 RenderFloat RenderKeyframes RenderNotice8 RenderNoticeFloat",
       {"E", "done"}},
      {"checkoutParam", "Click Drag PremiereClick PremiereDrag", {"done"}},
      {"checkoutParam",
       "Analyze AnalyzeSubrectangle AnalyzeForKeyframes",
       {"E", "altered", "done"}},
      {"checkoutLayer",
       "Render8 Render16 RenderFloat RenderKeyframes RenderNotice8 RenderNoticeFloat",
       {"E"}},
      {"checkoutLayer", "PremiereAnalyze", {"altered"}},
      {"checkoutLayer", "Analyze AnalyzeSubrectangle AnalyzeForKeyframes", {"E", "altered"}},
      {"checkinParam", "Edit Click Drag PremiereEdit PremiereClick PremiereDrag", {"done"}},
      {"checkinParam",
       "Analyze AnalyzeSubrectangle AnalyzeForKeyframes Render8 Render16 RenderFloat "
       "RenderKeyframes RenderNotice8 RenderNoticeFloat",
       {"E"}},
      {"checkinParam", "PanelUnanalyzed PremiereAnalyze", {"altered", "done"}},
      {"acquireSuite", "SetUp", {"516", "done"}},
      {"acquireSuite",
       "Edit Analyze AnalyzeSubrectangle AnalyzeForKeyframes Clear Flags Render8 Render16 "
       "RenderFloat RenderKeyframes RenderNotice8 RenderNoticeFloat Reopen14 Reopen13 "
       "ReopenDamaged PremiereEdit PremiereClear PremiereReopen14 PremiereReopen13",
       {"516"}},
      {"acquireSuite", "PremiereSetUp PremiereAnalyze", {"516", "altered", "done"}},
      {"acquireSuite",
       "PremierePanel PremiereClick PremiereDrag",
       {R"(516 "Not able to acquire AEFX Suite.")"}},
      {"acquireSuite", "Close PremiereClose", {"done"}},
      {"acquireSuite",
       "Panel PanelOtherFrame",
       {"516", R"(altered "Not able to acquire AEFX Suite.")",
        R"(done "Not able to acquire AEFX Suite.")"}},
      {"acquireSuite",
       "PanelUnanalyzed",
       {"516", "altered", R"(altered "Not able to acquire AEFX Suite.")"}},
      {"acquireSuite", "Click Drag", {"516", R"(done "Not able to acquire AEFX Suite.")"}},
      {"addParam", "SetUp PremiereSetUp", {"E"}},
      {"registerUi", "SetUp PremiereSetUp", {"E"}},
      {"iterate",
       "Render8 Render16 RenderFloat RenderKeyframes RenderNotice8 RenderNoticeFloat "
       "ClassicRender8 ClassicRender16 ClassicHalf ClassicNotice PremiereRender "
       "PremiereRenderNotice",
       {"E"}},
      {"fill", "ClassicHalf", {"E"}},
      {"copy", "ClassicPassedOver PremiereRenderPassedOver", {"E"}},
      {"progress",
       "Render8 Render16 RenderFloat RenderKeyframes RenderNotice8 RenderNoticeFloat "
       "ClassicRender8 ClassicRender16 ClassicHalf ClassicNotice PremiereRender "
       "PremiereRenderNotice",
       {"E"}},
      {"progress", "Analyze AnalyzeSubrectangle AnalyzeForKeyframes", {"E", "altered", "done"}},
      {"infoText", "Analyze AnalyzeSubrectangle AnalyzeForKeyframes", {"E"}},
      {"guidMixIn",
       "Render8 Render16 RenderFloat RenderKeyframes RenderNotice8 RenderNoticeFloat",
       {"E"}},
      {"checkoutPixels",
       "Render8 Render16 RenderFloat RenderKeyframes RenderNotice8 RenderNoticeFloat",
       {"516", "E"}},
      {"checkoutOutput",
       "Render8 Render16 RenderFloat RenderKeyframes RenderNotice8 RenderNoticeFloat",
       {"516", "E"}},
      {"getPixelFormat",
       "Render8 Render16 RenderFloat RenderKeyframes RenderNotice8 RenderNoticeFloat",
       {"516", "E"}},
      {"getPixelFormat", "PanelUnanalyzed PremiereAnalyze", {"altered", "done"}},
      {"getPixelFormat", "Analyze AnalyzeSubrectangle AnalyzeForKeyframes", {"E", "done"}},
      {"updateParamUi",
       "SetUp Edit Analyze AnalyzeSubrectangle AnalyzeForKeyframes Clear Flags "
       "PanelOtherFrame Click Drag Reopen14 Reopen13 ReopenDamaged",
       {"E", "done"}},
      {"updateParamUi",
       "Panel PanelUnanalyzed PremiereSetUp PremiereEdit PremiereAnalyze PremiereClear "
       "PremiereReopen14 PremiereReopen13",
       {"E"}},
      {"script", "SetUp", {"altered"}},
      {"registerAegp", "SetUp", {"E"}},
      {"isRenderEngine", "SetUp PremiereSetUp", {"E"}},
      {"backgroundColour", "PremierePanel PremiereClick PremiereDrag", {"E"}},
      {"backgroundColour", "Panel PanelOtherFrame", {"altered", "done"}},
      {"backgroundColour", "PanelUnanalyzed", {"altered"}},
      {"backgroundColour", "Click Drag", {"done"}},
      {"drawingReference", "PremierePanel", {"516", "E", "altered", "done"}},
      {"drawingReference", "PremiereClick PremiereDrag", {"516", "E", "done"}},
      {"drawingReference", "Panel PanelOtherFrame", {"altered", "done"}},
      {"drawingReference", "PanelUnanalyzed", {"altered"}},
      {"drawingReference", "Click Drag", {"done"}},
      {"fontSize", "PremierePanel PremiereClick PremiereDrag", {"E"}},
      {"fontSize", "Panel PanelOtherFrame", {"altered", "done"}},
      {"fontSize", "PanelUnanalyzed", {"altered"}},
      {"fontSize", "Click Drag", {"done"}},
      {"newDrawingObject", "PremierePanel PremiereClick PremiereDrag", {"E"}},
      {"newDrawingObject", "Panel PanelUnanalyzed PanelOtherFrame", {"altered", "done"}},
      {"newDrawingObject", "Click Drag", {"done"}},
      {"pathCall", "PremierePanel PremiereClick PremiereDrag", {"E"}},
      {"pathCall", "Panel PanelUnanalyzed PanelOtherFrame", {"altered", "done"}},
      {"pathCall", "Click Drag", {"done"}},
      {"drawCall", "PremierePanel PremiereClick PremiereDrag", {"E"}},
      {"drawCall", "Panel PanelUnanalyzed PanelOtherFrame", {"altered", "done"}},
      {"drawCall", "Click Drag", {"done"}},
      {"asyncManager", "PanelUnanalyzed", {"altered"}},
      {"newEffectRef", "PanelUnanalyzed", {"altered"}},
      {"renderOptions", "PanelUnanalyzed", {"altered"}},
      {"asyncFrame", "PanelUnanalyzed", {"altered"}},
      {"receiptWorld", "PanelUnanalyzed", {"altered"}},
      {"fillWorld", "PanelUnanalyzed", {"altered"}},
  };
  return all;
}

bool contains(const char* visits, std::string_view visit) {
  std::istringstream names{visits};
  return std::count(std::istream_iterator<std::string>{names}, {}, visit) > 0;
}

}  // namespace

std::vector<std::string> expectedOutcomes(std::string_view visit, std::string_view kind) {
  for (const Row& row : rows()) {
    if (kind == row.kind && contains(row.visits, visit)) return row.outcomes;
  }
  return {};
}

bool isExpectedRemark(std::string_view text) {
  // The data without arrays stays locked, so that nobody takes it for good.
  return text.ends_with(" gave back locked sequence data") ||
         // The effect cannot copy a value without memory: the host hands out none.
         text.starts_with("the effect could not make an arbitrary value: ") ||
         text == "an arbitrary value is marked changed, and is not there" ||
         // Without the suite for handles the global data cannot be given back.
         text == "GLOBAL_SETDOWN gave 516" || text == "GLOBAL_SETDOWN left the global data behind";
}

}  // namespace effect_test
