// ScriptTest: an interpreter with a recording user interface and a folder for its scripts.
// Room: tests. Used by: unit tests that run scripts or read tokens.
// May touch: a fresh folder below the system's one for temporary files, removed at the end.
// Must not: touch the process-wide default user interface.
// Invariant: every test starts with a new interpreter and an empty folder.
#pragma once

#include "brindle/interpreter.h"
#include "support/recording_user_interface.h"
#include "support/test_access.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A folder that ends with the object.
class TemporaryFolder {
public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "brindle-unit-XXXXXX").string();
    m_path = mkdtemp(pattern.data());
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }

  [[nodiscard]] std::filesystem::path Path(std::string_view name) const { return m_path / name; }
  // Writes a file and gives its path as a script sees it.
  CString Write(std::string_view name, std::string_view bytes) const {
    std::filesystem::create_directories(Path(name).parent_path());
    std::ofstream(Path(name), std::ios::binary) << bytes;
    return CString::FromUtf8(Path(name).string());
  }
  [[nodiscard]] std::string Read(std::string_view name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

private:
  std::filesystem::path m_path;
};

class ScriptTest : public testing::Test {
protected:
  using Access = BrindleTestAccess;
  using Numbers = std::vector<int>;

  ScriptTest() { m_pInterpreter->SetUserInterface(&m_ui); }

  [[nodiscard]] CBrindle& Interpreter() { return *m_pInterpreter; }
  [[nodiscard]] brindle::InterpreterState& State() { return Access::State(*m_pInterpreter); }

  // Runs a program text from a file of its own.
  bool Run(std::string_view program, std::string_view name = "script.bas") {
    return m_pInterpreter->ExecuteProgram(m_folder.Write(name, program));
  }
  // Makes a text the interpreter's program without running it. Unlike a loaded file it gets no line end.
  void SetText(std::u16string_view text, bool keepTokens = false) {
    State().program = std::make_shared<brindle::ProgramText>(std::u16string(text));
    State().position = 0;
    State().keepTokens = keepTokens;
    Access::Rewind(*m_pInterpreter);
  }
  // What a variable reads as at the current level; "(none)" when there is none.
  [[nodiscard]] std::string TextOf(const char16_t* name) {
    CString key(name);
    const CBasicVariable* variable = Access::FindVariable(*m_pInterpreter, key);
    return variable == nullptr ? "(none)" : variable->GetStringValue().ToUtf8();
  }

  TemporaryFolder m_folder;
  RecordingUserInterface m_ui;
  std::unique_ptr<CBrindle> m_pInterpreter = std::make_unique<CBrindle>();
};
