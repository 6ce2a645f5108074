// cli/commands.h — the program's commands; each adds itself and says what to run when chosen.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace cli {

/// What the command line asks for; empty until a command was chosen.
using Work = std::function<void()>;

// Each adds a subcommand. While parsing, the one that is chosen puts its work into `work`; the app
// must live until the work is done.
void addDeflickerCommand(CLI::App& app, Work& work);
void addAnalyzeCommand(CLI::App& app, Work& work);
void addRenderCommand(CLI::App& app, Work& work);
void addInfoCommand(CLI::App& app, Work& work);
void addPanelCommand(CLI::App& app, Work& work);
void addSessionCommand(CLI::App& app, Work& work);
void addValidateCommand(CLI::App& app, Work& work);

/// Version of the program, as --version prints it.
const char* programVersion();

}  // namespace cli
