// The tables of the language: commands, keywords and built-in functions, with their numbers, in any case.
#include "support/script_test.h"

#include <cctype>
#include <functional>
#include <set>

namespace {

using WordTablesTest = ScriptTest;

struct Word {
  const char* text;
  int code;
};

const std::vector<Word> kCommands = {{"print", 1},         {"if", 2},         {"do", 3},          {"loop", 4},
                                     {"then", 5},          {"for", 6},        {"next", 7},        {"to", 8},
                                     {"goto", 9},          {"return", 13},    {"end", 14},        {"stop", 14},
                                     {"else", 15},         {"endif", 16},     {"dim", 17},        {"function", 18},
                                     {"endfunction", 19},  {"sub", 20},       {"endsub", 21},     {"declare", 22},
                                     {"dialog", 23},       {"enddialog", 24}, {"include", 25},    {"library", 26},
                                     {"rem", 27},          {"map", 28},       {"call", 29},       {"run", 30},
                                     {"runexe", 31},       {"open", 32},      {"close", 33},      {"type", 34},
                                     {"endtype", 35},      {"event", 36},     {"throw", 37},      {"watch", 38},
                                     {"closedialog", 39},  {"alter", 40},     {"endalter", 41},   {"global", 42},
                                     {"stayresident", 43}, {"playsound", 44}, {"timerstart", 45}, {"timerstop", 46},
                                     {"setfocus", 47},     {"page", 48},      {"endpage", 49},    {"propertysheet", 50},
                                     {"encrypt", 51}};

const std::vector<Word> kKeywords = {
    {"alias", 1},         {"as", 2},        {"while", 3},         {"lib", 4},         {"byval", 5},
    {"integer", 6},       {"double", 7},    {"float", 8},         {"char", 9},        {"string", 10},
    {"unicode", 11},      {"title", 14},    {"calling", 15},      {"control", 16},    {"button", 17},
    {"edittext", 18},     {"checkbox", 19}, {"listbox", 20},      {"okbutton", 21},   {"statictext", 22},
    {"bitmap", 23},       {"groupbox", 24}, {"multilistbox", 25}, {"datetime", 26},   {"editmultiline", 27},
    {"cancelbutton", 28}, {"combobox", 29}, {"editnumber", 30},   {"radiogroup", 31}, {"treeview", 32},
    {"font", 33},         {"window", 34},   {"clear", 35},        {"create", 36},     {"input", 37},
    {"output", 38},       {"append", 39},   {"remove", 40},       {"oninit", 41},     {"onexit", 42},
    {"show", 43},         {"enable", 44},   {"value", 45},        {"selection", 46},  {"text", 47},
    {"menuitem", 48},     {"position", 49}, {"sliderhorz", 50},   {"slidervert", 51}, {"tabcontrol", 52}};

const std::vector<Word> kFunctions = {{"year", 38},
                                      {"month", 37},
                                      {"day", 39},
                                      {"hour", 40},
                                      {"minute", 41},
                                      {"second", 42},
                                      {"weekday", 36},
                                      {"sin", 1},
                                      {"cos", 2},
                                      {"tan", 3},
                                      {"asin", 9},
                                      {"acos", 10},
                                      {"atan", 11},
                                      {"log", 8},
                                      {"log2", 6},
                                      {"log10", 7},
                                      {"sqr", 5},
                                      {"abs", 4},
                                      {"rad2dms", 68},
                                      {"dms2rad", 69},
                                      {"isnan", 13},
                                      {"loword", 15},
                                      {"hiword", 16},
                                      {"swap", 70},
                                      {"int", 30},
                                      {"max", 31},
                                      {"min", 32},
                                      {"ubound", 44},
                                      {"rand", 93},
                                      {"mapset", 17},
                                      {"mapget", 18},
                                      {"maphas", 19},
                                      {"mapremove", 20},
                                      {"mapgetkeys", 21},
                                      {"mapgetvalues", 22},
                                      {"left", 23},
                                      {"right", 24},
                                      {"mid", 25},
                                      {"instr", 26},
                                      {"replace", 29},
                                      {"lcase", 27},
                                      {"ucase", 28},
                                      {"len", 12},
                                      {"repeat", 34},
                                      {"format", 35},
                                      {"val", 33},
                                      {"str", 43},
                                      {"getpath", 61},
                                      {"getname", 62},
                                      {"fileopendlg", 45},
                                      {"filesaveasdlg", 46},
                                      {"read", 48},
                                      {"write", 49},
                                      {"readline", 50},
                                      {"readlist", 51},
                                      {"writeline", 52},
                                      {"filesize", 54},
                                      {"seek", 53},
                                      {"iseof", 55},
                                      {"getfilepos", 56},
                                      {"getwindowhandle", 66},
                                      {"copydata", 67},
                                      {"pointoffset", 65},
                                      {"sendmessage", 58},
                                      {"popupmenu", 57},
                                      {"ask", 59},
                                      {"findfiles", 60},
                                      {"controlvalue", 47},
                                      {"dbfopen", 71},
                                      {"dbfcreate", 72},
                                      {"dbfclose", 73},
                                      {"dbfnumrecords", 79},
                                      {"dbfread", 74},
                                      {"dbfwrite", 75},
                                      {"dbfappend", 76},
                                      {"dbfseek", 77},
                                      {"dbfdelete", 78},
                                      {"dbfnumfields", 80},
                                      {"dbffieldnames", 81},
                                      {"comportopen", 85},
                                      {"comportclose", 86},
                                      {"comportread", 87},
                                      {"comportwrite", 88},
                                      {"createobject", 82},
                                      {"getvarstats", 83},
                                      {"garbagecollection", 84}};

// The word as written, in upper case, and with every second letter in upper case.
std::vector<std::string> Spellings(const std::string& word) {
  std::string upper = word;
  std::string mixed = word;
  for (std::size_t i = 0; i < word.size(); ++i) {
    upper[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(word[i])));
    if (i % 2 == 0)
      mixed[i] = upper[i];
  }
  return {word, upper, mixed};
}

