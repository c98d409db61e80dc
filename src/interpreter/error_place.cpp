// Where an error is reported: the place itself, and the calls in progress on both routes.
#include "brindle/interpreter.h"
#include "interpreter/state.h"

#include <new>

using namespace brindle;

namespace {

// Of an enciphered program only the files that it includes are anybody's to read.
bool IsHidden(const ProgramText& program, const SourceLines::Place& place) {
  return program.IsHidden() && (place.region == nullptr || place.region == &program.Files().Regions().front());
}

const CString& FileOf(const ProgramText& program, const SourceLines::Place& place) {
  return place.region == nullptr ? program.Name() : place.region->name;
}

// The table knows a procedure in small letters. Its definition, which ends the name at the function's position, may
// have been replaced since the call was made.
CString WrittenName(const CFuncDesc& function) {
  if (function.m_pProgram == nullptr)
    return function.m_strName;
  const std::u16string_view text = function.m_pProgram->Text();
  const auto length = static_cast<std::size_t>(function.m_strName.GetLength());
  if (function.m_nPosition < length || function.m_nPosition > text.size())
    return function.m_strName;
  const CString written(text.substr(function.m_nPosition - length, length));
  return written.CompareNoCase(function.m_strName) == 0 ? written : function.m_strName;
}

// `program` is the caller's; null when the call stands at no statement.
void AddCall(CErrorPlace& place, CCallFrame::Kind kind, const CString& name, const ProgramText* program,
             std::uint32_t position) {
  if (place.calls.size() >= CErrorPlace::kMostCalls) {
    ++place.callsLeftOut;
    return;
  }
  CCallFrame frame;
  frame.kind = kind;
  frame.name = name;
  if (program != nullptr) {
    const SourceLines::Place caller = program->PlaceOf(position);
    frame.file = FileOf(*program, caller);
    frame.line = caller.line;
  }
  place.calls.push_back(std::move(frame));
}

} // namespace

const CErrorPlace& CBrindle::GetErrorPlace() const noexcept {
  return m_pState->errorPlace;
}

CErrorPlace CBrindle::PlaceOfError(int number) const {
  CErrorPlace place;
  place.number = number;
  const ProgramText* const program = m_pState->program.get();
  if (program == nullptr)
    return place;
  try {
    // The word that was read last, or was given back, is what the error is about.
    const Token& token = *m_pState->token.token;
    const bool isCurrent = token.end == m_pState->position && token.start < token.end;
    const SourceLines::Place here = program->PlaceOf(isCurrent ? token.start : m_pState->position);
    place.file = FileOf(*program, here);
    place.line = here.line;
    place.column = here.column;
    if (!IsHidden(*program, here))
      place.sourceLine = CString(here.text);
    AddCalls(place);
  } catch (const std::bad_alloc&) {
    // The error itself matters more than what is known of its place.
  }
  return place;
}

// The innermost first; behind this interpreter's calls those of the one whose "run" it serves.
void CBrindle::AddCalls(CErrorPlace& place) const {
  const InterpreterState& state = *m_pState;
  const ProgramText* program = state.program.get();
  std::size_t frames = state.fast.frames.size();
  const auto addFrames = [&](std::size_t older) {
    for (; frames > older; --frames) {
      const FastFrame& frame = state.fast.frames[frames - 1];
      AddCall(place, CCallFrame::Kind::Procedure, WrittenName(*frame.Callee().function), program, frame.Closing());
    }
  };
  for (const CallRecord* call = state.calls; call != nullptr; call = call->outer) {
    addFrames(call->frames);
    const CString name = call->function == nullptr ? program->Name() : WrittenName(*call->function);
    AddCall(place, call->kind, name, call->hasPlace ? call->program : nullptr, call->position);
    program = call->program;
  }
  addFrames(0);
  if (state.starter == nullptr)
    return;
  const InterpreterState& starter = *state.starter->m_pState;
  AddCall(place, CCallFrame::Kind::Program, program == nullptr ? CString() : program->Name(), starter.program.get(),
          starter.position);
  state.starter->AddCalls(place);
}
