#include "interpreter/script_loader.h"

#include "interpreter/limits.h"
#include "platform/code_page.h"
#include "platform/file.h"

#include <new>

namespace brindle {

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
