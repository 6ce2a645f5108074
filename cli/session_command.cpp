// cli/session_command.cpp — `varilum4 session`: an editor's visit from a script.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "cli/commands.h"
#include "cli/error.h"
#include "cli/options/output_options.h"
#include "cli/panel_picture.h"
#include "cli/session/session_drawing.h"
#include "cli/session/session_visit.h"
#include "cli/session/session_words.h"
#include "cli/terminal/interrupt.h"

namespace cli {
namespace {

struct SessionOptions {
  std::string script = "-";
  WorkOptions work;
  ConsoleOptions console;
  host::PanelOptions look;
};

class Session {
 public:
  explicit Session(const SessionOptions& options) : options_(options), console_(options.console) {}

  // Throws what the command throws.
  Json run(std::vector<std::string> words);
  bool ended() const noexcept { return ended_; }
  std::vector<std::string> takeMessages() { return std::exchange(listener_.messages, {}); }

 private:
  using Action = Json (Session::*)(Arguments&);
  struct CommandRow {
    const char* usage;  // begins with the name
    Action action;
  };
  static const CommandRow kCommands[];

  Json open(Arguments& words);
  Json close(Arguments& words);
  Json info(Arguments& words);
  Json parameters(Arguments& words);
  Json get(Arguments& words);
  Json set(Arguments& words);
  Json key(Arguments& words);
  Json unkey(Arguments& words);
  Json press(Arguments& words);
  Json undo(Arguments& words);
  Json goTo(Arguments& words);
  Json cursor(Arguments& words);
  Json click(Arguments& words) { return mouse(words, Visit::MouseAction::click); }
  Json down(Arguments& words) { return mouse(words, Visit::MouseAction::down); }
  Json drag(Arguments& words) { return mouse(words, Visit::MouseAction::drag); }
  Json up(Arguments& words) { return mouse(words, Visit::MouseAction::up); }
  Json hover(Arguments& words) { return mouse(words, Visit::MouseAction::hover); }
  Json draw(Arguments& words);
  Json scroll(Arguments& words);
  Json render(Arguments& words);
  Json save(Arguments& words);
  Json quit(Arguments& words);
  Json mouse(Arguments& words, Visit::MouseAction action);

  Visit& visit() {
    if (!visit_) throw Failure("Nothing is open; begin with: open CLIP");
    return *visit_;
  }

