// The words of the language. Two tables and their look-up: one concern, long because it is a table.
#include "interpreter/word_tables.h"

#include "brindle/interpreter.h"
#include "interpreter/state.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

template <class Code> struct Word {
  std::u16string_view text;
  Code code;
};

// ORDER COMMAND; sorted by word
constexpr std::array kCommands = {
    Word<COMMAND_TYPE>{u"alter", COMMAND_ALTER},
    Word<COMMAND_TYPE>{u"call", COMMAND_CALL},
    Word<COMMAND_TYPE>{u"close", COMMAND_CLOSE},
    Word<COMMAND_TYPE>{u"closedialog", COMMAND_CLOSEDIALOG},
    Word<COMMAND_TYPE>{u"declare", COMMAND_DECLARE},
    Word<COMMAND_TYPE>{u"dialog", COMMAND_DIALOG},
    Word<COMMAND_TYPE>{u"dim", COMMAND_DIM},
    Word<COMMAND_TYPE>{u"do", COMMAND_DO},
    Word<COMMAND_TYPE>{u"else", COMMAND_ELSE},
    Word<COMMAND_TYPE>{u"encrypt", COMMAND_ENCRYPT},
    Word<COMMAND_TYPE>{u"end", COMMAND_END},
    Word<COMMAND_TYPE>{u"endalter", COMMAND_ENDALTER},
    Word<COMMAND_TYPE>{u"enddialog", COMMAND_ENDDIALOG},
    Word<COMMAND_TYPE>{u"endfunction", COMMAND_ENDFUNCTION},
    Word<COMMAND_TYPE>{u"endif", COMMAND_ENDIF},
    Word<COMMAND_TYPE>{u"endpage", COMMAND_ENDPAGE},
    Word<COMMAND_TYPE>{u"endsub", COMMAND_ENDSUB},
    Word<COMMAND_TYPE>{u"endtype", COMMAND_ENDTYPE},
    Word<COMMAND_TYPE>{u"event", COMMAND_EVENT},
    Word<COMMAND_TYPE>{u"for", COMMAND_FOR},
    Word<COMMAND_TYPE>{u"function", COMMAND_FUNCTION},
    Word<COMMAND_TYPE>{u"global", COMMAND_GLOBAL},
    Word<COMMAND_TYPE>{u"goto", COMMAND_GOTO},
    Word<COMMAND_TYPE>{u"if", COMMAND_IF},
    Word<COMMAND_TYPE>{u"include", COMMAND_INCLUDE},
    Word<COMMAND_TYPE>{u"library", COMMAND_LIBRARY},
    Word<COMMAND_TYPE>{u"loop", COMMAND_LOOP},
    Word<COMMAND_TYPE>{u"map", COMMAND_MAP},
    Word<COMMAND_TYPE>{u"next", COMMAND_NEXT},
    Word<COMMAND_TYPE>{u"open", COMMAND_OPEN},
    Word<COMMAND_TYPE>{u"page", COMMAND_PAGE},
    Word<COMMAND_TYPE>{u"playsound", COMMAND_PLAYSOUND},
    Word<COMMAND_TYPE>{u"print", COMMAND_PRINT},
    Word<COMMAND_TYPE>{u"propertysheet", COMMAND_PROPERTYSHEET},
    Word<COMMAND_TYPE>{u"rem", COMMAND_REM},
    Word<COMMAND_TYPE>{u"return", COMMAND_RETURN},
    Word<COMMAND_TYPE>{u"run", COMMAND_RUN},
    Word<COMMAND_TYPE>{u"runexe", COMMAND_RUNEXE},
    Word<COMMAND_TYPE>{u"setfocus", COMMAND_SETFOCUS},
    Word<COMMAND_TYPE>{u"stayresident", COMMAND_STAYRESIDENT},
    Word<COMMAND_TYPE>{u"stop", COMMAND_END},
    Word<COMMAND_TYPE>{u"sub", COMMAND_SUB},
    Word<COMMAND_TYPE>{u"then", COMMAND_THEN},
    Word<COMMAND_TYPE>{u"throw", COMMAND_THROW},
    Word<COMMAND_TYPE>{u"timerstart", COMMAND_TIMERSTART},
    Word<COMMAND_TYPE>{u"timerstop", COMMAND_TIMERSTOP},
    Word<COMMAND_TYPE>{u"to", COMMAND_TO},
    Word<COMMAND_TYPE>{u"type", COMMAND_TYPE_WORD},
    Word<COMMAND_TYPE>{u"watch", COMMAND_WATCH},
};

