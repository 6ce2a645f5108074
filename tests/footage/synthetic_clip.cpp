// tests/footage/synthetic_clip.cpp — clips made up after a recipe, whose cuts are known.
#include "tests/footage/synthetic_clip.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

#include "tests/footage/developing.h"
#include "tests/footage/scene.h"

namespace footage::test {
namespace {

constexpr int kShots = 5;

struct Shot {
  std::shared_ptr<const Place> place;
  double x = 0;
  double y = 0;
  double zoom = 1;
  double vx = 0;
  double vy = 0;
  double zoomRate = 1;
  double shake = 0;
  std::vector<std::pair<double, double>> jolts;  // a frame
  std::vector<Passer> passers;
  std::vector<int> times;  // the shot's clock of each of its frames

  CameraPose pose(int time) const {
    const auto jolt = jolts[static_cast<std::size_t>(time) % jolts.size()];
    return {x + vx * time + shake * jolt.first, y + vy * time + shake * jolt.second,
            zoom * std::pow(zoomRate, time), vx, vy};
  }
};

/// A frame of the clip before it is developed.
struct Moment {
  int shot = 0;
  int time = 0;
  double mixed = 0;  // share of the next shot, as its frame `nextTime`
  int nextTime = 0;
  double whip = 0;  // frame widths a frame that the camera is torn aside
  double whipped = 0;
  bool beginsShot = false;
  const Passer* crossing = nullptr;
  double crossed = 0;
  Treatment treatment;
};

class ClipMaker {
 public:
  ClipMaker(const ClipRecipe& recipe, std::uint64_t seed, int width)
      : recipe_(recipe),
        random_(seed ^ std::hash<std::string_view>{}(recipe.name)),
        width_(width) {}

  SyntheticClip make() {
    for (int i = 0; i < (recipe_.shortest > 60 ? 1 : kShots); ++i) shots_.push_back(makeShot());
    for (std::size_t i = 0; i < shots_.size(); ++i) addMoments(i);
    addFlicker();
    return render();
  }

 private:
  Motion motionOfAShot() {
    if (recipe_.motion != Motion::mixed) return recipe_.motion;
    constexpr std::array kAny{Motion::still, Motion::drift, Motion::pan, Motion::zoom,
                              Motion::handheld};
    return kAny[static_cast<std::size_t>(random_.whole(0, kAny.size() - 1))];
  }

  Shot makeShot() {
    Shot shot;
    if (recipe_.samePlace && !shots_.empty()) {
      shot.place = shots_.front().place;
    } else {
      PlaceStyle style;
      style.contrast = recipe_.contrast;
      style.roughness = recipe_.roughness;
      style.night = recipe_.night;
      style.shapes = random_.whole(20, 120);
      style.saturation = random_.between(0.1, 0.9);
      shot.place = std::make_shared<Place>(random_.seed(), style);
    }
    // Places of shots in one place are wide apart, but random enough to overlap in a corner.
    const double turn = static_cast<double>(shots_.size());
    shot.x = 1.45 * turn + random_.between(-0.15, 0.15);
    shot.y = 0.93 * turn + random_.between(-0.1, 0.1);
    shot.zoom = random_.between(0.8, 1.25);
    setMotion(shot);
    for (int i = 0; i < recipe_.passers; ++i) shot.passers.push_back(makePasser());
    const int frames = random_.whole(recipe_.shortest, recipe_.longest);
    for (int i = 0; i < frames; ++i) shot.times.push_back(i);
    return shot;
  }

  void setMotion(Shot& shot) {
    const auto walk = [&](double speed) {
      const double angle = random_.between(0, 6.2832);
      shot.vx = speed * std::cos(angle);
      shot.vy = 0.5 * speed * std::sin(angle);
    };
    switch (motionOfAShot()) {
      case Motion::drift:
        walk(random_.between(0.001, 0.006));
        break;
      case Motion::pan:
        walk(random_.between(0.01, 0.03));
        break;
      case Motion::fastPan:
        walk(random_.between(0.05, 0.10));
        break;
      case Motion::zoom:
        shot.zoomRate = 1 + random_.sign() * random_.between(0.01, 0.035);
        break;
      case Motion::handheld:
        walk(random_.between(0.0, 0.006));
        shot.shake = 0.006;
        break;
      case Motion::wild:
        walk(random_.between(0.0, 0.02));
        shot.shake = 0.025;
        break;
      default:
        break;
    }
    for (int i = 0; i < 200; ++i) shot.jolts.emplace_back(random_.normal(), random_.normal());
  }

