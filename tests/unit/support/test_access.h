// BrindleTestAccess: the private members of CBrindle that unit tests call.
// Room: tests. Used by: unit tests that need an interpreter without a script.
// May touch: members of CBrindle, each by one forwarding member.
// Must not: hold logic; a test that needs more says so in its own file.
// Invariant: every member forwards to the CBrindle member of the same name.
#pragma once

#include "brindle/interpreter.h"
#include "interpreter/state.h"
#include "platform/collections.h"

struct BrindleTestAccess {
  // The state itself, and the process-wide registries.
  static brindle::InterpreterState& State(CBrindle& interpreter) { return *interpreter.m_pState; }
  static int NumberOfCopies() { return CBrindle::m_nNumberOfCopies; }
  static const CPtrList& List() { return CBrindle::m_List; }
  static const CMapStringToPtr& ExtFunctionTable() { return CBrindle::m_ExtFunctionTable; }

  // Program text and reading position.
  static CString GetCurrentLine(CBrindle& interpreter) { return interpreter.GetCurrentLine(); }
  static char16_t CurChar(CBrindle& interpreter) { return interpreter.CurChar(); }
  static void NextChar(CBrindle& interpreter) { interpreter.NextChar(); }
  static bool IsEndOfProgram(CBrindle& interpreter) { return interpreter.IsEndOfProgram(); }
  static bool Rewind(CBrindle& interpreter, unsigned long position) { return interpreter.Rewind(position); }
  static bool Rewind(CBrindle& interpreter) { return interpreter.Rewind(); }
  static void PushPosition(CBrindle& interpreter, unsigned long position) { interpreter.PushPosition(position); }
  static bool PopPosition(CBrindle& interpreter, unsigned long& position) { return interpreter.PopPosition(position); }
  static bool FindEOL(CBrindle& interpreter) { return interpreter.FindEOL(); }
  static bool GoPastEOL(CBrindle& interpreter) { return interpreter.GoPastEOL(); }
  static bool LoadLibraries(CBrindle& interpreter) { return interpreter.LoadLibraries(); }

  // Labels.
  static bool LabelsScan(CBrindle& interpreter) { return interpreter.LabelsScan(); }
  static bool LabelAdd(CBrindle& interpreter, const CString& name, unsigned long position) {
    return interpreter.LabelAdd(name, position);
  }
  static bool LabelGet(CBrindle& interpreter, const CString& name, unsigned long& position) {
    return interpreter.LabelGet(name, position);
  }
  static bool LabelsFree(CBrindle& interpreter) { return interpreter.LabelsFree(); }

  // Tokens and tables.
  static BASIC_TOKEN_TYPE get_token(CBrindle& interpreter) { return interpreter.get_token(); }
  static void putback(CBrindle& interpreter) { interpreter.putback(); }
  static bool BuildCommandTable(CBrindle& interpreter) { return interpreter.BuildCommandTable(); }
  static bool BuildKeywordTable(CBrindle& interpreter) { return interpreter.BuildKeywordTable(); }
  static bool BuildFunctionTable(CBrindle& interpreter) { return interpreter.BuildFunctionTable(); }
  static COMMAND_TYPE LookupCommand(const CBrindle& interpreter, const CString& word) {
    return interpreter.LookupCommand(word);
  }
  static KEYWORD_TYPE LookupKeyword(const CBrindle& interpreter, const CString& word) {
    return interpreter.LookupKeyword(word);
  }
  static bool AddFunction(CBrindle& interpreter, CFuncDesc* function) { return interpreter.AddFunction(function); }
  static FUNCTION_TYPE LookupFunction(CBrindle& interpreter, const CString& name, CFuncDesc& out, bool copy) {
    return interpreter.LookupFunction(name, out, copy);
  }
  static FUNCTION_TYPE LookupFunction(CBrindle& interpreter, const CString& name) {
    return interpreter.LookupFunction(name);
  }

  // Expressions.
  static void get_exp(CBrindle& interpreter, CBasicVariable& result) { interpreter.get_exp(result); }
  static void unary(CBrindle& interpreter, char16_t operation, CBasicVariable& value) {
    interpreter.unary(operation, value);
  }
  static void ComputeOperation(CBrindle& interpreter, char16_t operation, CBasicVariable& left, CBasicVariable& right) {
    interpreter.ComputeOperation(operation, left, right);
  }
  static ARITHMETIC_OPERATION GetArithOperation(char16_t operation) { return CBrindle::GetArithOperation(operation); }
  static LOGICAL_OPERATION GetLogOperation(CBrindle& interpreter) { return interpreter.GetLogOperation(); }
  static bool ExecLogicalStatement(CBrindle& interpreter) { return interpreter.ExecLogicalStatement(); }

