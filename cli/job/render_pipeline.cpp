// cli/job/render_pipeline.cpp — frames through the effect: several at once, written in order.
#include "cli/job/render_pipeline.h"

#include <cmath>
#include <condition_variable>
#include <deque>
#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "cli/terminal/interrupt.h"
#include "media/pixel_conversion.h"
#include "media/stored_level.h"

namespace cli {
namespace {

// Frames go through RGB, which cuts off what is blacker than black and purer than pure. One that
// comes out as it went in is better off without; but where the others around it change in level by
// more than this on the way, it would stand out.
constexpr double kUnseen = 0.05;

// One instance's render copies, as many as there are workers.
struct Copies {
  std::vector<host::RenderCopy> all;
  std::vector<host::RenderCopy*> idle;
  int tasks = 0;  // that are under way; of the calling thread
};

struct Task {
  FrameRoute route;
  Copies* copies = nullptr;  // null: the effect is not asked
  RenderedFrame result;
  std::exception_ptr error;
  bool done = false;
};

// The copies of the instances that have frames under way. Making and dropping a copy sends commands
// to the instance, so all of it happens on the calling thread.
class CopyStore {
 public:
  explicit CopyStore(const RenderPlan& plan) : plan_(plan) {}

  Copies& take(std::size_t part) {
    if (current_ != part) {
      const std::size_t before = std::exchange(current_, part);
      dropIfIdle(before);
    }
    std::unique_ptr<Copies>& copies = copies_[part];
    if (!copies) {
      auto made = std::make_unique<Copies>();
      const RenderPart& wanted = plan_.parts[part];
      for (int i = 0; i < plan_.workers; ++i) {
        made->all.push_back(wanted.instance->renderCopy(wanted.path));
      }
      for (host::RenderCopy& copy : made->all) made->idle.push_back(&copy);
      copies = std::move(made);
    }
    ++copies->tasks;
    return *copies;
  }

  void giveBack(std::size_t part) {
    --copies_.at(part)->tasks;
    if (part != current_) dropIfIdle(part);
  }

 private:
  void dropIfIdle(std::size_t part) {
    const auto found = copies_.find(part);
    if (found != copies_.end() && found->second->tasks == 0) copies_.erase(found);
  }

  const RenderPlan& plan_;
  std::map<std::size_t, std::unique_ptr<Copies>> copies_;
  std::size_t current_ = static_cast<std::size_t>(-1);
};

class Workers {
 public:
  Workers(ClipSource& source, const RenderPlan& plan) : source_(source), plan_(plan) {
    try {
      for (int i = 0; i < plan.workers; ++i) threads_.emplace_back([this] { work(); });
    } catch (...) {
      stop();
      throw;
    }
  }
  ~Workers() { stop(); }
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  void submit(Task& task) {
    {
      const std::lock_guard lock(mutex_);
      waiting_.push_back(&task);
    }
    submitted_.notify_one();
  }

  RenderedFrame& await(Task& task) {
    std::unique_lock lock(mutex_);
    finished_.wait(lock, [&] { return task.done; });
    if (task.error) std::rethrow_exception(task.error);
    return task.result;
  }

 private:
  void stop() {
    {
      const std::lock_guard lock(mutex_);
      stop_ = true;
    }
    submitted_.notify_all();
    for (std::thread& thread : threads_) thread.join();
    threads_.clear();
  }

  void work() {
    host::Image input;
    host::Image output;
    std::unique_lock lock(mutex_);
    while (true) {
      submitted_.wait(lock, [this] { return stop_ || !waiting_.empty(); });
      if (stop_) return;
      Task& task = *waiting_.front();
      waiting_.pop_front();
      host::RenderCopy* copy = nullptr;
      if (task.copies != nullptr) {
        copy = task.copies->idle.back();
        task.copies->idle.pop_back();
      }
      lock.unlock();
      try {
        if (copy != nullptr) {
          render(task, *copy, output);
        } else {
          leaveAlone(task, input);
        }
      } catch (...) {
        task.error = std::current_exception();
      }
      lock.lock();
      if (copy != nullptr) task.copies->idle.push_back(copy);
      task.done = true;
      finished_.notify_one();
    }
  }

  void leaveAlone(Task& task, host::Image& input) {
    if (input.empty()) {
      input = host::Image(source_.info().width, source_.info().height, plan_.depth);
    }
    RenderedFrame& result = task.result;
    const media::ArgbView pixels = viewOf(input);
    LevelMeter meter(pixels, task.route.area);
    media::toArgb(result.original, pixels, {}, [&meter](int y) { meter.add(y); });
    result.inputLevel = result.outputLevel = meter.level();
    result.untouched = true;
    result.picture = result.original;
  }

  void render(Task& task, host::RenderCopy& copy, host::Image& output) {
    RenderedFrame& result = task.result;
    const PictureLoan loan(source_, task.route.readAs.value_or(result.frame), result.original,
                           task.route.area);
    copy.render(task.route.layerFrame, plan_.depth, output);
    const media::ConstArgbView pixels = viewOf(std::as_const(output));
    if (media::isUnchanged(pixels, result.original)) {
      result.picture = media::fromArgb(pixels, result.original);
      result.outputLevel = frameLevel(pixels, task.route.area);
      result.untouched = std::abs(media::storedLevel(result.picture) -
                                  media::storedLevel(result.original)) < kUnseen;
      if (result.untouched) result.picture = result.original;
    } else {
      LevelMeter meter(pixels, task.route.area);
      const auto measure = [&meter](int y) { meter.add(y); };
      result.picture = media::fromArgb(pixels, result.original, {}, measure);
      result.outputLevel = meter.level();
    }
    result.inputLevel = loan.level().value_or(result.outputLevel);
  }

  ClipSource& source_;
  const RenderPlan& plan_;
  std::mutex mutex_;
  std::condition_variable submitted_;
  std::condition_variable finished_;
  std::deque<Task*> waiting_;
  bool stop_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace

std::int64_t renderFrames(ClipSource& source, const RenderPlan& plan,
                          const std::function<void(RenderedFrame&)>& take) {
  CopyStore copies(plan);
  std::deque<Task> inOrder;  // a deque's elements stay where they are
  Workers workers(source, plan);
  const auto most = static_cast<std::size_t>(2 * plan.workers + 2);
  std::int64_t next = plan.first;
  std::int64_t last = plan.last;
  std::int64_t handed = 0;
  while (true) {
    for (; next <= last && inOrder.size() < most; ++next) {
      media::Picture picture;
      try {
        picture = source.picture(next);
      } catch (const ClipBreaksOff&) {
        last = next - 1;
        break;
      }
      Task& task = inOrder.emplace_back();
      task.result.frame = next;
      task.result.original = std::move(picture);
      task.route = plan.route(next);
      if (task.route.part) task.copies = &copies.take(*task.route.part);
      workers.submit(task);
    }
    if (inOrder.empty()) break;
    throwIfInterrupted();
    Task& task = inOrder.front();
    take(workers.await(task));
    if (task.route.part) copies.giveBack(*task.route.part);
    inOrder.pop_front();
    ++handed;
  }
  source.endReading();
  return handed;
}

}  // namespace cli