  const SessionOptions& options_;
  Console console_;
  SessionListener listener_;
  std::unique_ptr<Visit> visit_;
  bool ended_ = false;
};

const Session::CommandRow Session::kCommands[] = {
    {"open PROJECT|CLIP [input=CLIP] [shot=NUMBER]", &Session::open},
    {"close", &Session::close},
    {"info", &Session::info},
    {"parameters", &Session::parameters},
    {"get PARAMETER [FRAME]", &Session::get},
    {"set PARAMETER VALUE", &Session::set},
    {"key PARAMETER FRAME VALUE", &Session::key},
    {"unkey PARAMETER", &Session::unkey},
    {"press BUTTON [stop=FRAMES]", &Session::press},
    {"undo", &Session::undo},
    {"goto FRAME", &Session::goTo},
    {"cursor FRAME", &Session::cursor},
    {"click X Y", &Session::click},
    {"down X Y", &Session::down},
    {"drag X Y", &Session::drag},
    {"up X Y", &Session::up},
    {"hover X Y", &Session::hover},
    {"draw [once] [marks] [png=FILE] [scale=FACTOR]", &Session::draw},
    {"scroll LEFT TOP", &Session::scroll},
    {"render FRAME [bits=8|16|32]", &Session::render},
    {"save PROJECT [force]", &Session::save},
    {"quit", &Session::quit},
};

Json Session::run(std::vector<std::string> words) {
  const std::string name = words.front();
  for (const CommandRow& row : kCommands) {
    const std::string usage = row.usage;
    if (usage.substr(0, usage.find(' ')) != name) continue;
    Arguments arguments(std::move(words), usage);
    return (this->*row.action)(arguments);
  }
  throw Failure(fmt::format("There is no command '{}'.", name));
}

Json Session::open(Arguments& words) {
  const std::string path = words.text();
  std::string input;
  std::int32_t shot = 1;
  while (!words.empty()) {
    if (const auto clip = words.option("input")) {
      input = *clip;
    } else if (const auto number = words.option("shot")) {
      shot = Arguments({"open", *number}, "open PROJECT shot=NUMBER").whole();
    } else {
      words.refuse();
    }
  }
  visit_.reset();
  visit_ =
      std::make_unique<Visit>(path, input, shot, options_.work, options_.look, console_, listener_);
  return visit_->describe();
}

Json Session::close(Arguments& words) {
  words.end();
  visit().panel().close();
  visit_.reset();
  return Json::object();
}

Json Session::info(Arguments& words) {
  words.end();
  return visit().describe();
}

Json Session::parameters(Arguments& words) {
  words.end();
  return visit().parameters();
}

Json Session::get(Arguments& words) {
  const std::string parameter = words.text();
  const auto frame = words.optionalWhole();
  words.end();
  return visit().value(parameter, frame);
}

Json Session::set(Arguments& words) {
  const std::string parameter = words.text();
  const std::string value = words.text();
  words.end();
  return visit().set(parameter, value);
}

Json Session::key(Arguments& words) {
  const std::string parameter = words.text();
  const std::int32_t frame = words.whole();
  const std::string value = words.text();
  words.end();
  return visit().setKey(parameter, frame, value);
}

Json Session::unkey(Arguments& words) {
  const std::string parameter = words.text();
  words.end();
  return visit().removeKeys(parameter);
}

Json Session::press(Arguments& words) {
  const std::string button = words.text();
  listener_.stopAfter.reset();
  if (const auto stop = words.option("stop")) {
    listener_.stopAfter = Arguments({"press", *stop}, "press BUTTON stop=FRAMES").whole();
  }
  words.end();
  return visit().press(button);
}

Json Session::undo(Arguments& words) {
  words.end();
  return visit().undo();
}

Json Session::goTo(Arguments& words) {
  const std::int32_t frame = words.whole();
  words.end();
  return visit().goTo(frame);
}

Json Session::cursor(Arguments& words) {
  const std::int32_t frame = words.whole();
  words.end();
  return visit().placeCursor(frame);
}

Json Session::mouse(Arguments& words, Visit::MouseAction action) {
  host::Mouse mouse;
  mouse.x = words.whole();
  mouse.y = words.whole();
  words.end();
  return visit().mouse(action, mouse);
}

Json Session::draw(Arguments& words) {
  bool once = false;
  bool marks = false;
  std::string picture;
  double scale = 1.0;
  while (!words.empty()) {
    if (words.flag("once")) {
      once = true;
    } else if (words.flag("marks")) {
      marks = true;
    } else if (const auto file = words.option("png")) {
      picture = *file;
    } else if (const auto factor = words.option("scale")) {
      scale = Arguments({"draw", *factor}, "draw scale=FACTOR").number();
    } else {
      words.refuse();
    }
  }
  host::Panel& panel = visit().panel();
  const host::DrawingRecord& drawing = once ? panel.draw() : panel.drawUntilReady();
  Json answer{{"count", drawing.primitives.size()},
              {"texts", drawing.texts()},
              {"waiting", panel.waiting()}};
  if (marks) answer["marks"] = drawingJson(drawing);
  if (!picture.empty()) {
    savePanel(panel, picture, scale, true);
    answer["png"] = picture;
  }
  return answer;
}

Json Session::scroll(Arguments& words) {
  const std::int32_t left = words.whole();
  const std::int32_t top = words.whole();
  words.end();
  visit().panel().moveTo(left, top);
  return Json::object();
}

Json Session::render(Arguments& words) {
  const std::int32_t frame = words.whole();
  std::optional<host::Depth> depth;
  if (const auto bits = words.option("bits")) {
    if (*bits == "8") depth = host::Depth::bits8;
    if (*bits == "16") depth = host::Depth::bits16;
    if (*bits == "32") depth = host::Depth::float32;
    if (!depth) words.refuse();
  }
  words.end();
  return visit().render(frame, depth);
}

Json Session::save(Arguments& words) {
  const std::string path = words.text();
  const bool force = words.flag("force");
  words.end();
  return visit().save(path, force);
}

Json Session::quit(Arguments& words) {
  words.end();
  if (visit_) visit_->panel().close();
  visit_.reset();
  ended_ = true;
  return Json::object();
}

// The answer to one line, as one line.
Json answerTo(Session& session, std::vector<std::string> words, int line) {
  Json answer{{"line", line}, {"command", words.front()}, {"ok", true}};
  try {
    answer.update(session.run(std::move(words)));
  } catch (const Interrupted&) {
    throw;
  } catch (const std::exception& error) {
    answer["ok"] = false;
    answer["error"] = oneLine(error.what());
  }
  const auto messages = session.takeMessages();
  if (!messages.empty()) answer["messages"] = messages;
  return answer;
}

void say(const Json& answer) {
  const std::string line =
      answer.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
  if (std::fwrite(line.data(), 1, line.size(), stdout) != line.size() || std::fflush(stdout) != 0) {
    throw Failure("The answers cannot be written.");
  }
}

void run(const SessionOptions& options) {
  std::ifstream file;
  const bool fromInput = options.script == "-";
  if (!fromInput) {
    file.open(std::filesystem::path(options.script));
    if (!file) throw Failure(fmt::format("{} cannot be read.", options.script));
  }
  std::istream& script = fromInput ? std::cin : file;
  Session session(options);
  int failed = 0;
  int number = 0;
  for (std::string line; !session.ended() && std::getline(script, line);) {
    throwIfInterrupted();
    ++number;
    Json answer;
    try {
      std::vector<std::string> words = splitWords(line);
      if (words.empty()) continue;
      answer = answerTo(session, std::move(words), number);
    } catch (const Failure& error) {
      answer = {{"line", number}, {"ok", false}, {"error", error.what()}};
    }
    if (!answer["ok"].get<bool>()) ++failed;
    say(answer);
  }
  if (failed > 0) {
    throw Failure(failed == 1 ? "A command of the session failed."
                              : fmt::format("{} commands of the session failed.", failed));
  }
}

}  // namespace

void addSessionCommand(CLI::App& app, Work& work) {
  CLI::App* command = app.add_subcommand(
      "session", "Replay an editor's visit from a script: set, press, drag, draw, render, save.");
  auto options = std::make_shared<SessionOptions>();
  options->look.width = kPictureWidth;
  command->add_option("SCRIPT", options->script,
                      "Commands, one a line; see docs/session.md. Default: standard input.");
  addGeneralOptions(*command, options->work, options->console);
  command->callback([options, &work] { work = [options] { run(*options); }; });
}

}  // namespace cli