  // Statements and the control stack.
  static bool Exec_command(CBrindle& interpreter) { return interpreter.Exec_command(); }
  static bool ExecGosub(CBrindle& interpreter) { return interpreter.ExecGosub(); }
  static bool FindLastPair(CBrindle& interpreter, COMMAND_TYPE open, COMMAND_TYPE close, COMMAND_TYPE middle) {
    return interpreter.FindLastPair(open, close, middle);
  }
  static bool PushToStack(CBrindle& interpreter, const CStackData& entry) { return interpreter.PushToStack(entry); }
  static bool PushToStack(CBrindle& interpreter, const CString& name, double value, unsigned long position) {
    return interpreter.PushToStack(name, value, position);
  }
  static bool PopFromStack(CBrindle& interpreter, CStackData& out) { return interpreter.PopFromStack(out); }

  // Variables.
  static CBasicVariable* FindVariable(CBrindle& interpreter, CString& name) { return interpreter.FindVariable(name); }
  static bool SetVariable(CBrindle& interpreter, const CString& name, const CBasicVariable& value, int index) {
    return interpreter.SetVariable(name, value, index);
  }
  static bool SetVariable(CBrindle& interpreter, const CString& name, const CString& value, int index) {
    return interpreter.SetVariable(name, value, index);
  }
  static bool CopyVariable(CBrindle& interpreter, const CString& name, const CBasicVariable& value, bool global) {
    return interpreter.CopyVariable(name, value, global);
  }
  static void AddScopeLevelExtension(const CBrindle& interpreter, CString& name) {
    interpreter.AddScopeLevelExtension(name);
  }

  // Built-in functions.
  static bool ExecStringOperation(CBrindle& interpreter, CBasicVariable& result, CBasicVariableArray& arguments,
                                  FUNCTION_TYPE type) {
    return interpreter.ExecStringOperation(result, arguments, type);
  }
  static bool ExecArithmetics(CBrindle& interpreter, CBasicVariable& result, CBasicVariableArray& arguments,
                              FUNCTION_TYPE type) {
    return interpreter.ExecArithmetics(result, arguments, type);
  }
  static bool ExecTimeFunc(CBrindle& interpreter, CBasicVariable& result, CBasicVariableArray& arguments,
                           FUNCTION_TYPE type) {
    return interpreter.ExecTimeFunc(result, arguments, type);
  }
  static bool ExecPointOffset(CBrindle& interpreter, CBasicVariable& result, CBasicVariableArray& arguments,
                              FUNCTION_TYPE type) {
    return interpreter.ExecPointOffset(result, arguments, type);
  }

  static bool ExecComPortOperation(CBrindle& interpreter, CBasicVariable& result, CBasicVariableArray& arguments,
                                   FUNCTION_TYPE type) {
    return interpreter.ExecComPortOperation(result, arguments, type);
  }

  // Calls.
  static int GetParamList(CBrindle& interpreter, CBasicVariableArray& arguments) {
    return interpreter.GetParamList(arguments);
  }
  static int GetParamGroup(CBrindle& interpreter, CBasicVariableArray& arguments) {
    return interpreter.GetParamGroup(arguments);
  }
  static bool ExecUserFunction(CBrindle& interpreter, const CString& name, CBasicVariable& result,
                               CBasicVariableArray& arguments, bool isCall) {
    return interpreter.ExecUserFunction(name, result, arguments, isCall);
  }
  static unsigned long GetReturnTypeDef(CString& name, bool& ok) { return CBrindle::GetReturnTypeDef(name, ok); }
  static bool ExecExternalFunction(CBrindle& interpreter, CFuncDesc& function, CBasicVariable& result,
                                   CBasicVariableArray& arguments) {
    return interpreter.ExecExternalFunction(function, result, arguments);
  }
  static bool ExecReturn(CBrindle& interpreter) { return interpreter.ExecReturn(); }
  static bool Decrypt(CBrindle& interpreter) { return interpreter.Decrypt(); }

  // Events.
  static bool EventAdd(CBrindle& interpreter, const CString& event, const CString& handler) {
    return interpreter.EventAdd(event, handler);
  }
  static bool EventRemove(CBrindle& interpreter, const CString& event, const CString& handler) {
    return interpreter.EventRemove(event, handler);
  }
  static bool EventRemove(CBrindle& interpreter, const CString& event) { return interpreter.EventRemove(event); }
};
