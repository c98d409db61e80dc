// Calls of declared functions: the library, the routine, the arguments, and what is written back.
#include "brindle/interpreter.h"
#include "calls/external_call.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "platform/path.h"
#include "platform/shared_library.h"

using namespace brindle;

namespace {

// "NAME.dll", else "NAME.so" and "libNAME.so", in the same folder if the name has one.
SharedLibrary OpenByStatedName(const CString& library, const FileRoot* root) {
  const std::u16string_view stated = library.View();
  const std::u16string_view folder = DirectoryPart(stated);
  const std::u16string name(stated.substr(0, stated.size() - std::u16string_view(kLibraryEnding).size()));
  const std::u16string candidates[] = {std::u16string(stated), name + u".so",
                                       std::u16string(folder) + u"lib" + name.substr(folder.size()) + u".so"};
  for (const std::u16string& candidate : candidates) {
    std::string reason; // the script is told by a number
    // Below a root no folder is searched: the name is that of a file.
    const std::string path = root != nullptr  ? root->PathOf(candidate).value_or(std::string())
                             : folder.empty() ? PathToNative(candidate)
                                              : ResolvePath(candidate);
    if (const SharedLibrary opened = SharedLibrary::Open(path, reason); opened.IsOpen())
      return opened;
  }
  return SharedLibrary();
}

} // namespace

bool CBrindle::ExecExternalFunction(CFuncDesc& function, CBasicVariable& result, Arguments& args) {
  // Load and resolve.
  if (function.m_pRoutine == nullptr) {
    const FileRoot* const root = m_pState->budget->Root();
    const FileRoot::Scope files(root);
    const SharedLibrary library = OpenByStatedName(function.m_strLibrary, root);
    if (!library.IsOpen())
      return Fail(files.HasRefused() ? kErrorNotAllowed : kErrorLibraryName);
    function.m_pRoutine = library.FindSymbol(function.m_strEntryName.ToUtf8());
    if (function.m_pRoutine == nullptr)
      return Fail(kErrorRoutineName);
  }
  const CArray<std::uint32_t> types = function.m_parameterTypes;
  const int count = args.GetSize();
  if (types.GetSize() != count || count > kMostParameters)
    return Fail(kErrorParameterCount);

  // Prepare the words, call, take the result.
  ExternalFrame frame;
  for (int i = 0; i < count; ++i)
    frame.Add(types[i], args[i]);
  const std::uint64_t word = frame.Invoke(function.m_pRoutine);
  frame.ReadResult(function.m_nReturnType, word, result);

  // Write back, into the variables that the arguments are, if they are any.
  const int firstName = m_pState->m_arrTemporaries.GetSize() - count;
  for (int i = 0; i < count; ++i) {
    frame.ReadBack(i, types[i], args[i]);
    const CString name = firstName < 0 ? CString() : m_pState->m_arrTemporaries[firstName + i];
    if (IsWrittenBack(types[i]) && !name.IsEmpty())
      SetVariableDirect(name, args[i], args[i].GetCurIndex(), false);
  }
  return true;
}