  Passer makePasser() {
    Passer passer;
    passer.halfWidth = random_.between(0.03, 0.14);
    passer.halfHeight = random_.between(0.04, 0.2);
    passer.x = random_.unit();
    passer.y = random_.between(0.1, 0.5);
    passer.vx = random_.sign() * random_.between(0.0, 0.02);
    passer.vy = random_.between(-0.004, 0.004);
    passer.textureX = random_.between(0, 4);
    passer.textureY = random_.between(0, 4);
    return passer;
  }

  Joint jointAfter(std::size_t shot) {
    if (shot + 1 == shots_.size()) return Joint::cut;
    if (recipe_.joint != Joint::mixed) return recipe_.joint;
    constexpr std::array kAny{Joint::cut, Joint::cut, Joint::dissolve, Joint::fade, Joint::whip};
    return kAny[static_cast<std::size_t>(random_.whole(0, kAny.size() - 1))];
  }

  /// The frames of a shot with what happens in it, and the way over to the next.
  void addMoments(std::size_t index) {
    Shot& shot = shots_[index];
    const std::size_t first = moments_.size();
    const bool cutHere = index == 0 || hardCut_;
    for (int time : shot.times) {
      Moment moment;
      moment.shot = static_cast<int>(index);
      moment.time = time;
      moments_.push_back(moment);
    }
    moments_[first].beginsShot = cutHere && index > 0;
    const Joint joint = jointAfter(index);
    addEvent(first);
    hardCut_ = joint == Joint::cut;
    if (joint == Joint::dissolve) dissolve(index);
    if (joint == Joint::fade) fade(index);
    if (joint == Joint::whip) whip(index);
  }

  void dissolve(std::size_t index) {
    const int length = random_.whole(6, 16);
    const int end = shots_[index].times.back();
    for (int i = 1; i <= length; ++i) {
      Moment moment;
      moment.shot = static_cast<int>(index);
      moment.time = end + i;
      moment.mixed = static_cast<double>(i) / (length + 1);
      moment.nextTime = i - 1;
      moments_.push_back(moment);
    }
    std::vector<int>& next = shots_[index + 1].times;
    for (int& time : next) time += length;
  }

  void fade(std::size_t index) {
    const int length = random_.whole(6, 14);
    const auto add = [&](std::size_t shot, int time, double fade) {
      Moment moment;
      moment.shot = static_cast<int>(shot);
      moment.time = time;
      moment.treatment.fade = fade;
      moments_.push_back(moment);
    };
    const int end = shots_[index].times.back();
    for (int i = 1; i <= length; ++i) add(index, end + i, 1 - static_cast<double>(i) / length);
    const int dark = random_.whole(0, 8);
    for (int i = 0; i < dark; ++i) add(index, end + length, 0);
    for (int i = 1; i <= length; ++i) {
      add(index + 1, i - 1, static_cast<double>(i) / (length + 1));
    }
    for (int& time : shots_[index + 1].times) time += length;
  }

  /// The camera is torn aside and comes to rest elsewhere.
  void whip(std::size_t index) {
    const int length = random_.whole(5, 9);
    const double speed = random_.sign() * random_.between(0.3, 0.5);
    const int end = shots_[index].times.back();
    const auto speedAt = [&](int i) { return speed * std::sin(3.1416 * i / (length + 1)); };
    double way = 0;
    double left = 0;
    for (int i = 1; i <= length; ++i) left += speedAt(i);
    const CameraPose from = shots_[index].pose(end + length);
    Shot& next = shots_[index + 1];
    next.place = shots_[index].place;
    next.zoom = from.zoom;
    next.x = from.x + left;
    next.y = from.y;
    for (int i = 1; i <= length; ++i) {
      Moment moment;
      const bool leaving = 2 * i <= length;
      moment.shot = static_cast<int>(index + (leaving ? 0 : 1));
      moment.time = leaving ? end + i : 0;
      moment.whip = speedAt(i);
      way += moment.whip;
      left -= moment.whip;
      moment.whipped = leaving ? way : -left;
      moments_.push_back(moment);
    }
  }

