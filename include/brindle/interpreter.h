// CBrindle: one script interpreter. This header is its table of contents, grouped by room.
// Room: interpreter. Used by: hosts and every room that implements members of it.
// May touch: only declarations; what an instance holds stands in src/interpreter/state.h.
// Must not: include other rooms' headers.
// Invariant: everything runs on the thread that called in.
#pragma once

#include "brindle/error_place.h"
#include "brindle/limits.h"
#include "brindle/user_interface.h"
#include "brindle/variable.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class CBrindle;
class CFuncDesc;
class CMapStringToPtr;
class CPtrList;
class CCriticalSection;
class CTypeStructure;
class COleVariant;
struct CStackData;

enum BASIC_TOKEN_TYPE : int;
enum COMMAND_TYPE : int;
enum KEYWORD_TYPE : int;
enum FUNCTION_TYPE : int;
enum ARITHMETIC_OPERATION : int;
enum LOGICAL_OPERATION : int;
enum TYPE_DEFINITION : int;

namespace brindle {
struct InterpreterState;
class ComPort;
class ObjectReference;
class ProgramText;
class ScriptDialog;
class ScriptMap;
class VariableSlot;
class FastCompiler;
class FastMachine;
class ScriptReader;
struct FastEntry;
struct NameRef;
struct Token;
} // namespace brindle

/// Evaluated arguments, first one first.
using CBasicVariableArray = CArray<CBasicVariable, CBasicVariable>;

/// A function that the host adds to the language: the calling interpreter, the arguments as the script
/// passed them (any number), and the value given at registration. What it throws ends the run and reaches the
/// caller of ExecuteProgram, but for std::bad_alloc and std::length_error, which are reported as error 50. It may
/// create and destroy other interpreters, never the one that calls it.
using BrindleCallback = CBasicVariable (*)(CBrindle* interpreter, CBasicVariableArray& arguments, int value);

/// One interpreter. A host makes one per run, registers its own functions, and runs a script file; the
/// object keeps the script's variables, functions, files and tables until it is destroyed. Not copyable;
/// all calls on one object come from one thread.
///
/// Want of memory inside ExecuteProgram and EventThrow is told as error 50 (17 while the file is loaded) and ends
/// the run; that needs no memory, and when the box cannot be shown either it counts as cancelled. All other members
/// throw std::bad_alloc then and change nothing.
class BRINDLE_API CBrindle {
public:
  CBrindle();
  virtual ~CBrindle();
  CBrindle(const CBrindle&) = delete;
  CBrindle& operator=(const CBrindle&) = delete;

  /// Loads and runs a script. False only when the file cannot be loaded (error 17, no event is thrown), or
  /// when it is called so deep inside other calls that no stack is left to run it (error 50); a
  /// run that reported errors, or that the user aborted, gives true: see GetLastError. May be called again;
  /// variables, functions, handlers and open files of earlier runs are still there. A call from a callback
  /// runs the other script and then goes on with the first one.
  bool ExecuteProgram(const CString& fileName);
  /// Runs a text as ExecuteProgram runs a file's. `name` stands where the file's name would: in error places, as the
  /// argument of "OnStart", and its folder is where "include" and "library" look first. A host that reads statements
  /// from somewhere else runs them one text after the other: variables and procedures stay.
  bool ExecuteText(const CString& text, const CString& name);
  /// Whether the script asked to be kept alive for events and its timer ("stayresident").
  [[nodiscard]] bool IsResident() const noexcept;
  /// The last error: message, line feed, failing line. Empty when there was none.
  [[nodiscard]] CString GetLastError() const;
  /// Where the last error was reported: file, line, column and the calls in progress. Its line is 0 when there was
  /// no error, or none that a line can be blamed for (a script that cannot be loaded).
  [[nodiscard]] const CErrorPlace& GetErrorPlace() const noexcept;
  /// Stores and shows a numbered error with the current line. Returns when the user says OK, and in any case
  /// when nothing runs; inside a run, Cancel unwinds to the call that began it, through the caller.
  void ReportError(int number);

