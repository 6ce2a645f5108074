// fuzz/image_visit.h — a saved image opened on some layer, and all that a user then does with it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace fuzz {

// The first bytes of an input; the image follows. Every value is allowed.
struct VisitPlan {
  std::uint8_t host;
  std::uint8_t frames;       // of the layer: a few, or hundreds and thousands
  std::uint8_t width;        // of the layer less one, modulo 48
  std::uint8_t height;       // likewise
  std::uint8_t depth;        // modulo 3
  std::uint8_t repairs;      // Repair bits: what is put right before it is opened
  std::uint8_t imageFrames;  // frames and slots to put right for, modulo 8
  std::uint8_t imageSlots;   // modulo 4; 3 stands for the 30 that the effect itself has
  std::uint8_t frame;        // the time cursor, modulo the layer's frames
  std::uint8_t acts;         // Act bits
  std::uint8_t parameter;    // edited, modulo the number of parameters
  std::uint8_t method;       // of correction, modulo 4; 0 leaves it
  std::int16_t value;        // that the edited parameter gets, in eighths
  std::int16_t x;            // of the mouse
  std::int16_t y;
  std::int16_t toX;
  std::int16_t toY;
  std::uint8_t nextFrames;  // of the layer that the instance saved again is opened on
  std::uint8_t nextWidth;
};
static_assert(sizeof(VisitPlan) == 24);

enum Repair : std::uint8_t {
  kRepairVersion = 1,
  kRepairSizes = 2,    // counts, sizes and length agree
  kRepairRecords = 4,  // ... with records in the image
  kRepairSlots = 8,    // ... with histograms in it
  kRepairFlattened = 16,
  kRepairLayer = 32,  // the layer has the image's frames
};

enum Act : std::uint8_t {
  kDraw = 1,
  kClick = 2,
  kDrag = 4,
  kRender = 8,
  kRenderClassic = 16,
  kAnalyze = 32,
  kEdit = 64,
  kReopen = 128,
};

// Reads the plan, opens the image as one of `version` and carries the plan out. Ends the program
// when something breaks a rule; returns otherwise.
void visitImage(std::span<const std::uint8_t> input, std::int32_t version);

}  // namespace fuzz
