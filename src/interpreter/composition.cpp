// Putting a program together from files: "library" and "include", before the run.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/limits.h"
#include "interpreter/script_loader.h"
#include "interpreter/state.h"
#include "interpreter/word_count.h"
#include "platform/path.h"

#include <unordered_set>

using namespace brindle;

namespace {

constexpr std::uint32_t kLineEndsBeforeInclude = 1;

// What two names of one file have in common.
std::string FileOf(const FileRoot* root, const CString& name) {
  return root != nullptr ? root->PathOf(name.View()).value_or(name.ToUtf8()) : ResolvePath(name.View());
}

// The lines of a file that the program takes in, or the number of an error.
struct Part {
  std::optional<std::u16string> text;
  int error = kErrorSyntax;
};

Part LoadPart(const FileRoot* root, const CString& name) {
  const FileRoot::Scope files(root);
  Part part;
  part.text = LoadScriptFile(name);
  if (files.HasRefused())
    part.error = kErrorNotAllowed;
  return part;
}

} // namespace

bool CBrindle::LoadLibraries() {
  const FileRoot* const root = m_pState->budget->Root();
  ProgramText& program = *m_pState->program;
  program.AddFile(0, program.Length(), 0, FileOf(root, m_pState->fileName), program.Name());
  std::unordered_set<CString> loaded;
  int lines = 0;
  WordCount words;

  Rewind();
  m_pState->token.kind = TOKEN_DELIMITER; // the first line counts as standing behind a line end
  while (!IsEndOfProgram()) {
    get_token();
    const TokenState& token = m_pState->token;
    if (token.kind == TOKEN_NONE)
      break;
    StepOver();
    if (!words.Take(*m_pState->budget))
      AbortByBudget(std::nullopt);
    const bool isLibrary = token.command == COMMAND_LIBRARY;
    const bool isInclude = token.command == COMMAND_INCLUDE;
    if ((!isLibrary && !isInclude) || token.previousKind != TOKEN_DELIMITER)
      continue;

    get_token();
    if (token.kind != TOKEN_STRING) {
      ReportError(kErrorSyntax);
      Rewind();
      return false;
    }
    if (++lines > kMostCompositionLines) {
      ReportError(kErrorLoadingSource); // files that include each other many times over grow without end
      break;
    }
    const CString name = token.Text();
    const CString path = BesideScript(m_pState->fileName, name, root != nullptr);
    const std::string file = FileOf(root, path);
    if (isInclude && program.Files().IsInside(token.token->start, file)) {
      ReportError(kErrorSyntax); // a file inside itself would never end
      FindEOL();
      continue;
    }
    if (loaded.insert(name).second) {
      const std::uint32_t end = program.Length();
      if (ExecLibrary(name))
        program.AddFile(end, program.Length() - end, 0, file, path);
    }
    if (isInclude) {
      FindEOL();
      const std::uint32_t before = program.Length();
      const bool atEnd = m_pState->position >= before;
      const std::uint32_t start = atEnd ? before : m_pState->position + 1;
      if (ExecInclude(name))
        program.AddFile(start, program.Length() - before, kLineEndsBeforeInclude + (atEnd ? 1 : 0), file, path);
    }
    FindEOL();
  }
  Rewind();
  return true;
}

bool CBrindle::ExecLibrary(const CString& name) {
  const FileRoot* const root = m_pState->budget->Root();
  auto [text, error] = LoadPart(root, BesideScript(m_pState->fileName, name, root != nullptr));
  if (!text)
    return Fail(error);
  text->push_back(u'\n');
  if (m_pState->program->Length() + text->size() > static_cast<std::size_t>(kLongestText))
    return Fail(kErrorLoadingSource);
  m_pState->program->Insert(m_pState->program->Length(), *text);
  return true;
}

// Inserts behind the end of the current line, at which the position stands.
bool CBrindle::ExecInclude(const CString& name) {
  const FileRoot* const root = m_pState->budget->Root();
  const auto [file, error] = LoadPart(root, BesideScript(m_pState->fileName, name, root != nullptr));
  if (!file)
    return Fail(error);
  const bool atEnd = m_pState->position >= m_pState->program->Length();
  std::u16string text;
  text.reserve(file->size() + 4);
  text.append(kLineEndsBeforeInclude + (atEnd ? 1 : 0), u'\n');
  text += *file;
  text.append(2, u'\n');
  if (m_pState->program->Length() + text.size() > static_cast<std::size_t>(kLongestText))
    return Fail(kErrorLoadingSource);
  m_pState->program->Insert(atEnd ? m_pState->program->Length() : m_pState->position + 1, text);
  return true;
}