  /// Adds a function to the language, for every interpreter of the process, until the last one ends. The
  /// first registration of a name wins. Names with capital letters are stored but cannot be called.
  /// `userData` is not used. False for an empty name or a null callback.
  bool AddCustomFunction(const CString& name, BrindleCallback callback, int value, void* userData);

  /// Calls every handler of the event in order of attachment; false when there is no such event (or the
  /// value is null). Handlers get the arguments, or a copy of the value.
  bool EventThrow(const CString& event, CBasicVariableArray& arguments);
  bool EventThrow(const CString& event, CBasicVariable* value);
  /// The live list of handler names (lower case), null when there is no such event. Owned by the interpreter.
  [[nodiscard]] CStringArray* EventFind(const CString& event);
  /// Throws the event at every live interpreter, oldest first, on the calling thread.
  static void SendEvent(const CString& event, CBasicVariableArray& arguments);
  static void SendEvent(const CString& event, CBasicVariable* value);
  /// Whether this points at a live interpreter; any pointer may be asked about.
  [[nodiscard]] static bool IsValidInterpreter(const CBrindle* interpreter);

  /// Whether a script file names itself a tool in its first line ("TOOLMENU" ... "=" caption); the caption
  /// is what follows the "=". False, caption unchanged, otherwise and for an unreadable file.
  [[nodiscard]] static bool IsExtensionScript(const CString& path, CString& caption);

  /// What scripts are allowed from the next run on. False, and nothing changes, when the root is no folder that can be
  /// opened, or inside a run. Drops a stop that was asked for and not met yet.
  [[nodiscard]] bool SetLimits(const CExecutionLimits& limits);
  /// Ends the run, event or tick in progress at its next statement, with the text 64 and without a box, scripts that it
  /// runs by "run" included. What waits for input, or for a serial line, stops waiting. Asked for while nothing runs,
  /// it meets the next run. The one member that may be called on any thread and in a signal handler, as long as the
  /// interpreter lives.
  void RequestStop() noexcept;
  /// Whether a stop was asked for or a budget is used up: what a host function that takes long may look at.
  [[nodiscard]] bool IsStopRequested() const noexcept;

  /// Where this interpreter's boxes and dialogs go; null: the process-wide default. Borrowed.
  void SetUserInterface(CUserInterface* userInterface) noexcept;
  [[nodiscard]] CUserInterface& GetUserInterface() const noexcept;

private:
  friend struct BrindleTestAccess;
  friend class CBasicVariable;
  friend class brindle::FastCompiler;
  friend class brindle::FastMachine;
  friend class brindle::ScriptReader;
  using Arguments = CBasicVariableArray;
  struct ProcedureScope;
  struct RunScope;
  enum class BodyState { GoesOn, Ended, Failed };

  // ---- interpreter: running a program, reading position (program.cpp, position.cpp)
  template <class Load> bool LoadAndRun(const CString& name, bool isScripts, Load load);
  bool LoadProgram(const CString& fileName);
  bool TakeText(const CString& fileName, std::optional<std::u16string> text);
  void SetProgram(const CString& fileName, std::u16string text);
  template <class Body, class Release> void RunToAbort(Body body, Release release);
  void RunAlone(const std::function<void()>& body);
  template <class Body> void RunInside(Body body);
  bool RunFile(const CString& fileName, bool isScripts);
  void RunProgram(CString fileName);
  void RunLoop();
  bool RunCompiled();
  brindle::FastEntry* CompiledEntry();
  bool TakeFromTape(int level, CBasicVariable& result);
  [[nodiscard]] CString GetCurrentLine();
  [[nodiscard]] char16_t CurChar() const noexcept;
  void NextChar() noexcept;
  [[nodiscard]] bool IsEndOfProgram() const noexcept;
  bool Rewind(unsigned long position);
  bool Rewind();
  void PushPosition(unsigned long position);
  bool PopPosition(unsigned long& position);
  bool FindEOL();
  bool GoPastEOL();
  void StepOver();
  [[nodiscard]] bool AtStatementEnd() const noexcept;
  [[nodiscard]] bool IsDelimiter(char16_t unit) const noexcept;

  // ---- interpreter: labels (labels.cpp)
  bool LabelsScan();
  bool LabelAdd(const CString& name, unsigned long position);
  bool LabelGet(const CString& name, unsigned long& position);
  bool LabelsFree();

