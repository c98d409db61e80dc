#ifndef _FILE_OFFSET_BITS
#define _FILE_OFFSET_BITS 64 // or the status of a large file could not be asked for on 32-bit devices
#endif

#include "platform/path.h"

#include "platform/faults.h"
#include "platform/unicode.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>
#include <utility>

namespace brindle {

namespace {

// A byte B that is part of no UTF-8 character is the lone unit EscapedByte + B in a script's text.
constexpr char32_t EscapedByte = 0xDC00;

constexpr bool IsEscapedByte(char32_t codePoint) noexcept {
  return codePoint >= EscapedByte + 0x80 && codePoint <= EscapedByte + 0xFF;
}

bool IsDotName(std::string_view name) noexcept {
  return name == "." || name == "..";
}

bool Exists(const std::string& path) noexcept {
  struct stat status {};
  return !Refused(FaultKind::File, EIO) && lstat(path.c_str(), &status) == 0;
}

bool IsFolder(const std::string& path) noexcept {
  struct stat status {};
  return !Refused(FaultKind::File, EIO) && stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

DIR* OpenFolder(const std::string& folder) noexcept {
  return Refused(FaultKind::File, EMFILE) ? nullptr : opendir(folder.empty() ? "." : folder.c_str());
}

const dirent* NextName(DIR* folder) noexcept {
  return Refused(FaultKind::File, EIO) ? nullptr : readdir(folder);
}

// Calls `visit` with every name but "." and ".."; an unreadable folder has none.
template <typename Visit> void ForEachName(const std::string& folder, Visit visit) {
  const auto close = [](DIR* open) { closedir(open); };
  const std::unique_ptr<DIR, decltype(close)> directory(OpenFolder(folder), close);
  if (directory == nullptr) {
    return;
  }
  while (const dirent* entry = NextName(directory.get())) {
    const std::string_view name = entry->d_name;
    if (!IsDotName(name)) {
      visit(name);
    }
  }
}

std::u16string Folded(std::u16string text) {
  ToLower(text);
  return text;
}

// The name in `folder` that equals `name` but for case.
std::optional<std::string> FindWithoutCase(const std::string& folder, std::string_view name, bool mustBeFolder) {
  const std::u16string wanted = Folded(PathFromNative(name));
  std::optional<std::string> best;
  ForEachName(folder, [&](std::string_view candidate) {
    if ((!best || candidate < *best) && Folded(PathFromNative(candidate)) == wanted &&
        (!mustBeFolder || IsFolder(folder + std::string(candidate)))) {
      best = std::string(candidate);
    }
  });
  return best;
}

// A text as code points, so that "?" stands for a whole character. Lone surrogates stay.
std::u32string CodePoints(std::u16string_view text) {
  std::u32string codePoints;
  for (std::size_t index = 0; index < text.size();) {
    codePoints.push_back(ReadUtf16(text, index));
  }
  return codePoints;
}

// After a mismatch only the last "*" is tried further on: an earlier one could not succeed where it fails. This keeps
// a hostile pattern from taking more than the product of both lengths.
bool MatchesWildcards(std::u32string_view name, std::u32string_view pattern) noexcept {
  constexpr std::size_t none = std::u32string_view::npos;
  std::size_t nameIndex = 0;
  std::size_t patternIndex = 0;
  std::size_t star = none;
  std::size_t starName = 0;
  while (nameIndex < name.size()) {
    if (patternIndex < pattern.size() && pattern[patternIndex] == U'*') {
      star = patternIndex++;
      starName = nameIndex;
    } else if (patternIndex < pattern.size() &&
               (pattern[patternIndex] == U'?' || pattern[patternIndex] == name[nameIndex])) {
      ++patternIndex;
      ++nameIndex;
    } else if (star != none) {
      patternIndex = star + 1;
      nameIndex = ++starName;
    } else {
      return false;
    }
  }
  return std::all_of(pattern.begin() + static_cast<std::ptrdiff_t>(patternIndex), pattern.end(),
                     [](char32_t character) { return character == U'*'; });
}

} // namespace

std::string PathToNative(std::u16string_view path) {
  std::string native;
  native.reserve(path.size());
  for (std::size_t index = 0; index < path.size();) {
    const char32_t codePoint = ReadUtf16(path, index);
    if (IsEscapedByte(codePoint)) {
      native.push_back(static_cast<char>(static_cast<unsigned char>(codePoint - EscapedByte)));
    } else {
      AppendUtf8(codePoint, native);
    }
  }
  return native;
}

std::u16string PathFromNative(std::string_view path) {
  std::u16string text;
  text.reserve(path.size());
  while (!path.empty()) {
    char32_t codePoint = 0;
    std::size_t length = ReadUtf8(path, codePoint);
    if (length == 0) {
      codePoint = EscapedByte + static_cast<unsigned char>(path[0]);
      length = 1;
    }
    AppendUtf16(codePoint, text);
    path.remove_prefix(length);
  }
  return text;
}

std::string ResolvePath(std::u16string_view path) {
  std::string asWritten = PathToNative(path);
  std::replace(asWritten.begin(), asWritten.end(), '\\', '/');
  if (asWritten.empty() || asWritten.find('\0') != std::string::npos || Exists(asWritten)) {
    return asWritten;
  }

  std::string found;
  std::size_t position = 0;
  while (position < asWritten.size()) {
    if (asWritten[position] == '/') {
      found.push_back('/');
      ++position;
      continue;
    }
    const std::size_t end = std::min(asWritten.find('/', position), asWritten.size());
    const std::string name = asWritten.substr(position, end - position);
    const bool mustBeFolder = end < asWritten.size();
    const std::string exact = found + name;
    if (mustBeFolder ? IsFolder(exact) : Exists(exact)) {
      found = exact;
    } else if (const auto match = FindWithoutCase(found, name, mustBeFolder)) {
      found += *match;
    } else {
      found += asWritten.substr(position);
      break;
    }
    position = end;
  }
  return found;
}

std::vector<std::u16string> FindFiles(std::u16string_view pattern) {
  std::vector<std::u16string> names;
  const std::u16string_view folder = DirectoryPart(pattern);
  const std::u16string_view last = pattern.substr(folder.size());
  if (last.empty() || last == u"." || last == u".." || pattern.find(u'\0') != std::u16string_view::npos) {
    return names;
  }

  if (last.find_first_of(u"*?") == std::u16string_view::npos) {
    const std::string native = ResolvePath(pattern);
    if (Exists(native)) {
      names.push_back(PathFromNative(std::string_view(native).substr(native.rfind('/') + 1)));
    }
    return names;
  }

  const bool everyName = last == u"*.*" || last == u"*";
  const std::u32string wanted = CodePoints(Folded(std::u16string(last)));
  ForEachName(ResolvePath(folder), [&](std::string_view entry) {
    std::u16string name = PathFromNative(entry);
    if (everyName || MatchesWildcards(CodePoints(Folded(name)), wanted)) {
      names.push_back(std::move(name));
    }
  });
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  ForEachName(folder, [&](std::string_view name) { names.emplace_back(name); });
  std::sort(names.begin(), names.end());
  return names;
}

bool MatchesPattern(std::u16string_view name, std::u16string_view pattern) {
  return pattern == u"*.*" ||
         MatchesWildcards(CodePoints(Folded(std::u16string(name))), CodePoints(Folded(std::u16string(pattern))));
}

std::u16string FoldedPath(std::u16string text) {
  return Folded(std::move(text));
}

std::u16string_view DirectoryPart(std::u16string_view path) noexcept {
  const std::size_t separator = path.find_last_of(u"/\\");
  return separator == std::u16string_view::npos ? std::u16string_view() : path.substr(0, separator + 1);
}

} // namespace brindle
