#include "program_run.h"

#include "support/counting_dispatch.h"
#include "support/test_access.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <set>
#include <stdexcept>

namespace {

constexpr int kMostMessages = 400;
constexpr int kDeepestLevel = 12;

struct HostStop : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The object that hostobject() gives; every run counts its references anew.
CountingDispatch* sharedObject = nullptr;

class TranscribingUser : public CUserInterface {
public:
  TranscribingUser(Transcript& out, const UserChoice& choice) : m_out(out), m_patience(choice.patience) {}

  void ShowMessage(const CString& text) override {
    m_out.push_back("print: " + text.ToUtf8());
    if (++m_messages > kMostMessages)
      throw HostStop("too much printed");
  }
  void ShowNotice(const CString& text) override { m_out.push_back("notice: " + text.ToUtf8()); }
  [[nodiscard]] ErrorAnswer ShowError(const CString& text) override {
    m_out.push_back("error: " + text.ToUtf8());
    return m_patience-- > 0 ? ErrorAnswer::Ok : ErrorAnswer::Cancel;
  }

private:
  Transcript& m_out;
  int m_patience;
  int m_messages = 0;
};

CBasicVariable HostAdd(CBrindle*, CBasicVariableArray& arguments, int) {
  double sum = 0;
  for (int i = 0; i < arguments.GetSize(); ++i)
    sum += arguments[i].GetNumberValue();
  return CBasicVariable(sum);
}

CBasicVariable HostText(CBrindle*, CBasicVariableArray& arguments, int) {
  return arguments.IsEmpty() ? CBasicVariable() : CBasicVariable(u"<" + arguments[0].GetStringValue() + u">");
}

CBasicVariable HostSet(CBrindle* interpreter, CBasicVariableArray& arguments, int) {
  if (arguments.GetSize() == 2 && !arguments[0].GetStringValue().IsEmpty())
    BrindleTestAccess::SetVariable(*interpreter, arguments[0].GetStringValue(), arguments[1], 0);
  return CBasicVariable(arguments.GetSize());
}

CBasicVariable HostObject(CBrindle*, CBasicVariableArray&, int) {
  CBasicVariable value;
  value.SetValue(static_cast<IDispatch*>(sharedObject));
  return value;
}

CBasicVariable HostThrow(CBrindle*, CBasicVariableArray&, int) {
  throw HostStop("the host's own");
}

CBasicVariable HostCall(CBrindle* interpreter, CBasicVariableArray& arguments, int) {
  CBasicVariable result;
  CBasicVariableArray none;
  if (!arguments.IsEmpty())
    BrindleTestAccess::ExecUserFunction(*interpreter, arguments[0].GetStringValue(), result, none, false);
  return result;
}

CBasicVariable HostLate(CBrindle* interpreter, CBasicVariableArray&, int) {
  interpreter->AddCustomFunction(u"latehost", &HostAdd, 0, nullptr);
  return CBasicVariable(1);
}

std::string NumberOf(double number) {
  char text[40];
  std::snprintf(text, sizeof text, "%a", number);
  return number != number ? "nan" : text; // the sign of it depends on the compiler
}

std::string DescriptionOf(const CVarBase& item) {
  using brindle::RawValues;
  switch (RawValues::Kind(item)) {
  case RawValues::kNumber: return "R8 " + NumberOf(item.GetDoubleValue());
  case RawValues::kInteger: return "I4 " + std::to_string(item.GetLongValue());
  case RawValues::kTruth: return "BOOL " + item.GetStringValue().ToUtf8();
  case RawValues::kText: return "TEXT " + item.GetStringValue().ToUtf8();
  case RawValues::kEmpty: return "EMPTY";
  case RawValues::kObject: return item.GetObjectValue() == nullptr ? "NO OBJECT" : "OBJECT";
  default: return item.GetType() == BVT_STRING ? "TEXT " + item.GetStringValue().ToUtf8() : "other";
  }
}

std::string DescriptionOf(const brindle::VariableSlot& slot) {
  CBasicVariable value;
  slot.CopyTo(value);
  std::string text = std::to_string(value.GetNumItems()) + " items, at " + std::to_string(value.GetCurIndex()) + ":";
  for (int i = 0; i < value.GetNumItems() && i < 100; ++i) {
    value.SetCurIndex(i);
    text += " [" + DescriptionOf(value.GetItem()) + "]";
  }
  return text;
}

// Every word of a program that could be a variable's name.
std::set<std::string> WordsOf(const std::string& text) {
  std::set<std::string> words;
  const auto isLetter = [](char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; };
  const auto isInside = [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '#' || c == '.';
  };
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!isLetter(text[at]) || (at > 0 && isInside(text[at - 1])))
      continue;
    std::size_t end = at;
    while (end < text.size() && isInside(text[end]))
      ++end;
    words.insert(text.substr(at, end - at));
    const std::size_t mark = text.find('#', at);
    if (mark != std::string::npos && mark < end)
      words.insert(text.substr(at, mark - at));
  }
  return words;
}

