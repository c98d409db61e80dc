// What stands where in a script, before its statements are looked at: labels, procedures, declarations, names.
// Room: check. Used by: the walk through a script.
// May touch: the reader's position, while it is made.
// Invariant: tokens pointed to live as long as the reader.
#pragma once

#include "check/script_reader.h"

#include <map>
#include <set>
#include <unordered_map>
#include <vector>

namespace brindle {

struct CheckedProcedure {
  const Token* name = nullptr;
  bool isFunction = false;
  bool isDefined = false;       // its definition is the one that counts
  const Token* fault = nullptr; // where its parameter list ends to be one
  std::vector<const Token*> parameters;
  std::uint32_t body = 0; // where the line of its head ends
  ValueKinds result = 0;  // what its own name may be where it ends
  std::set<int> assigned; // the numbers of the names that it assigns
};

struct DuplicateDefinition {
  const Token* name;
  const Token* first; // null for a built-in function
};

struct Outline {
  std::unordered_map<CString, std::vector<const Token*>> labels;
  std::set<std::uint32_t> doWords; // where each stands
  std::set<CString> events;        // that handlers are attached to, lower-cased
  std::set<CString> jumps;         // the names behind "goto"
  std::vector<CheckedProcedure> procedures;
  std::unordered_map<CString, std::size_t> procedureOf;
  std::vector<DuplicateDefinition> duplicates;
  std::vector<const Token*> declares;                     // the word "declare" of each
  std::unordered_map<CString, std::set<CString>> types;   // fields by the name of their type, both as written
  std::unordered_map<CString, std::set<CString>> records; // names of types by the name of the variable
  std::set<CString> globals;
  std::unordered_map<CString, CString> globalsByLowered;
  std::unordered_map<CString, int> numbers;                     // of names, lower-cased
  std::unordered_map<CString, std::set<CString>> scopedRecords; // of names with a level, which is left out
  std::set<CString> levelNames; // that are named with a level somewhere, which is left out
  bool hasMainProgram = false;  // something stands outside of procedures
  bool showsDialogs = false;
  bool asksForFiles = false;      // "findfiles" is called somewhere
  std::set<CString> createdPaths; // literals behind "open" of an open for output

  explicit Outline(ScriptReader& reader);

  // The types of the record of that name; null when there is none.
  [[nodiscard]] const std::set<CString>* RecordOf(const CString& name) const;
  // Of a global, under its own spelling.
  [[nodiscard]] static CString GlobalKey(const CString& name) { return u"*" + name; }
  [[nodiscard]] int NumberOf(const CString& lowered) const {
    const auto number = numbers.find(lowered);
    return number == numbers.end() ? -1 : number->second;
  }
};

} // namespace brindle
