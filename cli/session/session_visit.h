// cli/session/session_visit.h — an editor's visit to one clip: what is open, and what is done to
// it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/project/project_file.h"
#include "cli/terminal/console.h"
#include "cli/workbench.h"
#include "host/listener.h"
#include "host/panel.h"

namespace cli {

using Json = nlohmann::ordered_json;

/// Messages of the effect, collected; analysis stopped on demand.
class SessionListener final : public host::Listener {
 public:
  void message(host::MessageKind kind, std::string_view caption, std::string_view text) override;
  bool progress(std::int32_t done, std::int32_t total) override;

  std::optional<std::int32_t> stopAfter;  ///< analysed frames
  std::vector<std::string> messages;
};

/// A clip or project with its panel open. Each doing gives what is to be answered; throws what the
/// host, the reader and Failure throw.
class Visit {
 public:
  /// `path`: a project or a clip; `input`: where a project's clip is, when it has moved; `shot`:
  /// which of a project's shots is visited, from 1. Frames count in that shot's pictures.
  Visit(const std::string& path, const std::string& input, std::int32_t shot,
        const WorkOptions& work, const host::PanelOptions& look, Console& console,
        SessionListener& listener);
  ~Visit();
  Visit(const Visit&) = delete;
  Visit& operator=(const Visit&) = delete;

  Json describe();
  Json parameters();

  Json value(const std::string& parameter, std::optional<std::int32_t> frame);
  /// Values as words: a number, on or off, X,Y of points, texts of arbitrary data.
  Json set(const std::string& parameter, const std::string& value);
  Json setKey(const std::string& parameter, std::int32_t frame, const std::string& value);
  Json removeKeys(const std::string& parameter);
  Json press(const std::string& button);
  Json undo();

  Json goTo(std::int32_t frame);
  Json placeCursor(std::int32_t frame);

  host::Panel& panel() noexcept { return *panel_; }
  /// click: the button goes down and up again; down, drag and up: one after the other.
  enum class MouseAction { click, down, drag, up, hover };
  Json mouse(MouseAction action, const host::Mouse& mouse);

  /// A frame's mean brightness and the CRC-32 of its pixels.
  Json render(std::int32_t frame, std::optional<host::Depth> depth);
  Json save(const std::filesystem::path& path, bool force);

 private:
  host::Parameter parameter(const std::string& name);
  std::int32_t kindOf(const host::Parameter& parameter);
  Json valueJson(const host::Parameter& parameter, std::int32_t frame);
  /// Keeps the parameters as they are, for undo.
  void remember();
  template <class Edit>
  Json edit(const std::string& name, Edit change);

  host::Instance& instance() noexcept { return bench_->shot(shot_).instance(); }

  ClipOptions clip_;
  std::optional<Project> project_;
  std::unique_ptr<Workbench> bench_;
  std::size_t shot_ = 0;
  std::unique_ptr<host::Panel> panel_;
  std::vector<std::vector<host::SavedParameter>> past_;
  std::int32_t frame_ = 0;
};

}  // namespace cli
