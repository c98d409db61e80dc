// Paths of scripts ("\" or "/", any letter case) to paths of this system, and wildcard search in a folder.
// Room: platform. Used by: CFile and StartFile, data and io (tables, "findfiles"), the loader ("include").
// May touch: the file system, for looking only.
// Must not touch: the contents of files.
// Invariant: a name found here opens again, even when its bytes are not valid UTF-8: such a byte B travels as the lone
// surrogate U+DC00 + B and becomes the byte again. (A name holding "\" is the exception: "\" is a separator.)
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brindle {

// Between a script's text and this system's bytes; nothing is looked up and no separator replaced. The runner reads
// its arguments with PathFromNative.
[[nodiscard]] std::string PathToNative(std::u16string_view path);
[[nodiscard]] std::u16string PathFromNative(std::string_view path);

// The path to give to the system. When it does not exist as written every component is looked up without regard to
// case: the exact name is preferred, then the first that matches in byte order; before a separator only folders
// count. From the first component that is missing on, the path stays as written, so that a file can be created.
[[nodiscard]] std::string ResolvePath(std::u16string_view path);

// Names, without their folder, that match the last component of `pattern`, sorted by 16-bit unit. "*" stands for any
// characters and "?" for one, both in the last component only; "*.*" matches every name. Folders match too, "." and
// ".." never appear. Without a wildcard: the name as it is on disk, when it exists.
[[nodiscard]] std::vector<std::u16string> FindFiles(std::u16string_view pattern);

// The names in a folder of this system, sorted, without "." and ".."; none when it cannot be read.
[[nodiscard]] std::vector<std::string> NamesIn(const std::string& folder);
// Whether a name is one that FindFiles finds for that last component.
[[nodiscard]] bool MatchesPattern(std::u16string_view name, std::u16string_view pattern);
// The text that is equal for paths that differ by letter case alone.
[[nodiscard]] std::u16string FoldedPath(std::u16string text);

// The part up to and including the last separator; empty when there is none.
[[nodiscard]] std::u16string_view DirectoryPart(std::u16string_view path) noexcept;

} // namespace brindle
