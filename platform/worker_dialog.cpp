// platform/worker_dialog.cpp — a modal progress dialog with a worker thread behind it.
#include "platform/worker_dialog.h"

#include "platform/listener_dialog.h"
#ifdef _WIN32
#include "platform/cup_dialog.h"
#include "platform/headless.h"
#endif

namespace varilum {
namespace {

WorkerDialog* whoListens(WorkerBlock& block) noexcept {
  return block.stopRequested.load() != 0 ? nullptr : block.dialog.load();
}

}  // namespace

void sendStatus(WorkerBlock& block, const char* text) noexcept {
  if (WorkerDialog* dialog = whoListens(block)) dialog->takeStatus(text);
}

void sendPosition(WorkerBlock& block, std::int32_t position) noexcept {
  if (WorkerDialog* dialog = whoListens(block)) dialog->takePosition(position);
}

void sendProgress(WorkerBlock& block, const char* text, std::int32_t position) noexcept {
  sendStatus(block, text);
  sendPosition(block, position);
}

std::unique_ptr<WorkerDialog> makeWorkerDialog(const PF_InData& in, void* parent,
                                               bool (*worker)(WorkerBlock&), void* context,
                                               const char* title, bool allowCancel) {
  auto listener = std::make_unique<ListenerDialog>(in, worker, context, title, allowCancel);
#ifdef _WIN32
  if (!listener->hasListener() && !isHeadless()) {
    return std::make_unique<CUPDialog>(static_cast<HWND>(parent), worker, context, title,
                                       allowCancel);
  }
#else
  static_cast<void>(parent);
#endif
  return listener;
}

}  // namespace varilum
