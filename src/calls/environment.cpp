#include "brindle/environment.h"

#include "calls/script_cipher.h"
#include "interpreter/fast/machine.h"
#include "interpreter/scanner.h"
#include "platform/code_page.h"
#include "platform/path.h"
#include "platform/process.h"
#include "platform/shared_library.h"

bool CEnvironment::SetAnsiCodePage(std::string_view name) {
  return brindle::CodePage::SetAnsi(name);
}

CString CEnvironment::PathFromNative(std::string_view path) {
  return CString(brindle::PathFromNative(path));
}

std::string CEnvironment::PathToNative(const CString& path) {
  return brindle::ResolvePath(path.View());
}

void CEnvironment::ReportFileSizeLimits() {
  brindle::IgnoreFileSizeSignal();
}

std::string CEnvironment::FindPlugIn(std::string_view name) {
  return brindle::SharedLibrary::FindPlugIn("libbrindle-" + std::string(name) + ".so");
}

void CEnvironment::SetRoute(Route route, unsigned giveUpEvery) noexcept {
  brindle::FastState::SetDefault(route == Route::Automatic ? brindle::FastMode::Automatic
                                 : route == Route::Parser  ? brindle::FastMode::Never
                                                           : brindle::FastMode::Eager,
                                 giveUpEvery);
}

std::optional<std::string> CEnvironment::EncipherScript(std::string_view plain, std::string& reason) {
  return brindle::EncipherScript(plain, reason);
}

bool CEnvironment::IsEncipheredScript(std::string_view script) {
  constexpr std::string_view kWord = "encrypt";
  const std::size_t start = script.find_first_not_of(" \t\r\n");
  if (start == std::string_view::npos || script.size() - start < kWord.size())
    return false;
  for (std::size_t i = 0; i < kWord.size(); ++i)
    if ((script[start + i] | 0x20) != kWord[i])
      return false;
  const std::string_view rest = script.substr(start + kWord.size());
  const char next = rest.empty() ? '\n' : rest[0];
  return next != ':' && brindle::IsDelimiterUnit(static_cast<unsigned char>(next)); // "encrypt:" is a label
}
