#include "version_report.h"

#include "line_editor.h"

#include <brindle/brindle.h>

#include <brindle_commit.h>

namespace {

#ifdef __clang__
constexpr const char* kCompiler = "clang " __clang_version__;
#else
constexpr const char* kCompiler = "g++ " __VERSION__;
#endif

std::string OrNone(const std::string& found) {
  return found.empty() ? "none" : found;
}

} // namespace

std::string VersionReport() {
  std::string classes;
  for (const CString& name : CAutomationClasses::RegisteredClasses())
    classes += (classes.empty() ? "" : ", ") + name.ToUtf8();
  return std::string("brindle ") + BRINDLE_VERSION + "\ncommit: " + BRINDLE_COMMIT + "\ncompiler: " + kCompiler +
         "\nwindow system: " + OrNone(CEnvironment::FindPlugIn("qt")) +
         "\nD-Bus: " + OrNone(CEnvironment::FindPlugIn("dbus")) + "\ncomponents: " + OrNone(classes) +
         "\nline editing: " + OrNone(LineEditor::Library());
}
