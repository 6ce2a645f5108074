// tests/effect/fault_kinds.h — what a host may refuse, and the answers it may then give.
#pragma once

#include <cstdint>
#include <vector>

#include "host/faults.h"
#include "hostapi/commands.h"

namespace effect_test {

struct FaultKind {
  host::CallKind kind;
  const char* name;
  std::vector<std::int32_t> errors;  // each is tried at every call of the kind
};

// Errors of the application's general suites.
inline constexpr std::int32_t kGeneric = 1;
inline constexpr std::int32_t kBadParameter = 3;
inline constexpr std::int32_t kNoMemory = 4;
inline constexpr std::int32_t kWrongThread = 5;

// Errors of the suites for drawing.
inline constexpr std::int32_t kDrawingMemory = -108;
inline constexpr std::int32_t kDrawingParameter = 0x5061726D;  // 'Parm'
inline constexpr std::int32_t kNoSuchSuite = 0x53214664;       // 'S!Fd'

// Handles cannot be refused with an error: the address is null whatever the plan says.
inline const std::vector<FaultKind>& faultKinds() {
  using host::CallKind;
  using host::kGivesNothing;
  constexpr std::int32_t kStop = PF_Interrupt_CANCEL;
  constexpr std::int32_t kDamaged = PF_Err_INTERNAL_STRUCT_DAMAGED;
  constexpr std::int32_t kIndex = PF_Err_INVALID_INDEX;
  constexpr std::int32_t kType = PF_Err_UNRECOGNIZED_PARAM_TYPE;
  constexpr std::int32_t kRefused = PF_Err_BAD_CALLBACK_PARAM;
  static const std::vector<FaultKind> kinds{
      {CallKind::newHandle, "newHandle", {kNoMemory}},
      {CallKind::lockHandle, "lockHandle", {kNoMemory}},
      {CallKind::resizeHandle, "resizeHandle", {kNoMemory}},
      {CallKind::checkoutParam,
       "checkoutParam",
       {kNoMemory, kDamaged, kIndex, kRefused, kStop, kGivesNothing}},
      {CallKind::checkoutLayer,
       "checkoutLayer",
       {kNoMemory, kDamaged, kIndex, kRefused, kStop, kGivesNothing}},
      {CallKind::checkinParam, "checkinParam", {kDamaged, kRefused}},
      {CallKind::acquireSuite, "acquireSuite", {kNoSuchSuite, kGivesNothing}},
      {CallKind::addParam, "addParam", {kNoMemory, kType, kRefused}},
      {CallKind::registerUi, "registerUi", {kRefused, kNoMemory}},
      {CallKind::iterate, "iterate", {kNoMemory, kDamaged, kRefused, kStop}},
      {CallKind::fill, "fill", {kNoMemory, kDamaged, kRefused, kStop}},
      {CallKind::copy, "copy", {kNoMemory, kDamaged, kRefused, kStop}},
      {CallKind::progress, "progress", {kNoMemory, kDamaged, kStop}},
      {CallKind::infoText, "infoText", {kNoMemory, kDamaged}},
      {CallKind::guidMixIn, "guidMixIn", {kNoMemory, kRefused}},
      {CallKind::checkoutPixels,
       "checkoutPixels",
       {kNoMemory, kDamaged, kRefused, kStop, kGivesNothing}},
      {CallKind::checkoutOutput,
       "checkoutOutput",
       {kNoMemory, kDamaged, kRefused, kStop, kGivesNothing}},
      {CallKind::getPixelFormat, "getPixelFormat", {kRefused, kNoMemory, kGivesNothing}},
      {CallKind::updateParamUi, "updateParamUi", {kDamaged, kIndex, kRefused}},
      {CallKind::script, "script", {kGeneric, kNoMemory, kGivesNothing}},
      {CallKind::registerAegp, "registerAegp", {kGeneric, kNoMemory}},
      {CallKind::isRenderEngine, "isRenderEngine", {kDamaged, kRefused}},
      {CallKind::backgroundColour, "backgroundColour", {kDamaged, kRefused}},
      {CallKind::drawingReference,
       "drawingReference",
       {kRefused, kDrawingParameter, kGivesNothing}},
      {CallKind::fontSize, "fontSize", {kDrawingParameter, kDrawingMemory}},
      {CallKind::newDrawingObject, "newDrawingObject", {kDrawingMemory, kDrawingParameter}},
      {CallKind::pathCall, "pathCall", {kDrawingMemory, kDrawingParameter}},
      {CallKind::drawCall, "drawCall", {kDrawingMemory, kDrawingParameter}},
      {CallKind::asyncManager, "asyncManager", {kRefused, kGivesNothing}},
      {CallKind::newEffectRef, "newEffectRef", {kGeneric, kWrongThread, kGivesNothing}},
      {CallKind::renderOptions, "renderOptions", {kGeneric, kNoMemory, kGivesNothing}},
      {CallKind::asyncFrame, "asyncFrame", {kGeneric, kStop, kGivesNothing}},
      {CallKind::receiptWorld, "receiptWorld", {kBadParameter, kGeneric, kGivesNothing}},
      {CallKind::fillWorld, "fillWorld", {kBadParameter, kGeneric, kGivesNothing}},
  };
  return kinds;
}

}  // namespace effect_test
