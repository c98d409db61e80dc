#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "platform/collections.h"

#include <chrono>

using brindle::InterpreterState;

CBrindle::CBrindle() : m_pState(std::make_unique<InterpreterState>()) {
  m_pState->token.token = &m_pState->scratch;
  m_pState->unrecoverableText = ErrorText(brindle::kErrorUnrecoverable);
  m_pState->loadingSourceText = ErrorText(brindle::kErrorLoadingSource);
  BuildCommandTable();
  BuildFunctionTable();
  BuildKeywordTable();
  AddToNotifyList();
  m_nNumberOfCopies += 1;

  try {
    SetVariableDirect(CString(u"Nothing"), CBasicVariable(), 0, true);
    SetVariableDirect(CString(u"True"), CBasicVariable(1), 0, true);
    SetVariableDirect(CString(u"False"), CBasicVariable(0), 0, true);
  } catch (...) {
    // An interpreter that was never built must not stand among the live ones.
    RemoveFromNotifyList();
    m_nNumberOfCopies -= 1;
    throw;
  }
  m_pState->random.Seed(static_cast<std::uint32_t>(std::chrono::system_clock::now().time_since_epoch().count()));
}

CBrindle::~CBrindle() {
  ExecTimerStop();
  RemoveFromNotifyList();
  LabelsFree();
  VariablesFree();
  FunctionsFree();
  MapsFree();
  TypesFree();
  EventsFree();
  m_pState->files.CloseAll();
  FileFormatCloseAll();
  COMPortCloseAll();
  m_nNumberOfCopies -= 1;
}

bool CBrindle::IsResident() const noexcept {
  return m_pState->resident;
}

CString CBrindle::GetLastError() const {
  return m_pState->lastError;
}

bool CBrindle::SetLimits(const CExecutionLimits& limits) {
  if (!m_pState->budget->SetLimits(limits))
    return false;
  m_pState->functions.NoteChange(); // statements are compiled anew, with or without a count
  return true;
}

void CBrindle::RequestStop() noexcept {
  m_pState->budget->Signal().Request();
}

bool CBrindle::IsStopRequested() const noexcept {
  return m_pState->budget->ShouldStop();
}

void CBrindle::SetUserInterface(CUserInterface* userInterface) noexcept {
  m_pState->userInterface = userInterface;
}

CUserInterface& CBrindle::GetUserInterface() const noexcept {
  return m_pState->userInterface != nullptr ? *m_pState->userInterface : CUserInterface::Default();
}
