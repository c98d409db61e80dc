#include "interpreter/script_loader.h"

#include "interpreter/limits.h"
#include "platform/code_page.h"
#include "platform/file.h"

#include <new>

namespace brindle {

CString BesideScript(const CString& script, const CString& name, bool isRooted) {
  const std::size_t separator = script.View().find_last_of(u"/\\");
  if (separator == std::u16string_view::npos || (separator == 0 && !isRooted))
    return name;
  return script.Left(static_cast<int>(separator) + 1) + name;
}

std::optional<std::u16string> LoadScriptFile(const CString& path) {
  try {
    std::string bytes;
    // A character takes four bytes at most.
    if (!ReadWholeFile(path.View(), bytes, static_cast<std::uint64_t>(kLongestText) * 4))
      return std::nullopt;
    std::u16string text = CodePage::Ansi().Decode(bytes);
    if (text.size() >= static_cast<std::size_t>(kLongestText))
      return std::nullopt;
    return text;
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

} // namespace brindle
