// tests/footage/clip_recipe.h — the kinds of clips that detection is judged by.
#pragma once

#include <span>
#include <string_view>

namespace footage::test {

enum class Motion { still, drift, pan, fastPan, zoom, handheld, wild, mixed };
enum class Flicker { none, slight, strong, lamp, channels, local, gamma, film };
/// Where one shot hands over to the next.
enum class Joint { cut, dissolve, fade, whip, mixed };
/// What happens within shots without being a cut.
enum class Event {
  none,
  flash,         ///< 1 to 4 frames all but white
  lightning,     ///< 1 to 4 frames lit from one side
  passer,        ///< something crosses and covers the whole frame
  exposureJump,  ///< brighter or darker from a frame on
  oddFrames,     ///< single frames exposed otherwise
  blackFrames,   ///< 1 to 4
  gateJump,      ///< the picture jumps up or down for a frame or two
  lostFrames,    ///< a few frames are missing
  mixed
};
/// Frames that repeat.
enum class Cadence { plain, pullDown, twos, held };

struct ClipRecipe {
  std::string_view name;
  Motion motion = Motion::mixed;
  Flicker flicker = Flicker::none;
  Joint joint = Joint::cut;
  Event event = Event::none;
  Cadence cadence = Cadence::plain;
  bool blackWhite = false;
  bool night = false;
  bool samePlace = false;  ///< all shots show parts of one place
  double contrast = 1;
  double roughness = 0.5;
  double grain = 1.5;  ///< deviation, levels
  int passers = 2;     ///< small things that move
  int shortest = 14;   ///< frames of a shot
  int longest = 34;
};

std::span<const ClipRecipe> clipRecipes();

}  // namespace footage::test
