// cli/session/session_drawing.cpp — drawings as JSON.
#include "cli/session/session_drawing.h"

#include <charconv>
#include <cmath>

namespace cli {
namespace {

using Json = nlohmann::ordered_json;

// The double that prints like the float: 0.6667, not 0.666700005531311.
Json number(float value) {
  if (!std::isfinite(value)) return nullptr;
  char digits[32];
  const char* end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  double shortest = 0.0;
  std::from_chars(digits, end, shortest);
  if (shortest == std::floor(shortest) && std::abs(shortest) < 1e9) {
    return static_cast<std::int64_t>(shortest);
  }
  return shortest;
}

Json pathJson(const std::vector<host::DrawnFigure>& figures) {
  Json path = Json::array();
  for (const host::DrawnFigure& figure : figures) {
    Json points = Json::array();
    for (const host::DrawnPoint& point : figure.points) {
      points.push_back(Json::array({number(point.x), number(point.y)}));
    }
    path.push_back({{"points", std::move(points)}, {"closed", figure.closed}});
  }
  return path;
}

Json markJson(const host::DrawnPrimitive& mark) {
  const host::DrawnColour& colour = mark.colour;
  Json json{{"kind", host::nameOf(mark.kind)},
            {"colour", Json::array({number(colour.red), number(colour.green), number(colour.blue),
                                    number(colour.alpha)})}};
  switch (mark.kind) {
    case host::DrawnKind::rect:
      json["rect"] = Json::array({number(mark.rect.left), number(mark.rect.top),
                                  number(mark.rect.width), number(mark.rect.height)});
      break;
    case host::DrawnKind::stroke:
      json["width"] = number(mark.penWidth);
      json["path"] = pathJson(mark.figures);
      break;
    case host::DrawnKind::fill:
      json["rule"] = host::nameOf(mark.rule);
      json["path"] = pathJson(mark.figures);
      break;
    case host::DrawnKind::text:
      json["text"] = mark.text;
      json["size"] = number(mark.fontSize);
      json["align"] = host::nameOf(mark.align);
      json["at"] = Json::array({number(mark.origin.x), number(mark.origin.y)});
      break;
  }
  return json;
}

}  // namespace

Json drawingJson(const host::DrawingRecord& drawing) {
  Json marks = Json::array();
  for (const host::DrawnPrimitive& mark : drawing.primitives) marks.push_back(markJson(mark));
  return marks;
}

}  // namespace cli