  // ---- interpreter: errors (errors.cpp, error_place.cpp)
  [[nodiscard]] CErrorPlace PlaceOfError(int number) const;
  void AddCalls(CErrorPlace& place) const;
  bool Fail(int number);
  [[noreturn]] void AbortWith(int number);
  [[nodiscard]] CString ErrorText(int number);
  void ReportOrGiveUp(int number);
  [[noreturn]] void AbortByBudget(std::optional<int> number);
  void CheckCallDepth();
  [[nodiscard]] bool PathForOthers(CString& path);
  void CountStatement();
  void CheckNesting();

  // ---- interpreter: tokens and tables (tokens.cpp, word_tables.cpp, function_table.cpp)
  BASIC_TOKEN_TYPE get_token();
  void putback();
  bool BuildCommandTable();
  bool BuildKeywordTable();
  bool BuildFunctionTable();
  [[nodiscard]] COMMAND_TYPE LookupCommand(const CString& word) const;
  [[nodiscard]] KEYWORD_TYPE LookupKeyword(const CString& word) const;
  bool AddFunction(CFuncDesc* function);
  FUNCTION_TYPE LookupFunction(const CString& name, CFuncDesc& out, bool copy);
  FUNCTION_TYPE LookupFunction(const CString& name);
  FUNCTION_TYPE ResolveFunction(const CString& lowered);
  CFuncDesc* FindFunction(const CString& lowered) const;

  // ---- interpreter: expressions (evaluator.cpp, operators.cpp, conditions.cpp, function_call.cpp)
  void get_exp(CBasicVariable& result);
  void level2(CBasicVariable& result);
  void level3(CBasicVariable& result);
  void level4(CBasicVariable& result);
  void level5(CBasicVariable& result);
  void level6(CBasicVariable& result);
  void primitive(CBasicVariable& result);
  void ReadVariable(CBasicVariable& result);
  void ReadProperty(CBasicVariable& result);
  void ApplyOperator(char16_t operation, void (CBrindle::*readOperand)(CBasicVariable&), CBasicVariable& left);
  void unary(char16_t operation, CBasicVariable& value);
  void ComputeOperation(char16_t operation, CBasicVariable& left, CBasicVariable& right);
  void ComputeArithmetic(char16_t operation, double* left, double* right);
  void ComputeString(char16_t operation, CString& left, const CString& right);
  [[nodiscard]] static ARITHMETIC_OPERATION GetArithOperation(char16_t operation) noexcept;
  LOGICAL_OPERATION GetLogOperation();
  bool ExecLogicalStatement();
  bool ExecFunction(CBasicVariable& result);

  // ---- interpreter: statements (dispatch.cpp, exec_*.cpp)
  bool Exec_command();
  bool assignment();
  bool ExecPrint();
  bool ExecIf();
  bool ExecElse();
  bool ExecFor();
  bool ExecNext();
  bool ExecDoWhile();
  bool ExecLoop();
  bool ExecGoto();
  bool ExecGosub();
  bool ExecReturn();
  bool ExecPlaySound();
  bool ExecCommandStatement();
  bool FindLastPair(COMMAND_TYPE open, COMMAND_TYPE close, COMMAND_TYPE middle);
  bool PushToStack(const CStackData& entry);
  bool PushToStack(const CString& name, double value, unsigned long position);
  bool PopFromStack(CStackData& out);

  // ---- interpreter: script composition (composition.cpp, exec_run.cpp)
  bool LoadLibraries();
  bool ExecLibrary(const CString& name);
  bool ExecInclude(const CString& name);
  bool ExecRun(bool script);

