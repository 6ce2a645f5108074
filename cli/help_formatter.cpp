// cli/help_formatter.cpp — help texts wrapped to the width of a page.
#include "cli/help_formatter.h"

namespace cli {
namespace {

constexpr std::size_t kPage = 84;
constexpr std::size_t kOptionColumn = 30;
constexpr std::size_t kCommandColumn = 14;

std::string entry(const std::string& name, const std::string& text, std::size_t column) {
  std::string line = "  " + name;
  if (text.empty()) return line + "\n";
  if (line.size() + 2 > column) {
    line += "\n" + std::string(column, ' ');
  } else {
    line += std::string(column - line.size(), ' ');
  }
  return line + wrapped(text, kPage - column, column) + "\n";
}

}  // namespace

std::string wrapped(const std::string& text, std::size_t width, std::size_t indent) {
  const std::string lead = "\n" + std::string(indent, ' ');
  std::string result;
  std::size_t used = 0;
  std::size_t start = 0;
  while (start < text.size()) {
    if (text[start] == '\n') {
      result += lead;
      used = 0;
      ++start;
      continue;
    }
    if (text[start] == ' ') {
      ++start;
      continue;
    }
    const std::size_t end = std::min(text.find_first_of(" \n", start), text.size());
    const std::size_t length = end - start;
    if (used > 0 && used + 1 + length > width) {
      result += lead;
      used = 0;
    }
    if (used > 0) {
      result += ' ';
      ++used;
    }
    result.append(text, start, length);
    used += length;
    start = end;
  }
  return result;
}

std::string HelpFormatter::make_option(const CLI::Option* option, bool positional) const {
  std::string name = make_option_name(option, positional);
  for (auto at = name.find("{false}"); at != std::string::npos; at = name.find("{false}")) {
    name.erase(at, 7);
  }
  const std::string value = positional ? "" : make_option_opts(option);
  return entry(name + value, make_option_desc(option), kOptionColumn);
}

std::string HelpFormatter::make_option_opts(const CLI::Option* option) const {
  if (option->get_type_size() == 0 || option->get_type_name().empty()) return {};
  // What the checks say of themselves comes after a colon; the texts say it better.
  const std::string type = option->get_type_name();
  return " " + type.substr(0, type.find(':'));
}

std::string HelpFormatter::make_subcommand(const CLI::App* command) const {
  return entry(command->get_name(), command->get_description(), kCommandColumn);
}

std::string HelpFormatter::make_description(const CLI::App* app) const {
  return wrapped(app->get_description(), kPage, 0) + "\n";
}

}  // namespace cli
