// host/drawing_record.h — what an effect drew: every primitive with its colour, geometry and text.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host {

// Channels 0..1.
struct DrawnColour {
  float red = 0.0F;
  float green = 0.0F;
  float blue = 0.0F;
  float alpha = 1.0F;

  friend bool operator==(const DrawnColour&, const DrawnColour&) = default;
};

// In the panel's logical pixels, y downwards.
struct DrawnPoint {
  float x = 0.0F;
  float y = 0.0F;

  friend bool operator==(const DrawnPoint&, const DrawnPoint&) = default;
};

struct DrawnRect {
  float left = 0.0F;
  float top = 0.0F;
  float width = 0.0F;
  float height = 0.0F;

  friend bool operator==(const DrawnRect&, const DrawnRect&) = default;
};

// Part of a path: from a move to the next one.
struct DrawnFigure {
  std::vector<DrawnPoint> points;
  bool closed = false;

  friend bool operator==(const DrawnFigure&, const DrawnFigure&) = default;
};

enum class DrawnKind : std::uint8_t { rect, stroke, fill, text };
enum class FillRule : std::uint8_t { evenOdd, winding };
enum class TextAlign : std::uint8_t { left, centre, right };

// One call that leaves a mark. What does not belong to its kind keeps its default.
struct DrawnPrimitive {
  DrawnKind kind = DrawnKind::rect;
  DrawnColour colour;
  DrawnRect rect;                    // rect
  std::vector<DrawnFigure> figures;  // stroke, fill
  float penWidth = 0.0F;             // stroke
  FillRule rule = FillRule::evenOdd;
  std::string text;   // UTF-8
  DrawnPoint origin;  // text: where it is aligned to, on the baseline
  float fontSize = 0.0F;
  TextAlign align = TextAlign::left;

  friend bool operator==(const DrawnPrimitive&, const DrawnPrimitive&) = default;
  // One line, numbers as short as they are exact.
  std::string describe() const;
};

// In the order of the calls.
struct DrawingRecord {
  std::vector<DrawnPrimitive> primitives;

  friend bool operator==(const DrawingRecord&, const DrawingRecord&) = default;
  std::vector<std::string> texts() const;
  // One line a primitive.
  std::string describe() const;
};

const char* nameOf(DrawnKind kind) noexcept;
const char* nameOf(FillRule rule) noexcept;
const char* nameOf(TextAlign align) noexcept;

}  // namespace host
