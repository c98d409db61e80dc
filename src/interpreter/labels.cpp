// Labels and the heads of procedures, found in one pass before the run.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "interpreter/word_count.h"

#include <memory>

using namespace brindle;

bool CBrindle::LabelAdd(const CString& name, unsigned long position) {
  return m_pState->program->AddLabel(name, static_cast<std::uint32_t>(position));
}

bool CBrindle::LabelGet(const CString& name, unsigned long& position) {
  const auto found = m_pState->program->FindLabel(name);
  if (!found)
    return false;
  position = *found;
  return true;
}

bool CBrindle::LabelsFree() {
  if (m_pState->program != nullptr)
    m_pState->program->ClearLabels();
  return true;
}

namespace {

bool IsHeadWord(const TokenState& token) {
  return (token.command == COMMAND_FUNCTION || token.command == COMMAND_SUB) && token.previousKind == TOKEN_DELIMITER;
}

} // namespace

bool CBrindle::LabelsScan() {
  m_pState->functions.NoteChange();
  LabelsFree();
  Rewind();
  m_pState->token.kind = TOKEN_DELIMITER; // the first line counts as standing behind a line end
  WordCount words;
  while (!IsEndOfProgram()) {
    get_token();
    const TokenState& token = m_pState->token;
    StepOver();
    if (!words.Take(*m_pState->budget))
      AbortByBudget(std::nullopt);
    if (token.kind == TOKEN_LABEL) {
      if (!LabelAdd(token.Text(), m_pState->position)) {
        // Deliberate: a duplicate label says that the table is full.
        ReportError(kErrorLabelTableFull);
        Rewind();
        return false;
      }
    } else if (IsHeadWord(token)) {
      get_token();
      CString name = token.Text();
      name.MakeLower();
      CFuncDesc* known = m_pState->functions.Find(name);
      if (known != nullptr && known->m_nKind == CFuncDesc::kProcedure && known->m_pProgram != m_pState->program) {
        // Left over from an earlier run, the definition takes its new place: only a second one in the same text
        // is a fault.
        known->m_nPosition = m_pState->position;
        known->m_pProgram = m_pState->program;
        continue;
      }
      auto function = std::make_unique<CFuncDesc>(name, m_pState->position);
      function->m_pProgram = m_pState->program;
      if (AddFunction(function.get()))
        function.release();
    }
  }
  Rewind();
  return true;
}