  // ---- data: variables (variables.cpp, exec_dim.cpp)
  void AddScopeLevelExtension(CString& name) const;
  CBasicVariable* FindVariable(CString& name);
  brindle::VariableSlot* FindSlot(const CString& name);
  brindle::NameRef RefOf(const brindle::Token& token);
  bool StoreItem(const brindle::NameRef& name, const CBasicVariable& value, int index, bool bGlobal);
  bool StoreWhole(const brindle::NameRef& name, const CBasicVariable& value, bool bGlobal);
  CString GetVariableName(const CString& name);
  bool SetVariable(const CString& name, const CBasicVariable& value, int index);
  bool SetVariable(const CString& name, double value, int index);
  bool SetVariable(const CString& name, const CString& value, int index);
  bool SetVariableDirect(const CString& name, const CBasicVariable& value, int index, bool bGlobal);
  bool SetVariableSize(const CString& name, int size, bool bGlobal);
  bool CopyVariable(const CString& name, const CBasicVariable& value, bool bGlobal);
  int GetVariableSize(const CString& name);
  bool VariableUndefine(const CString& name);
  bool GetIndex(int& index);
  bool ReadIndexBehindName(int& index);
  bool ExecDim(bool bGlobal);
  bool ReadDeclaration(bool bGlobal);
  bool VariablesFree();
  void ObjectVariablesFree(int level);
  bool ExecGetVarStats(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool ExecGarbageCollection(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);

  // ---- data: record types and maps (exec_type.cpp, map_functions.cpp)
  bool ExecType();
  int ReadField(CTypeStructure& type);
  void NextBlockLine();
  bool LeaveBlock(int error, COMMAND_TYPE end);
  [[nodiscard]] static TYPE_DEFINITION KeywordToType(KEYWORD_TYPE keyword);
  bool LookupUserDefinedType(const CString& name, CTypeStructure*& type);
  bool TypesFree();
  CTypeStructure* FindRecord(const CString& name);
  bool FindStructVariable(const CString& var, const CString& field, CBasicVariable& out, bool bReport);
  bool SetStructVariable(const CString& var, const CString& field, CBasicVariable& value);
  bool IsRecordField(const CString& name);
  void ReadRecordField(CBasicVariable& result);
  bool StoreRecordField(const CString& name, CBasicVariable& value, int index);
  bool ExecMap();
  bool MapAdd(const CString& name);
  brindle::ScriptMap* MapLookup(const CString& name);
  bool MapClear(const CString& name);
  bool MapAddToMap(const CString& name, const CString& key, const CBasicVariable& value);
  bool MapGetFromMap(const CString& name, const CString& key, CBasicVariable& out);
  bool MapRemoveFromMap(const CString& name, const CString& key);
  bool MapGetKeys(const CString& name, CBasicVariable& out);
  bool MapGetValues(const CString& name, CBasicVariable& out);
  bool MapsFree();
  bool ExecMapOperation(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);

  // ---- data: built-in functions (*_functions.cpp)
  bool CheckArguments(const Arguments& args, FUNCTION_TYPE type);
  bool ExecStringOperation(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool ExecFormat(CBasicVariable& result, const CBasicVariable& value, const CString& format);
  bool ExecArithmetics(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool ExecTimeFunc(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool ExecPointOffset(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);

  // ---- calls: procedures (procedures.cpp, parameters.cpp)
  int GetParamList(Arguments& args);
  int GetParamGroup(Arguments& args);
  void ReadArgument(Arguments& args);
  void ReadClosingParenthesis();
  bool ExecUserFunction(const CString& name, CBasicVariable& result, Arguments& args, bool isCall);
  bool RunProcedure(const CFuncDesc& function, CBasicVariable& result, Arguments& args, bool isCall);
  bool BindParameters(const CFuncDesc& function, Arguments& args);
  bool RunBody();
  BodyState StepBody(bool isCounted = false);
  bool ExecCall();
  bool FunctionsFree();

  // ---- calls: host functions, routines of libraries (custom_functions.cpp, exec_declare.cpp, external_functions.cpp)
  bool ExecCustomFunction(CFuncDesc& function, CBasicVariable& result, Arguments& args);
  bool ExecDeclare();
  bool ReadDeclare(CFuncDesc& function);
  bool ReadParameterType(std::uint32_t& type);
  static unsigned long GetReturnTypeDef(CString& name, bool& ok);
  bool ExecExternalFunction(CFuncDesc& function, CBasicVariable& result, Arguments& args);

  // ---- calls: Automation objects (automation_bridge.cpp)
  bool ExecCreateObject(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool ExecAutomationMethod(const CString& name, CBasicVariable& result, Arguments& args, bool isCall);
  CBasicVariable GetObjectProperty(IDispatch* object, const CString& name);
  bool SetObjectProperty(const CString& name, CBasicVariable& value);
  bool FindObject(const CString& dottedName, brindle::ObjectReference& object);
  bool GetDispID(IDispatch* object, const CString& name, std::int32_t& member);
  bool InvokeMember(IDispatch* object, std::int32_t member, std::uint16_t flags, DISPPARAMS& arguments,
                    CBasicVariable* result);
  static COleVariant BasicVarToVariant(CBasicVariable& value);
  static CBasicVariable VariantToBasicVar(COleVariant& variant);
  bool HandleAutomationError(long code, EXCEPINFO& info);
  void ReportAutomation(const CString& text);

  // ---- ui: dialogs, property sheets, control access (exec_dialog.cpp, exec_alter.cpp, control_functions.cpp)
  bool ExecDialog();
  bool ExecControl(std::vector<std::byte>& item, int& id, CString& handler);
  static bool CreateItemTemplate(std::uint32_t style, const CBasicVariableArray& args, int id, std::uint16_t classCode,
                                 std::vector<std::byte>& item);
  static bool CreateItemTemplate(std::uint32_t style, const CBasicVariableArray& args, int id, const CString& className,
                                 std::vector<std::byte>& item);
  bool ExecPropertySheet();
  bool ExecPropertyPage(brindle::ScriptDialog& dialog);
  int ReadDialogLine(brindle::ScriptDialog& dialog, std::vector<std::byte>& dialogTemplate);
  int ReadDialogName(CString& name);
  bool RunDialog(brindle::ScriptDialog& dialog);
  void RaiseHandler(const CString& name, const CBasicVariable& value);
  [[nodiscard]] brindle::ScriptDialog* CurrentDialog() const noexcept;
  [[nodiscard]] bool GetControlWindow(int id) const;
  bool ExecCloseDialog();
  bool ExecSetFocus();
  bool ExecAlterControl();
  int AlterLine(brindle::ScriptDialog& dialog, int id);
  bool ReadOperands(Arguments& args, int count);
  bool ExecGetControlValue(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool ExecAsk(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool ExecFileDlg(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool ExecPopupMenu(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool ExecWindowHandle(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool ExecCopyData(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool ExecSendMessage(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);

  // ---- calls: enciphered scripts (script_cipher.cpp)
  bool Decrypt();
  bool ExecEncrypt();

  // ---- calls: events, watches, timer, registry of live interpreters (exec_event.cpp, events.cpp, registry.cpp)
  bool ExecEvent();
  bool ExecThrow();
  bool ExecWatch();
  bool ExecTimerStart();
  bool ExecTimerStop();
  void TimerTick();
  bool RaiseEvent(const CString& event, Arguments& args);
  void CallHandlers(CStringArray& handlers, Arguments& args);
  bool EventAdd(const CString& event, const CString& handler);
  bool EventRemove(const CString& event, const CString& handler);
  bool EventRemove(const CString& event);
  bool EventsFree();
  void AddToNotifyList();
  void RemoveFromNotifyList();

  // ---- io: script files (exec_open.cpp, file_functions.cpp, find_files.cpp)
  bool ExecOpenFile();
  bool ExecCloseFile();
  bool ExecFileOperation(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool ExecFindFiles(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);

  // ---- io: dBase tables (dbf_functions.cpp)
  bool ExecDBFOperation(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  void FileFormatCloseAll();

  // ---- io: serial ports (com_port_functions.cpp)
  bool ExecComPortOperation(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type);
  bool COMPortAdd(unsigned short number, std::unique_ptr<brindle::ComPort> port);
  brindle::ComPort* COMPortFind(unsigned short number);
  bool COMPortClose(unsigned short number);
  void COMPortCloseAll();

  std::unique_ptr<brindle::InterpreterState> m_pState;

  static int m_nNumberOfCopies;
  static std::atomic<std::uint64_t> m_nHostFunctionChanges;
  static CPtrList m_List;
  static CCriticalSection m_Door;
  static CMapStringToPtr m_ExtFunctionTable;
};
