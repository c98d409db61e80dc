// "findfiles": the names that a pattern matches.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "platform/path.h"

using namespace brindle;

bool CBrindle::ExecFindFiles(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  if (!CheckArguments(args, type)) // the second one is asked for but means nothing
    return false;
  const CString pattern = args[0].GetStringValue();
  const FileRoot* const root = m_pState->budget->Root();
  const FileRoot::Scope files(root);
  for (const std::u16string& name : root != nullptr ? root->FindFiles(pattern.View()) : FindFiles(pattern.View()))
    result.AddItem(CString(name));
  return !files.HasRefused() || Fail(kErrorNotAllowed);
}
