// host/drawing_objects.h — pens, brushes, fonts and paths that effects hold.
#pragma once

#include <cstdint>
#include <vector>

#include "host/drawing_record.h"

namespace host {

class HostState;

enum class DrawingObjectKind : std::uint8_t { pen, brush, font, path };

struct DrawingObject {
  DrawingObjectKind kind = DrawingObjectKind::pen;
  DrawnColour colour;                // pen, brush
  float size = 0.0F;                 // pen: width; font: size
  std::vector<DrawnFigure> figures;  // path
  std::int32_t references = 1;
};

// Stands for an object or a surface in the effect's hands: an address that nothing lives at, never
// used again.
using DrawingName = std::uintptr_t;
DrawingName newDrawingName() noexcept;

// One table for the whole process. [any thread; one object is used by one thread at a time]

// Counted in the owner's accounts. Throws std::bad_alloc.
DrawingName keepDrawingObject(HostState& owner, DrawingObject object);
// Null for what is no live object of this kind.
DrawingObject* findDrawingObject(DrawingName name, DrawingObjectKind kind) noexcept;
// False for what is no live object.
bool retainDrawingObject(DrawingName name) noexcept;
bool releaseDrawingObject(DrawingName name) noexcept;
// At the end of a host: forgets what nobody released.
void abandonDrawingObjects(const HostState& owner) noexcept;

}  // namespace host