void ForEverySpelling(const std::vector<Word>& words, const std::function<void(const std::string&, int)>& check) {
  for (const Word& word : words)
    for (const std::string& spelling : Spellings(word.text)) {
      SCOPED_TRACE(spelling);
      check(spelling, word.code);
    }
}

TEST_F(WordTablesTest, every_command_word_has_its_code_in_any_case) {
  ASSERT_EQ(kCommands.size(), 49U);
  ForEverySpelling(kCommands, [this](const std::string& word, int code) {
    EXPECT_EQ(Access::LookupCommand(Interpreter(), CString::FromUtf8(word)), code);
    EXPECT_EQ(Access::LookupKeyword(Interpreter(), CString::FromUtf8(word)), KEYWORD_NONE);
    SetText(CString::FromUtf8(word).View());
    EXPECT_EQ(Access::get_token(Interpreter()), TOKEN_COMMAND);
    EXPECT_EQ(State().token.command, code);
    EXPECT_EQ(State().token.Text().ToUtf8(), word);
  });
}

TEST_F(WordTablesTest, every_keyword_has_its_code_in_any_case) {
  ASSERT_EQ(kKeywords.size(), 50U);
  ForEverySpelling(kKeywords, [this](const std::string& word, int code) {
    EXPECT_EQ(Access::LookupKeyword(Interpreter(), CString::FromUtf8(word)), code);
    EXPECT_EQ(Access::LookupCommand(Interpreter(), CString::FromUtf8(word)), COMMAND_NONE);
    SetText(CString::FromUtf8(word).View());
    EXPECT_EQ(Access::get_token(Interpreter()), TOKEN_KEYWORD);
    EXPECT_EQ(State().token.keyword, code);
    EXPECT_EQ(State().token.Text().ToUtf8(), word);
  });
}

