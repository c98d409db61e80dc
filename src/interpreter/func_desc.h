// CFuncDesc: everything the interpreter knows about one callable name.
// Room: interpreter. Used by: function tables, LookupFunction, the calls room.
// May touch: nothing.
// Invariant: owned by the table that holds it; a script procedure keeps the text that its body stands in.
#pragma once

#include "brindle/interpreter.h"
#include "interpreter/language.h"

#include <memory>

class CFuncDesc {
public:
  using Handler = bool (CBrindle::*)(CBasicVariable& result, CBasicVariableArray& args, FUNCTION_TYPE type);

  // Where a name comes from.
  enum Kind : int {
    kNone = 0,
    kBuiltIn = 1, // also what the host registered
    kProcedure = 2,
    kExternalFunction = 4,
    kExternalSub = 5
  };

  CFuncDesc() = default;
  // A built-in.
  CFuncDesc(const CString& name, FUNCTION_TYPE code, Handler handler)
      : m_strName(name), m_strEntryName(name), m_nCode(code), m_nKind(kBuiltIn), m_pHandler(handler) {}
  // A script procedure whose parameter list starts at `position`.
  CFuncDesc(const CString& name, std::uint32_t position)
      : m_strName(name), m_strEntryName(name), m_nCode(FUNCTION_SCRIPT), m_nKind(kProcedure), m_nPosition(position) {}

  CString m_strName;
  CString m_strLibrary;
  CString m_strEntryName;
  FUNCTION_TYPE m_nCode = FUNCTION_NONE;
  Kind m_nKind = kNone;
  std::uint32_t m_nPosition = 0;
  CArray<std::uint32_t> m_parameterTypes;
  std::uint32_t m_nReturnType = 0;
  BrindleCallback m_pCallback = nullptr;
  Handler m_pHandler = nullptr;
  int m_nValue = 0;           // what the host registered with its callback
  void* m_pRoutine = nullptr; // of a declared function, once it was found: libraries stay loaded
  std::shared_ptr<brindle::ProgramText> m_pProgram;
};
