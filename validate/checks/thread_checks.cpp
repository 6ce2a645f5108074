// validate/checks/thread_checks.cpp — renders beside the user interface, and beside each other.
#include <atomic>
#include <thread>

#include "host/error.h"
#include "host/panel.h"
#include "validate/checks/checks.h"
#include "validate/settings.h"
#include "validate/stage.h"

namespace validate {
namespace {

constexpr int kThreadRounds = 5;

// Renders every frame again and again and compares; for threads of their own.
void renderAndCompare(Trial& trial, Stage& stage, host::RenderCopy copy,
                      const std::vector<Pixels>& expected) {
  const host::Depth depth = stage.claims().depths.back();
  host::Image image;
  try {
    for (int round = 0; round < kThreadRounds; ++round) {
      for (std::size_t frame = 0; frame < expected.size(); ++frame) {
        copy.render(static_cast<std::int32_t>(frame), depth, image);
        if (pixelsOf(image) == expected[frame]) continue;
        trial.journal.violate("threads-differ", "frame " + std::to_string(frame) +
                                                    " is another picture on another thread");
      }
    }
  } catch (const host::Error& problem) {
    trial.journal.violate("command-failed", std::string("on another thread: ") + problem.what());
  }
}

std::vector<Pixels> renderQuietly(Stage& stage, host::Instance& instance) {
  std::vector<Pixels> pictures;
  for (std::int32_t frame = 0; frame < stage.layer().info().frameCount; ++frame) {
    if (auto picture = stage.render(instance, frame, stage.claims().depths.back())) {
      pictures.push_back(std::move(*picture));
    }
  }
  return pictures;
}

void uiBesideRender(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  if (!stage.claims().threadSafe) throw Skipped("the effect does not claim to be thread-safe");
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    const std::vector<Pixels> expected = renderQuietly(stage, instance);
    host::RenderCopy copy = instance.renderCopy(stage.claims().path);
    trial.journal.step("edit and draw on this thread while another one renders");
    std::thread renderer([&] { renderAndCompare(trial, stage, std::move(copy), expected); });
    stage.tolerate("edit and draw on this thread while another one renders", [&] {
      for (int round = 0; round < kThreadRounds; ++round) {
        for (const std::int32_t index : stage.claims().valued) {
          setValue(instance, index, anyValueOf(instance, index, trial.random));
        }
        if (stage.claims().panel) host::Panel(instance).draw();
        instance.save();
      }
    });
    renderer.join();
  });
  stage.close();
}

void clones(Trial& trial) {
  constexpr int kThreads = 4;
  Stage stage(trial);
  stage.setUp();
  if (!stage.claims().rendersThreaded) {
    throw Skipped("the effect does not claim to render on several threads");
  }
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    const std::vector<Pixels> expected = renderQuietly(stage, instance);
    trial.journal.step("render on several threads at once");
    std::vector<std::thread> renderers;
    for (int i = 0; i < kThreads; ++i) {
      renderers.emplace_back([&, copy = instance.renderCopy(stage.claims().path)]() mutable {
        renderAndCompare(trial, stage, std::move(copy), expected);
      });
    }
    for (std::thread& renderer : renderers) renderer.join();
  });
  stage.close();
}

}  // namespace

const Check kUiBesideRender{"ui-beside-render",
                            "Edits, the panel and saving go on while a copy of the instance "
                            "renders on another thread, and the pictures stay the same.",
                            uiBesideRender};
const Check kClones{"clones", "Copies of the instance render on four threads at once.", clones};

}  // namespace validate
