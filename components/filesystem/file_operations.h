// What "Brindle.FileSystem" does to files and folders, on paths in the system's own bytes.
// Room: components. Used by: the class itself.
// May touch: the files and folders named, and one unfinished file beside a target.
// Must not: leave half a file, overwrite what it was not told to, remove what is not empty.
// Invariant: a failure throws std::runtime_error with a sentence for the user and leaves both sides as they were.
#pragma once

#include <string>

namespace brindle {

[[nodiscard]] bool Exists(const std::string& path);
[[nodiscard]] bool IsFolder(const std::string& path);
[[nodiscard]] double SizeOf(const std::string& path);
[[nodiscard]] double FreeSpaceOf(const std::string& path);

// A target that is a folder takes the file in under its own name.
void Copy(const std::string& from, const std::string& to, bool overwrite);
// Falls back to a copy between file systems, for files.
void Move(const std::string& from, const std::string& to, bool overwrite);
// A file, a link (not what it leads to) or an empty folder.
void Delete(const std::string& path);
// One folder; there already is fine.
void CreateFolder(const std::string& path);

} // namespace brindle
