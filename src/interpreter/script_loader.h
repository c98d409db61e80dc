// Script files as text.
// Room: interpreter. Used by: loading a program, "library", "include", the check of scripts.
// May touch: files, the code page.
// Invariant: a text handed out is no longer than the limit for program texts.
#pragma once

#include "brindle/text.h"

#include <optional>
#include <string>

namespace brindle {

// The file's text through the ANSI code page, without anything added; nothing when it cannot be read, is too
// long or does not fit in memory.
[[nodiscard]] std::optional<std::u16string> LoadScriptFile(const CString& path);

// A name is looked up beside the running script when the script's path has a folder; the one folder of a path like
// "\name" counts only where that is the root of all that scripts can reach.
[[nodiscard]] CString BesideScript(const CString& script, const CString& name, bool isRooted = false);

} // namespace brindle
