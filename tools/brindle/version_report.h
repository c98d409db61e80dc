// What "brindle --version" says: the version, how it was built, and what it finds to work with.
// Room: tools. Used by: the runner.
// May touch: the folders of plug-ins and of registration files.
// Must not: load a window system or the bus: a question for the version opens no display.
// Invariant: the first line is "brindle" and the version.
#pragma once

#include <string>

[[nodiscard]] std::string VersionReport();
