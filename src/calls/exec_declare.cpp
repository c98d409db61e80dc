// "declare": a routine of a library, its parameters and its result, under a name of the script's.
#include "brindle/interpreter.h"
#include "calls/external_call.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"

#include <array>
#include <memory>
#include <string_view>

using namespace brindle;

unsigned long CBrindle::GetReturnTypeDef(CString& name, bool& ok) {
  struct TypeName {
    std::u16string_view name;
    std::uint32_t type;
  };
  // Deliberate: "double" is a 32-bit float, and both texts are UTF-16.
  static constexpr std::array kTypeNames = {
      TypeName{u"char", kTypeChar},
      TypeName{u"integer", kTypeInteger},
      TypeName{u"float", kTypeFloat},
      TypeName{u"double", kTypeFloat},
      TypeName{u"unicode", kTypeUnicode | kByReference},
      TypeName{u"string", kTypeString | kByReference},
  };
  name.MakeLower();
  for (const TypeName& known : kTypeNames) {
    if (name.View() == known.name) {
      ok = true;
      return known.type;
    }
  }
  ok = false;
  return 0;
}

// "as" TYPE, of which "as" is the current token.
bool CBrindle::ReadParameterType(std::uint32_t& type) {
  const TokenState& token = m_pState->token;
  if (token.keyword != KEYWORD_AS)
    return false;
  get_token();
  // With a ":" directly behind it the word is a label to the token reader.
  if (token.kind != TOKEN_KEYWORD && token.kind != TOKEN_LABEL)
    return false;
  CString name = token.Text();
  bool known = false;
  type = static_cast<std::uint32_t>(GetReturnTypeDef(name, known));
  return known;
}

// Everything behind "declare". False at the first token that does not belong there.
bool CBrindle::ReadDeclare(CFuncDesc& function) {
  const TokenState& token = m_pState->token;
  get_token();
  if (token.command != COMMAND_FUNCTION && token.command != COMMAND_SUB)
    return false;
  function.m_nKind = token.command == COMMAND_FUNCTION ? CFuncDesc::kExternalFunction : CFuncDesc::kExternalSub;

  get_token();
  if (token.kind != TOKEN_VARIABLE)
    return false;
  function.m_strName = function.m_strEntryName = token.Text();

  get_token();
  if (token.keyword != KEYWORD_LIB)
    return false;
  get_token();
  if (token.kind != TOKEN_STRING)
    return false;
  function.m_strLibrary = token.Text() + kLibraryEnding;

  get_token();
  if (token.keyword == KEYWORD_ALIAS) {
    get_token();
    if (token.kind != TOKEN_STRING)
      return false;
    // Deliberate: the alias is the script's name, the identifier stays the library's.
    function.m_strName = token.Text();
    get_token();
  }
  function.m_strName.MakeLower();

  if (!IsDelimiter(u'('))
    return false;
  get_token();
  if (!IsDelimiter(u')')) {
    for (;;) {
      const bool byValue = token.keyword == KEYWORD_BYVAL;
      if (byValue)
        get_token();
      if (token.kind != TOKEN_VARIABLE)
        return false;
      get_token();
      std::uint32_t type = 0;
      if (!ReadParameterType(type))
        return false;
      function.m_parameterTypes.Add(byValue ? type : type | kByReference);
      get_token();
      if (IsDelimiter(u')'))
        break;
      if (!IsDelimiter(u','))
        return false;
      get_token();
    }
  }

  get_token();
  if (token.keyword == KEYWORD_AS)
    return ReadParameterType(function.m_nReturnType);
  putback();
  return true;
}

// declare function|sub NAME lib "LIBRARY" [alias "SCRIPTNAME"] ([byval] NAME as TYPE, ...) [as TYPE]
// One that fails is left behind its line.
bool CBrindle::ExecDeclare() {
  auto function = std::make_unique<CFuncDesc>();
  function->m_nCode = FUNCTION_EXTERNAL;
  if (!ReadDeclare(*function)) {
    ReportError(kErrorSyntax);
    putback();
    FindEOL();
    return false;
  }
  if (m_pState->budget->Limits().noLibraries)
    return Fail(kErrorNotAllowed);
  if (!AddFunction(function.get()))
    return false;
  function.release();
  return true;
}
