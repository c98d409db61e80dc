// The process: starting a program or opening a document without waiting for it, and the signals that end it.
// Room: platform. Used by: calls ("runexe", CEnvironment).
// May touch: the system's process calls.
// Must not touch: the host's signal handlers and its other children.
// Invariant: the calling process gets neither a zombie nor a SIGCHLD from what is started here.
#pragma once

#include <string_view>

namespace brindle {

// An executable file is started directly with `parameters` as its one argument (none when empty): no shell reads
// either text. Any other file, a folder or an address such as "https://..." goes to the desktop's opener (xdg-open),
// without the parameters. The program starts in a session of its own with its standard streams at /dev/null, because
// the caller's streams carry the script's dialogue. A failure is silent.
void StartFile(std::u16string_view path, std::u16string_view parameters);

// From now on a file that reaches the size limit of the process fails with an error where a signal would end it.
void IgnoreFileSizeSignal() noexcept;

} // namespace brindle
