// validate/checks/render_checks.cpp — frames, at each depth that the effect claims.
#include <algorithm>
#include <cstring>

#include "host/instance_state.h"
#include "validate/checks/checks.h"
#include "validate/stage.h"

namespace validate {
namespace {

// Guards stand between the rows and around the picture.
StageOptions guarded() {
  StageOptions options;
  options.host.stress.rowPadding = 16;
  return options;
}

void renderAll(Trial& trial, host::Depth depth) {
  StageOptions options = guarded();
  options.layer.depth = depth;
  Stage stage(trial, options);
  stage.setUp();
  const std::vector<host::Depth>& depths = stage.claims().depths;
  if (std::find(depths.begin(), depths.end(), depth) == depths.end()) {
    throw Skipped(std::string("the effect does not claim to render ") + nameOf(depth));
  }
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    for (std::int32_t frame = 0; frame < options.layer.frames; ++frame) {
      stage.render(instance, frame, depth);
    }
    trial.journal.step("remove");
  });
  stage.close();
}

void repeatable(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  stage.attempt("apply to a layer", [&] {
    for (const host::Depth depth : stage.claims().depths) {
      host::Instance instance(stage.effect(), stage.layer());
      host::Instance other(stage.effect(), stage.layer());
      const auto first = stage.render(instance, 1, depth);
      stage.render(instance, 2, depth);
      const auto again = stage.render(instance, 1, depth);
      const auto elsewhere = stage.render(other, 1, depth);
      trial.journal.step(std::string("compare at ") + nameOf(depth));
      if (first && again && *first != *again) {
        trial.journal.violate("not-repeatable", "frame 1 is another picture the second time");
      }
      if (first && elsewhere && *first != *elsewhere) {
        trial.journal.violate("not-repeatable", "frame 1 is another picture in a fresh instance");
      }
    }
  });
  stage.close();
}

// Renders over a picture that holds this byte everywhere.
Pixels renderOver(Stage& stage, host::Instance& instance, host::Depth depth, int byte) {
  const host::LayerInfo& info = stage.layer().info();
  host::Image image(info.width, info.height, depth);
  for (std::int32_t y = 0; y < info.height; ++y) {
    std::memset(image.row(y), byte, static_cast<std::size_t>(image.rowBytes()));
  }
  instance.render(1, depth, image, stage.claims().path);
  return pixelsOf(image);
}

void fillsOutput(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    for (const host::Depth depth : stage.claims().depths) {
      stage.attempt(std::string("render over rubbish at ") + nameOf(depth), [&] {
        const Pixels dark = renderOver(stage, instance, depth, 0x11);
        const Pixels bright = renderOver(stage, instance, depth, 0x3C);
        const auto pixel = static_cast<std::size_t>(host::pixelBytes(depth));
        std::size_t rubbish = 0;
        for (std::size_t i = 0; i < dark.size(); i += pixel) {
          if (std::memcmp(&dark[i], &bright[i], pixel) != 0) ++rubbish;
        }
        if (rubbish == 0) return;
        trial.journal.violate("unwritten-output", std::to_string(rubbish) + " of " +
                                                      std::to_string(dark.size() / pixel) +
                                                      " pixels show what was there before");
      });
    }
  });
  stage.close();
}

void anyOrder(Trial& trial) {
  StageOptions options;
  options.layer.frames = 6;
  Stage stage(trial, options);
  stage.setUp();
  stage.attempt("apply to a layer", [&] {
    host::Instance forwards(stage.effect(), stage.layer());
    host::Instance shuffled(stage.effect(), stage.layer());
    const host::Depth depth = stage.claims().depths.back();
    std::vector<std::optional<Pixels>> pictures;
    std::vector<std::int32_t> order;
    for (std::int32_t frame = 0; frame < options.layer.frames; ++frame) {
      pictures.push_back(stage.render(forwards, frame, depth));
      order.push_back(frame);
    }
    for (std::size_t i = order.size(); i > 1; --i)
      std::swap(order[i - 1], order[trial.random() % i]);
    for (const std::int32_t frame : order) {
      const auto picture = stage.render(shuffled, frame, depth);
      const auto& expected = pictures[static_cast<std::size_t>(frame)];
      if (!picture || !expected || *picture == *expected) continue;
      trial.journal.violate("not-repeatable", "frame " + std::to_string(frame) +
                                                  " depends on the order of rendering");
    }
  });
  stage.close();
}

void oddSizes(Trial& trial) {
  constexpr std::int32_t kSizes[][2] = {{1, 1}, {1, 37}, {41, 1}, {3, 3}, {17, 5}, {2, 64}};
  for (const auto& [width, height] : kSizes) {
    StageOptions options = guarded();
    options.layer.width = width;
    options.layer.height = height;
    options.layer.frames = 2;
    Stage stage(trial, options);
    stage.setUp();
    const std::string size = std::to_string(width) + " x " + std::to_string(height);
    stage.attempt("apply to a layer of " + size, [&] {
      host::Instance instance(stage.effect(), stage.layer());
      for (const host::Depth depth : stage.claims().depths) {
        stage.attempt("render " + size + " at " + nameOf(depth), [&] {
          host::Image image;
          instance.render(1, depth, image, stage.claims().path);
        });
      }
    });
    stage.close();
  }
}

void render8(Trial& trial) {
  renderAll(trial, host::Depth::bits8);
}
void render16(Trial& trial) {
  renderAll(trial, host::Depth::bits16);
}
void renderFloat(Trial& trial) {
  renderAll(trial, host::Depth::float32);
}

}  // namespace

const Check kRender8{"render-8", "8-bit frames render, and nothing outside of them is written.",
                     render8};
const Check kRender16{"render-16", "16-bit frames render, and nothing outside of them is written.",
                      render16};
const Check kRenderFloat{
    "render-float", "Float frames render, and nothing outside of them is written.", renderFloat};
const Check kRepeatable{"repeatable",
                        "The same frame is the same picture, later on and in another instance.",
                        repeatable};
const Check kFillsOutput{"fills-output", "Every pixel of the output is written.", fillsOutput};
const Check kAnyOrder{"any-order", "Frames rendered in random order are those rendered forwards.",
                      anyOrder};
const Check kOddSizes{"odd-sizes", "Layers of one pixel, one row and one column render.", oddSizes};

}  // namespace validate
