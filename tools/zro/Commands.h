#pragma once

#include "tools/zro/Session.h"

namespace CLI {
class App;
}

namespace zro {

// Each adds one command to the command line. When the user chooses it, `task` becomes what it does.

void addLoadCommand(CLI::App& program, Task& task);
void addEventsCommand(CLI::App& program, Task& task);
void addTreeCommand(CLI::App& program, Task& task);
void addFormatCommand(CLI::App& program, Task& task);
void addCheckCommand(CLI::App& program, Task& task);
void addCatCommand(CLI::App& program, Task& task);
void addUriCommand(CLI::App& program, Task& task);
void addEncodingCommand(CLI::App& program, Task& task);
void addValueCommand(CLI::App& program, Task& task);
void addColorCommand(CLI::App& program, Task& task);
void addLengthCommand(CLI::App& program, Task& task);
void addLinkCommand(CLI::App& program, Task& task);
void addNumberCommand(CLI::App& program, Task& task);
void addKansujiCommand(CLI::App& program, Task& task);
void addCellCommand(CLI::App& program, Task& task);
void addZipCommand(CLI::App& program, Task& task);
void addOoxmlCommand(CLI::App& program, Task& task);
void addOfficeCommand(CLI::App& program, Task& task);
void addOleCommand(CLI::App& program, Task& task);

}  // namespace zro