void DescribeVariables(CBrindle& interpreter, const std::string& text, Transcript& out) {
  brindle::VariableStore& store = BrindleTestAccess::State(interpreter).m_mapVariables;
  out.push_back("variables: " + std::to_string(store.Count()));
  std::vector<std::pair<std::string, brindle::NameRef>> names;
  for (const std::string& word : WordsOf(text)) {
    CString name = CString::FromUtf8(word);
    names.emplace_back(word, store.Ref(name));
    const CString spelt = name;
    if (name.MakeLower() != spelt)
      names.emplace_back(word, store.Ref(name));
  }
  std::set<const brindle::VariableSlot*> seen;
  for (int level = 1; level <= kDeepestLevel; ++level)
    for (const auto& [word, name] : names) {
      const brindle::VariableSlot* slot = store.Find(name, level);
      if (slot != nullptr && seen.insert(slot).second)
        out.push_back("variable " + word + " of " + std::to_string(level) + ": " + DescriptionOf(*slot));
    }
}

void DescribeState(CBrindle& interpreter, const std::string& text, Transcript& out) {
  brindle::InterpreterState& state = BrindleTestAccess::State(interpreter);
  out.push_back("last error: " + interpreter.GetLastError().ToUtf8());
  out.push_back("level " + std::to_string(state.m_nScopeLevel) + ", stop " + std::to_string(state.stop) +
                ", position " + std::to_string(state.position) + ", names " +
                std::to_string(state.m_arrTemporaries.GetSize()) + ", returns " +
                std::to_string(state.positions.size()) + ", frames " + std::to_string(state.fast.frames.size()) +
                ", tape " + std::to_string(state.fast.tape.IsEmpty()));
  for (const CStackData& entry : state.control)
    out.push_back("control: " + entry.name.ToUtf8() + " to " + NumberOf(entry.value) + " from " +
                  std::to_string(entry.position));
  DescribeVariables(interpreter, text, out);
  std::set<std::string> maps;
  for (const auto& [name, map] : state.m_mapMaps) {
    std::string line = "map " + name.ToUtf8() + ":";
    map->ForEach([&line](const CString& key, const CBasicVariable& value) {
      line += " (" + key.ToUtf8() + ": " + DescriptionOf(value.GetItem()) + ")";
    });
    maps.insert(line);
  }
  out.insert(out.end(), maps.begin(), maps.end());
}

} // namespace

std::string RouteChoice::Name() const {
  switch (route) {
  case CEnvironment::Route::Automatic: return "auto";
  case CEnvironment::Route::Parser: return "parser";
  default: return giveUpEvery == 0 ? "eager" : "eager:" + std::to_string(giveUpEvery);
  }
}

Transcript RunProgram(const std::string& file, const std::string& second, const std::string& text,
                      const RouteChoice& route, const UserChoice& choice) {
  CEnvironment::SetRoute(route.route, route.giveUpEvery);
  Transcript out;
  TranscribingUser user(out, choice);
  CountingDispatch object;
  sharedObject = &object;
  {
    CBrindle interpreter;
    interpreter.SetUserInterface(&user);
    constexpr std::pair<const char16_t*, BrindleCallback> kHost[] = {
        {u"hostadd", &HostAdd},     {u"hosttext", &HostText}, {u"hostset", &HostSet},  {u"hostobject", &HostObject},
        {u"hostthrow", &HostThrow}, {u"hostcall", &HostCall}, {u"hostlate", &HostLate}};
    for (const auto& [name, function] : kHost)
      interpreter.AddCustomFunction(name, function, 0, nullptr);
    for (const std::string* program : {&file, &second}) {
      if (program->empty())
        continue;
      try {
        interpreter.ExecuteProgram(CString::FromUtf8(*program));
      } catch (const HostStop& stop) {
        out.push_back(std::string("thrown: ") + stop.what());
      }
      DescribeState(interpreter, text, out);
    }
    out.push_back("objects held: " + std::to_string(object.Held()));
  }
  sharedObject = nullptr;
  out.push_back("objects held at the end: " + std::to_string(object.Held()));
  return out;
}

bool IsTooDeep(const Transcript& transcript) {
  return std::any_of(transcript.begin(), transcript.end(),
                     [](const std::string& line) { return line.find("unrecoverable error") != std::string::npos; });
}
