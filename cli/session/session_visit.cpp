// cli/session/session_visit.cpp — an editor's visit to one clip.
#include "cli/session/session_visit.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstring>

#include "cli/error.h"
#include "cli/job/frame_level.h"
#include "cli/project/crc32.h"
#include "cli/project/new_project.h"
#include "cli/project/project_clip.h"
#include "cli/terminal/interrupt.h"
#include "host/error.h"
#include "hostapi/parameters.h"

namespace cli {
namespace {

const char* kindName(std::int32_t type) {
  switch (type) {
    case PF_Param_SLIDER:
    case PF_Param_FIX_SLIDER:
    case PF_Param_FLOAT_SLIDER:
      return "slider";
    case PF_Param_CHECKBOX:
      return "checkbox";
    case PF_Param_POPUP:
      return "popup";
    case PF_Param_POINT:
      return "point";
    case PF_Param_BUTTON:
      return "button";
    case PF_Param_ARBITRARY_DATA:
      return "arbitrary";
    case PF_Param_GROUP_START:
    case PF_Param_GROUP_END:
      return "group";
    default:
      return "other";
  }
}

double parseNumber(const std::string& word) {
  if (word == "on") return 1.0;
  if (word == "off") return 0.0;
  double value = 0.0;
  const char* end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, value);
  if (error != std::errc{} || stop != end) {
    throw Failure(fmt::format("'{}' is no number, and not on or off.", word));
  }
  return value;
}

host::Point parsePoint(const std::string& word) {
  const std::size_t comma = word.find(',');
  if (comma == std::string::npos) throw Failure(fmt::format("'{}' is no point X,Y.", word));
  return {parseNumber(word.substr(0, comma)), parseNumber(word.substr(comma + 1))};
}

Json changedNames(host::Effect& effect, const std::vector<std::int32_t>& indices) {
  Json names = Json::array();
  for (const std::int32_t index : indices) {
    names.push_back(effect.parameters()[static_cast<std::size_t>(index)].name);
  }
  return names;
}

}  // namespace

void SessionListener::message(host::MessageKind, std::string_view, std::string_view text) {
  messages.emplace_back(text);
}

// The effect's count runs one ahead of the frames it has done.
bool SessionListener::progress(std::int32_t done, std::int32_t) {
  return !interrupted() && (!stopAfter || done <= *stopAfter);
}

Visit::Visit(const std::string& path, const std::string& input, std::int32_t shot,
             const WorkOptions& work, const host::PanelOptions& look, Console& console,
             SessionListener& listener) {
  if (looksLikeProject(path) || path.ends_with(".varilum")) {
    project_ = readProject(path);
    clip_ = locateClip(path, *project_, input);
  } else {
    clip_.path = path;
  }
  bench_ = std::make_unique<Workbench>(clip_, work, console);
  bench_->host().setListener(&listener);
  if (project_) {
    requireSameClip(*project_, bench_->source());
    bench_->open(*project_);
  }
  if (shot < 1 || static_cast<std::size_t>(shot) > bench_->shotCount()) {
    throw Failure(fmt::format("There is no shot {}; there are {}.", shot, bench_->shotCount()));
  }
  shot_ = static_cast<std::size_t>(shot) - 1;
  panel_ = std::make_unique<host::Panel>(instance(), look);
}

Visit::~Visit() = default;

Json Visit::describe() {
  Shot& shot = bench_->shot(shot_);
  const host::LayerInfo& info = shot.layer().info();
  const Levels levels = shot.levels();
  Json answer{{"clip", clip_.path},
              {"width", info.width},
              {"height", info.height},
              {"frames", info.frameCount},
              {"analyzed", std::count(levels.analyzed.begin(), levels.analyzed.end(), true)},
              {"complete", levels.complete},
              {"status", levels.status}};
  if (bench_->shotCount() > 1) {
    answer["shot"] = {{"number", shot_ + 1},
                      {"of", bench_->shotCount()},
                      {"first", shot.frames().first()},
                      {"last", shot.frames().last()}};
  }
  return answer;
}

host::Parameter Visit::parameter(const std::string& name) {
  std::int32_t index = -1;
  const char* const end = name.data() + name.size();
  const bool isNumber = std::from_chars(name.data(), end, index).ptr == end;
  return isNumber && index >= 0 ? instance().param(index) : instance().param(name);
}

std::int32_t Visit::kindOf(const host::Parameter& parameter) {
  return bench_->effect()
      .parameters()[static_cast<std::size_t>(parameter.index())]
      .definition.param_type;
}

Json Visit::valueJson(const host::Parameter& parameter, std::int32_t frame) {
  switch (kindOf(parameter)) {
    case PF_Param_POINT: {
      const host::Point point = parameter.point(frame);
      return Json::array({point.x, point.y});
    }
    case PF_Param_ARBITRARY_DATA:
      return parameter.text(frame);
    case PF_Param_CHECKBOX:
      return parameter.value(frame) != 0.0;
    case PF_Param_SLIDER:
    case PF_Param_FIX_SLIDER:
    case PF_Param_FLOAT_SLIDER:
    case PF_Param_POPUP:
      return parameter.value(frame);
    default:
      return nullptr;
  }
}

