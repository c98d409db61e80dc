// The data folders of the system and the user, and small files in them.
// Room: platform. Used by: calls (registration files of server libraries).
// May touch: the environment; the folders and files that callers name.
// Must not: make anything outside the user's own folder.
// Invariant: a file is written whole or not at all.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brindle {

// Where this user's data lives ($XDG_DATA_HOME, else ~/.local/share); empty when nothing says who the user is.
[[nodiscard]] std::string UserDataFolder();

// Every data folder, the most important one first: the user's, those of $XDG_DATA_DIRS (else /usr/local/share and
// /usr/share), and the one that this library was installed with.
[[nodiscard]] std::vector<std::string> DataFolders();

// The paths of the files in a folder whose names end so, sorted; none when there is no such folder.
[[nodiscard]] std::vector<std::string> FilesIn(const std::string& folder, std::string_view ending);

// Makes the folders that are missing and puts the file in the place of an older one. False with one line of reason.
[[nodiscard]] bool WriteDataFile(const std::string& path, std::string_view bytes, std::string& reason);
[[nodiscard]] bool RemoveDataFile(const std::string& path, std::string& reason);

// The path from the root, without "." and "..", and with links followed as far as it exists.
[[nodiscard]] std::string AbsolutePath(const std::string& path);

} // namespace brindle