// ORDER KEYWORD; sorted by word
constexpr std::array kKeywords = {
    Word<KEYWORD_TYPE>{u"alias", KEYWORD_ALIAS},
    Word<KEYWORD_TYPE>{u"append", KEYWORD_APPEND},
    Word<KEYWORD_TYPE>{u"as", KEYWORD_AS},
    Word<KEYWORD_TYPE>{u"bitmap", KEYWORD_BITMAP},
    Word<KEYWORD_TYPE>{u"button", KEYWORD_BUTTON},
    Word<KEYWORD_TYPE>{u"byval", KEYWORD_BYVAL},
    Word<KEYWORD_TYPE>{u"calling", KEYWORD_CALLING},
    Word<KEYWORD_TYPE>{u"cancelbutton", KEYWORD_CANCELBUTTON},
    Word<KEYWORD_TYPE>{u"char", KEYWORD_CHAR},
    Word<KEYWORD_TYPE>{u"checkbox", KEYWORD_CHECKBOX},
    Word<KEYWORD_TYPE>{u"clear", KEYWORD_CLEAR},
    Word<KEYWORD_TYPE>{u"combobox", KEYWORD_COMBOBOX},
    Word<KEYWORD_TYPE>{u"control", KEYWORD_CONTROL},
    Word<KEYWORD_TYPE>{u"create", KEYWORD_CREATE},
    Word<KEYWORD_TYPE>{u"datetime", KEYWORD_DATETIME},
    Word<KEYWORD_TYPE>{u"double", KEYWORD_DOUBLE},
    Word<KEYWORD_TYPE>{u"editmultiline", KEYWORD_EDITMULTILINE},
    Word<KEYWORD_TYPE>{u"editnumber", KEYWORD_EDITNUMBER},
    Word<KEYWORD_TYPE>{u"edittext", KEYWORD_EDITTEXT},
    Word<KEYWORD_TYPE>{u"enable", KEYWORD_ENABLE},
    Word<KEYWORD_TYPE>{u"float", KEYWORD_FLOAT},
    Word<KEYWORD_TYPE>{u"font", KEYWORD_FONT},
    Word<KEYWORD_TYPE>{u"groupbox", KEYWORD_GROUPBOX},
    Word<KEYWORD_TYPE>{u"input", KEYWORD_INPUT},
    Word<KEYWORD_TYPE>{u"integer", KEYWORD_INTEGER},
    Word<KEYWORD_TYPE>{u"lib", KEYWORD_LIB},
    Word<KEYWORD_TYPE>{u"listbox", KEYWORD_LISTBOX},
    Word<KEYWORD_TYPE>{u"menuitem", KEYWORD_MENUITEM},
    Word<KEYWORD_TYPE>{u"multilistbox", KEYWORD_MULTILISTBOX},
    Word<KEYWORD_TYPE>{u"okbutton", KEYWORD_OKBUTTON},
    Word<KEYWORD_TYPE>{u"onexit", KEYWORD_ONEXIT},
    Word<KEYWORD_TYPE>{u"oninit", KEYWORD_ONINIT},
    Word<KEYWORD_TYPE>{u"output", KEYWORD_OUTPUT},
    Word<KEYWORD_TYPE>{u"position", KEYWORD_POSITION},
    Word<KEYWORD_TYPE>{u"radiogroup", KEYWORD_RADIOGROUP},
    Word<KEYWORD_TYPE>{u"remove", KEYWORD_REMOVE},
    Word<KEYWORD_TYPE>{u"selection", KEYWORD_SELECTION},
    Word<KEYWORD_TYPE>{u"show", KEYWORD_SHOW},
    Word<KEYWORD_TYPE>{u"sliderhorz", KEYWORD_SLIDERHORZ},
    Word<KEYWORD_TYPE>{u"slidervert", KEYWORD_SLIDERVERT},
    Word<KEYWORD_TYPE>{u"statictext", KEYWORD_STATICTEXT},
    Word<KEYWORD_TYPE>{u"string", KEYWORD_STRING},
    Word<KEYWORD_TYPE>{u"tabcontrol", KEYWORD_TABCONTROL},
    Word<KEYWORD_TYPE>{u"text", KEYWORD_TEXT},
    Word<KEYWORD_TYPE>{u"title", KEYWORD_TITLE},
    Word<KEYWORD_TYPE>{u"treeview", KEYWORD_TREEVIEW},
    Word<KEYWORD_TYPE>{u"unicode", KEYWORD_UNICODE},
    Word<KEYWORD_TYPE>{u"value", KEYWORD_VALUE},
    Word<KEYWORD_TYPE>{u"while", KEYWORD_WHILE},
    Word<KEYWORD_TYPE>{u"window", KEYWORD_WINDOW},
};

template <class Table> constexpr bool IsSorted(const Table& table) {
  return std::adjacent_find(table.begin(), table.end(),
                            [](const auto& a, const auto& b) { return a.text >= b.text; }) == table.end();
}
static_assert(IsSorted(kCommands) && kCommands.size() == 49);
static_assert(IsSorted(kKeywords) && kKeywords.size() == 50);

} // namespace

namespace brindle {

WordCodes WordTable::Find(const CString& lowered) const {
  const auto entry = m_words.find(lowered);
  return entry == m_words.end() ? WordCodes() : entry->second;
}

} // namespace brindle

bool CBrindle::BuildCommandTable() {
  m_pState->words.ClearCommands();
  for (const auto& word : kCommands)
    m_pState->words.AddCommand(CString(word.text), word.code);
  return true;
}

bool CBrindle::BuildKeywordTable() {
  m_pState->words.ClearKeywords();
  for (const auto& word : kKeywords)
    m_pState->words.AddKeyword(CString(word.text), word.code);
  return true;
}

COMMAND_TYPE CBrindle::LookupCommand(const CString& word) const {
  CString lowered = word;
  return m_pState->words.Find(lowered.MakeLower()).command;
}

KEYWORD_TYPE CBrindle::LookupKeyword(const CString& word) const {
  CString lowered = word;
  return m_pState->words.Find(lowered.MakeLower()).keyword;
}