Json Visit::parameters() {
  Json all = Json::array();
  const auto& declared = bench_->effect().parameters();
  for (std::size_t i = 1; i < declared.size(); ++i) {
    const host::Parameter parameter = instance().param(static_cast<std::int32_t>(i));
    Json row{{"index", i},
             {"name", declared[i].name},
             {"label", parameter.label()},
             {"kind", kindName(declared[i].definition.param_type)}};
    const Json value = valueJson(parameter, frame_);
    if (!value.is_null()) {
      row["value"] = value;
      row["keyframes"] = parameter.keyframeCount();
    }
    if (!declared[i].buttonText.empty()) row["text"] = declared[i].buttonText;
    if (!parameter.enabled()) row["disabled"] = true;
    all.push_back(std::move(row));
  }
  return {{"parameters", std::move(all)}};
}

Json Visit::value(const std::string& name, std::optional<std::int32_t> frame) {
  const host::Parameter wanted = parameter(name);
  return {{"value", valueJson(wanted, frame.value_or(frame_))},
          {"keyframes", wanted.keyframeCount()}};
}

void Visit::remember() {
  past_.push_back(instance().save().parameters);
}

template <class Edit>
Json Visit::edit(const std::string& name, Edit change) {
  host::Parameter edited = parameter(name);
  remember();
  try {
    change(edited);
  } catch (...) {
    past_.pop_back();
    throw;
  }
  return value(name, std::nullopt);
}

Json Visit::set(const std::string& name, const std::string& value) {
  return edit(name, [&](host::Parameter& edited) {
    const std::int32_t kind = kindOf(edited);
    if (kind == PF_Param_POINT) {
      edited.set(parsePoint(value));
    } else if (kind == PF_Param_ARBITRARY_DATA) {
      edited.setText(value);
    } else {
      edited.set(parseNumber(value));
    }
  });
}

Json Visit::setKey(const std::string& name, std::int32_t frame, const std::string& value) {
  return edit(name, [&](host::Parameter& edited) {
    const std::int32_t kind = kindOf(edited);
    if (kind == PF_Param_POINT) {
      edited.setAt(frame, parsePoint(value));
    } else if (kind == PF_Param_ARBITRARY_DATA) {
      edited.setTextAt(frame, value);
    } else {
      edited.setAt(frame, parseNumber(value));
    }
  });
}

Json Visit::removeKeys(const std::string& name) {
  return edit(name, [](host::Parameter& edited) { edited.removeKeyframes(); });
}

Json Visit::press(const std::string& button) {
  remember();
  bool stopped = false;
  try {
    instance().press(button);
  } catch (const host::Cancelled&) {
    throwIfInterrupted();
    stopped = true;
  }
  bench_->source().endReading();
  Json answer = describe();
  answer["stopped"] = stopped;
  return answer;
}

// As hosts do it: the values go back, the effect's own data stays.
Json Visit::undo() {
  if (past_.empty()) throw Failure("There is nothing to undo.");
  for (const host::SavedParameter& parameter : past_.back()) instance().load(parameter);
  past_.pop_back();
  instance().goTo(frame_);
  panel_->drawUntilReady();
  return {{"left", past_.size()}};
}

Json Visit::goTo(std::int32_t frame) {
  instance().goTo(frame);
  panel_->followInstance();
  frame_ = frame;
  return {{"frame", frame}};
}

Json Visit::placeCursor(std::int32_t frame) {
  panel_->placeCursor(frame);
  return {{"frame", frame}};
}

Json Visit::mouse(MouseAction action, const host::Mouse& mouse) {
  const bool begins = action == MouseAction::click || action == MouseAction::down;
  if (begins) remember();
  host::EventOutcome outcome;
  switch (action) {
    case MouseAction::click:
      outcome = panel_->click(mouse);
      if (outcome.wantsDrags) {
        const host::EventOutcome last = panel_->release(mouse);
        outcome.changed.insert(outcome.changed.end(), last.changed.begin(), last.changed.end());
      }
      break;
    case MouseAction::down:
      outcome = panel_->click(mouse);
      break;
    case MouseAction::drag:
      outcome = panel_->drag(mouse);
      break;
    case MouseAction::up:
      outcome = panel_->release(mouse);
      break;
    case MouseAction::hover:
      outcome = panel_->adjustCursor(mouse);
      break;
  }
  // A press that changed nothing and starts no drag is no step to undo.
  if (begins && outcome.changed.empty() && !panel_->dragging()) past_.pop_back();
  std::sort(outcome.changed.begin(), outcome.changed.end());
  outcome.changed.erase(std::unique(outcome.changed.begin(), outcome.changed.end()),
                        outcome.changed.end());
  return {{"handled", outcome.handled},
          {"dragging", panel_->dragging()},
          {"changed", changedNames(bench_->effect(), outcome.changed)}};
}

Json Visit::render(std::int32_t frame, std::optional<host::Depth> depth) {
  host::Image image;
  const host::LayerInfo& info = bench_->shot(shot_).layer().info();
  instance().render(frame, depth.value_or(info.depth), image);
  const LevelArea area{0, 0, image.width(), image.height(), false};
  std::uint32_t crc = 0;
  const auto row = static_cast<std::size_t>(image.width()) *
                   static_cast<std::size_t>(host::pixelBytes(image.depth()));
  for (std::int32_t y = 0; y < image.height(); ++y) crc = crc32({image.row(y), row}, crc);
  return {{"frame", frame},
          {"level", frameLevel(viewOf(std::as_const(image)), area)},
          {"crc", fmt::format("{:08x}", crc)},
          {"bits", static_cast<int>(image.depth())}};
}

Json Visit::save(const std::filesystem::path& path, bool force) {
  writeProject(path, newProject(*bench_, clip_, path), force);
  return {{"output", path.string()}};
}

}  // namespace cli
