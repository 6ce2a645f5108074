// cli/render_pipeline.cpp — frames through the effect: several at once, written in order.
#include "cli/render_pipeline.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "cli/interrupt.h"
#include "cli/picture_queue.h"
#include "media/pixel_conversion.h"

namespace cli {
namespace {

struct Task {
  media::Picture original;
  RenderedFrame result;
  std::exception_ptr error;
  bool done = false;
};

class Workers {
 public:
  Workers(host::Instance& instance, ClipSource& source, const RenderPlan& plan)
      : source_(source), plan_(plan) {
    // All copies are made before any works: making one sends commands to the instance.
    for (int i = 0; i < plan.workers; ++i) copies_.push_back(instance.renderCopy(plan.path));
    try {
      for (host::RenderCopy& copy : copies_) threads_.emplace_back([this, &copy] { work(copy); });
    } catch (...) {
      stop();
      throw;
    }
  }
  ~Workers() { stop(); }
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  void submit(std::shared_ptr<Task> task) {
    {
      const std::lock_guard lock(mutex_);
      waiting_.push_back(std::move(task));
    }
    changed_.notify_all();
  }

  RenderedFrame& await(Task& task) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return task.done; });
    if (task.error) std::rethrow_exception(task.error);
    return task.result;
  }

 private:
  void stop() {
    {
      const std::lock_guard lock(mutex_);
      stop_ = true;
    }
    changed_.notify_all();
    for (std::thread& thread : threads_) thread.join();
    threads_.clear();
  }

  void work(host::RenderCopy& copy) {
    host::Image input;
    host::Image output;
    std::unique_lock lock(mutex_);
    while (true) {
      changed_.wait(lock, [this] { return stop_ || !waiting_.empty(); });
      if (stop_) return;
      const std::shared_ptr<Task> task = std::move(waiting_.front());
      waiting_.pop_front();
      lock.unlock();
      try {
        process(*task, copy, input, output);
      } catch (...) {
        task->error = std::current_exception();
      }
      lock.lock();
      task->done = true;
      changed_.notify_all();
    }
  }

  void process(Task& task, host::RenderCopy& copy, host::Image& input, host::Image& output) {
    RenderedFrame& result = task.result;
    const auto frame = result.frame;
    if (plan_.leaveAlone[static_cast<std::size_t>(frame)]) {
      if (input.empty())
        input = host::Image(source_.info().width, source_.info().height, plan_.depth);
      media::toArgb(task.original, viewOf(input));
      result.inputLevel = result.outputLevel = frameLevel(viewOf(input), plan_.area);
      result.untouched = true;
      result.picture = task.original;
      return;
    }
    source_.lend(frame, task.original, plan_.area);
    std::optional<double> level;
    try {
      copy.render(static_cast<std::int32_t>(frame), plan_.depth, output);
      level = source_.takeBack(frame);
    } catch (...) {
      source_.takeBack(frame);
      throw;
    }
    const media::ConstArgbView pixels = viewOf(std::as_const(output));
    result.outputLevel = frameLevel(pixels, plan_.area);
    result.inputLevel = level.value_or(result.outputLevel);
    result.untouched = media::isUnchanged(pixels, task.original);
    result.picture = result.untouched ? task.original : media::fromArgb(pixels, task.original);
  }

  ClipSource& source_;
  const RenderPlan& plan_;
  std::vector<host::RenderCopy> copies_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::shared_ptr<Task>> waiting_;
  bool stop_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace

std::int64_t renderFrames(host::Instance& instance, ClipSource& source, const RenderPlan& plan,
                          const std::function<void(RenderedFrame&)>& take) {
  source.endReading();
  Workers workers(instance, source, plan);
  PictureQueue pictures(source.reader(), plan.first, plan.last);
  std::deque<std::shared_ptr<Task>> inOrder;
  const auto most = static_cast<std::size_t>(2 * plan.workers + 2);
  std::int64_t handed = 0;
  bool ended = false;
  while (true) {
    while (!ended && inOrder.size() < most) {
      std::optional<media::Picture> picture = pictures.pop();
      if (!picture) {
        ended = true;
        break;
      }
      auto task = std::make_shared<Task>();
      task->result.frame = picture->index();
      task->original = std::move(*picture);
      inOrder.push_back(task);
      workers.submit(std::move(task));
    }
    if (inOrder.empty()) return handed;
    throwIfInterrupted();
    take(workers.await(*inOrder.front()));
    inOrder.pop_front();
    ++handed;
  }
}

}  // namespace cli
