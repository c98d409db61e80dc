// An interpreter that only reads: the tokenizer, the loader and the tables of the language, without running anything.
// Room: check. Used by: the rules of the check.
// May touch: the private members of its own interpreter.
// Must not: call what evaluates an expression or runs a statement.
// Invariant: errors of the interpreter's own members reach the listener, never a user.
#pragma once

#include "brindle/interpreter.h"
#include "interpreter/error_listener.h"
#include "interpreter/func_desc.h"
#include "interpreter/function_signature.h"
#include "interpreter/inclusion_map.h"
#include "interpreter/scanner.h"
#include "interpreter/source_lines.h"

#include <string_view>
#include <vector>

namespace brindle {

class ScriptReader : private ErrorListener {
public:
  // An error that putting the program together has met.
  struct LoadError {
    int number;
    std::uint32_t position;
  };

  ScriptReader();

  // False when the file cannot be read.
  [[nodiscard]] bool Load(const CString& file);
  void SetText(const CString& file, std::u16string_view text);
  [[nodiscard]] const std::vector<LoadError>& LoadErrors() const noexcept { return m_errors; }
  [[nodiscard]] const InclusionMap& Inclusions() const noexcept;
  [[nodiscard]] std::u16string_view Text() const noexcept;
  [[nodiscard]] SourceLines::Place PlaceOf(std::uint32_t position) const;

  // Reading. A token lives as long as the reader.
  const Token& Next();
  void PutBack();
  [[nodiscard]] const Token& Current() const noexcept;
  [[nodiscard]] std::uint32_t Position() const noexcept;
  void SetPosition(std::uint32_t position);
  // Goes on at a position as if a token of that kind had been read before it.
  void Resume(std::uint32_t position, BASIC_TOKEN_TYPE previous);
  [[nodiscard]] char16_t UnitAt(std::uint32_t position) const noexcept;
  [[nodiscard]] std::uint32_t PastBlanks(std::uint32_t position) const noexcept;
  // What the token behind the position is, without moving.
  [[nodiscard]] const Token& Peek();

  [[nodiscard]] BASIC_TOKEN_TYPE PreviousKind() const noexcept;
  [[nodiscard]] bool IsDelimiter(char16_t unit) const noexcept;
  [[nodiscard]] bool AtStatementEnd() const noexcept;
  void FindEndOfLine();
  void NextBlockLine();
  void StepOver();
  // Skips as a branch or loop does; the word that it stopped on is current.
  void FindLastPair(COMMAND_TYPE open, COMMAND_TYPE close, COMMAND_TYPE middle);

  // What names mean.
  [[nodiscard]] WordCodes MeaningOf(const CString& lowered) const;
  [[nodiscard]] const CFuncDesc* FindFunction(const CString& lowered) const;
  [[nodiscard]] const FunctionSignature& SignatureOf(FUNCTION_TYPE code) const noexcept;
  [[nodiscard]] bool AddFunction(const CFuncDesc& function);
  // Everything behind "declare"; where it fails the token that does not belong there is current.
  [[nodiscard]] bool ReadDeclare(CFuncDesc& function);
  [[nodiscard]] static bool IsFieldType(KEYWORD_TYPE keyword);

private:
  void OnError(int number) override;
  void PutTogether();

  CBrindle m_interpreter;
  std::vector<LoadError> m_errors;
};

} // namespace brindle
