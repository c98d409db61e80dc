// "findfiles": the names that a pattern matches.
#include "brindle/interpreter.h"
#include "interpreter/language.h"
#include "platform/path.h"

bool CBrindle::ExecFindFiles(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  if (!CheckArguments(args, type)) // the second one is asked for but means nothing
    return false;
  for (const std::u16string& name : brindle::FindFiles(args[0].GetStringValue().View()))
    result.AddItem(CString(name));
  return true;
}