  void addEvent(std::size_t first) {
    Event event = recipe_.event;
    if (event == Event::mixed) {
      constexpr std::array kAny{Event::flash,        Event::lightning, Event::passer,
                                Event::exposureJump, Event::oddFrames, Event::blackFrames,
                                Event::gateJump,     Event::lostFrames};
      event = kAny[static_cast<std::size_t>(random_.whole(0, kAny.size() - 1))];
    }
    const int count = static_cast<int>(moments_.size() - first);
    if (event == Event::none || count < 13) return;
    const int repeats = recipe_.shortest > 60 ? 5 : 1;
    for (int i = 0; i < repeats; ++i) {
      const int begin = count * i / repeats;
      const int end = count * (i + 1) / repeats;
      addEvent(event, first + static_cast<std::size_t>(random_.whole(begin + 3, end - 9)));
    }
  }

  void addEvent(Event event, std::size_t at) {
    const auto length = static_cast<std::size_t>(random_.whole(1, 4));
    const double side = random_.between(0, 1);
    const double strong = random_.between(0.5, 0.9);
    const double gain =
        random_.chance(0.5) ? random_.between(0.45, 0.75) : random_.between(1.3, 1.9);
    const double shift = random_.sign() * random_.between(0.03, 0.12);
    const auto treat = [&](std::size_t frames, auto change) {
      for (std::size_t i = at; i < std::min(at + frames, moments_.size()); ++i) {
        change(moments_[i].treatment);
      }
    };
    switch (event) {
      case Event::flash:
        treat(length, [&](Treatment& t) { t.white = strong * random_.between(0.7, 1); });
        break;
      case Event::lightning:
        treat(length, [&](Treatment& t) {
          t.sideGain = random_.between(2, 6);
          t.sideX = side;
        });
        break;
      case Event::exposureJump:
        treat(moments_.size(), [&](Treatment& t) { t.gain = {gain, gain, gain}; });
        break;
      case Event::oddFrames:
        treat(random_.chance(0.7) ? 1 : 2, [&](Treatment& t) { t.gain = {gain, gain, gain}; });
        break;
      case Event::blackFrames:
        treat(length, [](Treatment& t) { t.fade = 0; });
        break;
      case Event::gateJump:
        treat(random_.chance(0.7) ? 1 : 2, [&](Treatment& t) { t.shiftY = shift; });
        break;
      case Event::lostFrames: {
        const int lost = random_.whole(2, 4);
        for (std::size_t i = at; i < moments_.size(); ++i) moments_[i].time += lost;
        std::vector<int>& times = shots_[static_cast<std::size_t>(moments_[at].shot)].times;
        times.back() = moments_.back().time;
        break;
      }
      case Event::passer:
        cross(at);
        break;
      default:
        break;
    }
  }

  void cross(std::size_t at) {
    auto passer = std::make_unique<Passer>();
    passer->halfWidth = random_.between(0.6, 0.9);
    passer->halfHeight = 1.1;
    passer->y = 0.28;
    const int frames = random_.whole(9, 15);
    const double side = random_.sign();
    passer->x = side > 0 ? -passer->halfWidth : 1 + passer->halfWidth;
    passer->vx = side * (1 + 2 * passer->halfWidth) / frames;
    passer->textureX = random_.between(0, 4);
    passer->textureY = random_.between(0, 4);
    for (int i = 0; i < frames; ++i) {
      const std::size_t moment = at + static_cast<std::size_t>(i);
      if (moment >= moments_.size()) break;  // then it is cut off, and that is a cut like any other
      moments_[moment].crossing = passer.get();
      moments_[moment].crossed = i;
    }
    crossers_.push_back(std::move(passer));
  }

