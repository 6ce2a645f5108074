// cli/help_formatter.h — help texts wrapped to the width of a page.
#pragma once

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <string>

namespace cli {

/// Options on the left, their texts wrapped on the right, groups in the order they were added.
class HelpFormatter final : public CLI::Formatter {
 public:
  std::string make_option(const CLI::Option* option, bool positional) const override;
  std::string make_option_opts(const CLI::Option* option) const override;
  std::string make_subcommand(const CLI::App* command) const override;
  std::string make_description(const CLI::App* app) const override;
};

/// `text` broken at blanks into lines of at most `width`, those after the first led by `indent`
/// blanks. Line ends in the text stay.
std::string wrapped(const std::string& text, std::size_t width, std::size_t indent);

}  // namespace cli