TEST_F(WordTablesTest, every_built_in_function_has_its_code_in_any_case) {
  ASSERT_EQ(kFunctions.size(), 86U);
  ForEverySpelling(kFunctions, [this](const std::string& word, int code) {
    EXPECT_EQ(Access::LookupFunction(Interpreter(), CString::FromUtf8(word)), code);
    SetText(CString::FromUtf8(word + "(").View());
    EXPECT_EQ(Access::get_token(Interpreter()), TOKEN_FUNCTION);
    EXPECT_EQ(State().token.function, code);
    EXPECT_EQ(State().token.Text().ToUtf8(), word);
    SetText(CString::FromUtf8(word).View());
    EXPECT_EQ(Access::get_token(Interpreter()), TOKEN_VARIABLE);
  });
}

TEST_F(WordTablesTest, a_built_in_describes_itself) {
  for (const Word& word : kFunctions) {
    SCOPED_TRACE(word.text);
    CFuncDesc found;
    Access::LookupFunction(Interpreter(), CString(word.text), found, true);
    EXPECT_EQ(found.m_strName.ToUtf8(), word.text);
    EXPECT_EQ(found.m_strEntryName.ToUtf8(), word.text);
    EXPECT_TRUE(found.m_strLibrary.IsEmpty());
    EXPECT_EQ(found.m_nCode, word.code);
    EXPECT_EQ(found.m_nKind, CFuncDesc::kBuiltIn);
    EXPECT_EQ(found.m_nPosition, 0U);
    EXPECT_EQ(found.m_pCallback, nullptr);
  }
}

TEST_F(WordTablesTest, unused_numbers_have_no_word) {
  std::set<int> commands, keywords, functions;
  for (const Word& word : kCommands)
    commands.insert(word.code);
  for (const Word& word : kKeywords)
    keywords.insert(word.code);
  for (const Word& word : kFunctions)
    functions.insert(word.code);
  EXPECT_EQ(commands.size(), 48U) << "two words share 14";
  EXPECT_EQ(keywords.size(), 50U);
  EXPECT_EQ(functions.size(), 86U);
  for (const int code : {10, 11, 12})
    EXPECT_FALSE(commands.contains(code)) << code;
  for (const int code : {12, 13})
    EXPECT_FALSE(keywords.contains(code)) << code;
  for (const int code : {14, 63, 64, 89, 90, 91, 92})
    EXPECT_FALSE(functions.contains(code)) << code;
}

TEST_F(WordTablesTest, words_that_are_nothing_have_the_code_0) {
  for (const char16_t* word : {u"", u"gosub", u"prin", u"printt", u"word", u"step", u"and", u"print "}) {
    EXPECT_EQ(Access::LookupCommand(Interpreter(), CString(word)), COMMAND_NONE);
    EXPECT_EQ(Access::LookupKeyword(Interpreter(), CString(word)), KEYWORD_NONE);
    EXPECT_EQ(Access::LookupFunction(Interpreter(), CString(word)), FUNCTION_NONE);
  }
}

TEST_F(WordTablesTest, building_a_table_again_gives_the_same_table) {
  EXPECT_TRUE(Access::BuildCommandTable(Interpreter()));
  EXPECT_TRUE(Access::BuildKeywordTable(Interpreter()));
  EXPECT_TRUE(Access::BuildFunctionTable(Interpreter()));
  EXPECT_TRUE(m_ui.errors.empty());
  for (const Word& word : kCommands)
    EXPECT_EQ(Access::LookupCommand(Interpreter(), CString(word.text)), word.code);
  for (const Word& word : kKeywords)
    EXPECT_EQ(Access::LookupKeyword(Interpreter(), CString(word.text)), word.code);
  for (const Word& word : kFunctions)
    EXPECT_EQ(Access::LookupFunction(Interpreter(), CString(word.text)), word.code);
}

} // namespace