  void addFlicker() {
    const double phase = random_.between(0, 6);
    const double speed = random_.between(0.7, 2.6);
    const double side = random_.sign();
    for (std::size_t i = 0; i < moments_.size(); ++i) {
      Treatment& t = moments_[i].treatment;
      const auto gain = [&t](double factor) {
        for (double& channel : t.gain) channel *= factor;
      };
      switch (recipe_.flicker) {
        case Flicker::slight:
          gain(random_.between(0.9, 1.1));
          break;
        case Flicker::strong:
          gain(random_.between(0.6, 1.4));
          break;
        case Flicker::lamp:
          gain(1 + 0.25 * std::sin(phase + speed * static_cast<double>(i)));
          break;
        case Flicker::channels:
          for (double& channel : t.gain) channel *= random_.between(0.88, 1.12);
          break;
        case Flicker::local:
          if (t.sideGain == 1) {
            t.sideX = side > 0 ? 1 : 0;
            t.sideGain = random_.between(0.7, 1.4);
          }
          break;
        case Flicker::gamma:
          t.gamma = random_.between(0.8, 1.25);
          gain(random_.between(0.9, 1.1));
          break;
        case Flicker::film:
          gain(random_.between(0.8, 1.2));
          t.shiftY += 0.004 * random_.normal();
          break;
        default:
          break;
      }
    }
  }

  Frame draw(const Moment& moment) const {
    Frame frame(width_, width_ * 9 / 16);
    drawShot(static_cast<std::size_t>(moment.shot), moment.time, moment, frame);
    if (moment.mixed > 0) {
      Frame next(frame.width, frame.height);
      drawShot(static_cast<std::size_t>(moment.shot + 1), moment.nextTime, moment, next);
      for (std::size_t i = 0; i < frame.pixels.size(); ++i) {
        for (std::size_t c = 0; c < 3; ++c) {
          frame.pixels[i][c] +=
              static_cast<float>(moment.mixed) * (next.pixels[i][c] - frame.pixels[i][c]);
        }
      }
    }
    if (moment.crossing != nullptr) {
      drawPasser(*moment.crossing, moment.crossed,
                 *shots_[static_cast<std::size_t>(moment.shot)].place, frame);
    }
    return frame;
  }

  void drawShot(std::size_t index, int time, const Moment& moment, Frame& frame) const {
    const Shot& shot = shots_[index];
    CameraPose pose = shot.pose(time);
    pose.x += moment.whipped;
    pose.y += moment.treatment.shiftY;
    pose.blurX = 0.5 * (pose.blurX + moment.whip);
    drawPlace(*shot.place, pose, frame);
    for (Passer passer : shot.passers) {
      passer.x -= moment.whipped;
      passer.y -= moment.treatment.shiftY;
      drawPasser(passer, time, *shot.place, frame);
    }
  }

  /// Which moment each frame shows.
  std::vector<std::size_t> cadence() {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < moments_.size(); ++i) {
      int times = 1;
      if (recipe_.cadence == Cadence::pullDown) times = i % 2 == 0 ? 2 : 3;
      if (recipe_.cadence == Cadence::twos) times = 2;
      if (recipe_.cadence == Cadence::held && random_.chance(0.1)) times = random_.whole(2, 8);
      order.insert(order.end(), static_cast<std::size_t>(times), i);
    }
    return order;
  }

  SyntheticClip render() {
    SyntheticClip clip;
    clip.name = recipe_.name;
    std::size_t shown = moments_.size();
    for (std::size_t i : cadence()) {
      const Moment& moment = moments_[i];
      if (i == shown) {
        clip.frames.push_back(clip.frames.back());
        continue;
      }
      shown = i;
      if (moment.beginsShot) clip.cuts.push_back(static_cast<std::int64_t>(clip.frames.size()));
      clip.frames.push_back(
          develop(draw(moment), moment.treatment, recipe_.blackWhite, recipe_.grain, random_));
    }
    return clip;
  }

  const ClipRecipe& recipe_;
  RandomNumbers random_;
  int width_;
  std::vector<Shot> shots_;
  std::vector<Moment> moments_;
  std::vector<std::unique_ptr<Passer>> crossers_;
  bool hardCut_ = false;
};

}  // namespace

SyntheticClip makeClip(const ClipRecipe& recipe, std::uint64_t seed, int width) {
  return ClipMaker(recipe, seed, width).make();
}

}  // namespace footage::test
