// host/drawing_record.cpp — drawings in words.
#include "host/drawing_record.h"

#include <charconv>

namespace host {
namespace {

std::string number(float value) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  return {digits, end};
}

std::string pointText(float x, float y) {
  return number(x) + "," + number(y);
}

std::string pathText(const std::vector<DrawnFigure>& figures) {
  std::string text;
  for (const DrawnFigure& figure : figures) {
    const char* step = " M ";
    for (const DrawnPoint& point : figure.points) {
      text += step + pointText(point.x, point.y);
      step = " L ";
    }
    if (figure.closed) text += " Z";
  }
  return text;
}

}  // namespace

const char* nameOf(DrawnKind kind) noexcept {
  switch (kind) {
    case DrawnKind::rect:
      return "rect";
    case DrawnKind::stroke:
      return "stroke";
    case DrawnKind::fill:
      return "fill";
    case DrawnKind::text:
      break;
  }
  return "text";
}

const char* nameOf(FillRule rule) noexcept {
  return rule == FillRule::evenOdd ? "even-odd" : "winding";
}

const char* nameOf(TextAlign align) noexcept {
  switch (align) {
    case TextAlign::left:
      return "left";
    case TextAlign::centre:
      return "centre";
    case TextAlign::right:
      break;
  }
  return "right";
}

std::string DrawnPrimitive::describe() const {
  std::string line = nameOf(kind);
  line += " (" + number(colour.red) + " " + number(colour.green) + " " + number(colour.blue) + " " +
          number(colour.alpha) + ")";
  switch (kind) {
    case DrawnKind::rect:
      return line + " " + pointText(rect.left, rect.top) + " " + number(rect.width) + "x" +
             number(rect.height);
    case DrawnKind::stroke:
      return line + " width " + number(penWidth) + pathText(figures);
    case DrawnKind::fill:
      return line + " " + nameOf(rule) + pathText(figures);
    case DrawnKind::text:
      break;
  }
  return line + " size " + number(fontSize) + " " + nameOf(align) + " " +
         pointText(origin.x, origin.y) + " \"" + text + "\"";
}

std::vector<std::string> DrawingRecord::texts() const {
  std::vector<std::string> found;
  for (const DrawnPrimitive& primitive : primitives) {
    if (primitive.kind == DrawnKind::text) found.push_back(primitive.text);
  }
  return found;
}

std::string DrawingRecord::describe() const {
  std::string all;
  for (const DrawnPrimitive& primitive : primitives) all += primitive.describe() + "\n";
  return all;
}

}  // namespace host
