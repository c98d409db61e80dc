// Code pages that the system's character conversion (iconv) knows.
// Room: platform. Used by: CodePage::Find only.
// May touch: iconv, which may load its conversion modules from files.
// Must not touch: the process locale.
// Invariant: a page is given only when both directions of its conversion are there: a program built for a small device
// may run without the modules, and then has the built-in pages alone.
#pragma once

#include "platform/code_page.h"

#include <memory>
#include <string>

namespace brindle {

// `systemName` is the name as iconv takes it. Null when it is unknown or no 8-bit page.
[[nodiscard]] std::shared_ptr<const CodePage> FindSystemPage(const std::string& systemName);

} // namespace brindle
