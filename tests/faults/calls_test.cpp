// What lies outside the language, refused: objects, server libraries, declared routines, serial ports, programs,
// events from the host, enciphered scripts, code pages.
#include "brindle/automation_classes.h"
#include "brindle/component.h"
#include "brindle/environment.h"
#include "faults/sweep.h"
#include "support/pseudo_terminal.h"

#include <cerrno>
#include <filesystem>
#include <optional>

#include <sys/wait.h>

using faults::FaultKind;
using faults::Outcome;
using faults::Scenario;
using faults::Sweep;
using faults::TestsOwn;
using faults::Trial;

namespace {

// The user's data folder, for as long as the object lives.
class DataFolder {
public:
  explicit DataFolder(const std::string& path) {
    setenv("XDG_DATA_HOME", path.c_str(), 1);
    setenv("XDG_DATA_DIRS", "/nonexistent", 1);
  }
  DataFolder(const DataFolder&) = delete;
  DataFolder& operator=(const DataFolder&) = delete;
  ~DataFolder() {
    unsetenv("XDG_DATA_HOME");
    unsetenv("XDG_DATA_DIRS");
  }
};

// A class of the host, by the base that hosts use.
class Adder final : public CComponent {
public:
  Adder() : CComponent({u"Add", u"Name", u"Itself"}) {}

private:
  HRESULT Call(int member, WORD access, const Arguments& arguments, VARIANT& result) override {
    switch (member) {
    case 0: {
      if (arguments.size() != 2)
        return DISP_E_BADPARAMCOUNT;
      return Return(result, static_cast<int>(arguments[0].GetLongValue() + arguments[1].GetLongValue()));
    }
    case 1:
      if (access == DISPATCH_PROPERTYPUT)
        m_name = arguments.at(0).GetStringValue();
      return Return(result, m_name + u" (the name)");
    default: return Return(result, static_cast<IDispatch*>(this));
    }
  }

  CString m_name;
};

class Objects : public Scenario {
public:
  Objects() {
    CAutomationClasses::Add(u"Test.Adder", [](IDispatch** object) {
      *object = new Adder;
      return S_OK;
    });
  }
  ~Objects() override { CAutomationClasses::Remove(u"Test.Adder"); }
  void Prepare() override {
    Folder().Write("script.bas", R"(o = createobject("Test.Adder")
print int(o.Add(3, 4))
o.Name = "Adam"
print o.Name
p = o.Itself()
print p.Name
dim many[3]
many[1] = o
p = 1
call use(many[1])
print "done"
end
sub use(x)
  print int(x.Add(20, 22))
endsub
)");
  }
  [[nodiscard]] std::string Judge(const Trial&, const Outcome& outcome, const Outcome& reference) override {
    if (reference.output != "7\nAdam (the name)\nAdam (the name)\n42\ndone\n")
      return "the scenario does not do what it should: " + reference.output;
    if (outcome.thrown)
      return "std::bad_alloc left ExecuteProgram";
    return outcome.output != reference.output && outcome.Silent() ? "not reported" : "";
  }
};

class ServerLibrary : public Scenario {
public:
  [[nodiscard]] std::vector<FaultKind> Kinds() const override {
    return {FaultKind::Memory, FaultKind::File, FaultKind::Library};
  }
  void Prepare() override {
    Folder().Write("data/brindle/servers/files.server",
                   "library=" SERVER_LIBRARY "\nclass=Other.Class\nclass=Test.Files\nclass=Brindle.FileSystem\n");
    m_data.emplace(PathOf("data"));
    Folder().Write("script.bas", "o = createobject(\"Brindle.FileSystem\")\nprint o.Exists(\"" + PathOf("script.bas") +
                                     "\"); o.IsFolder(\"" + PathOf("") + "\")\nprint int(o.Size(\"" +
                                     PathOf("data/brindle/servers/files.server") + "\") / 10)\nprint \"done\"\n");
  }
  void Finish(Outcome&) override { m_data.reset(); }
  [[nodiscard]] std::string Judge(const Trial&, const Outcome& outcome, const Outcome& reference) override {
    if (!reference.output.starts_with("TrueTrue\n") || !reference.output.ends_with("done\n"))
      return "the scenario does not do what it should: " + reference.output;
    if (outcome.thrown)
      return "std::bad_alloc left ExecuteProgram";
    return outcome.output != reference.output && outcome.Silent() ? "not reported" : "";
  }

private:
  std::optional<DataFolder> m_data;
};

class Registering : public Scenario {
public:
  [[nodiscard]] std::vector<FaultKind> Kinds() const override {
    return {FaultKind::Memory, FaultKind::File, FaultKind::Library, FaultKind::PartialWrite};
  }
  [[nodiscard]] std::unique_ptr<CBrindle> Make(RecordingUserInterface&) override { return nullptr; }
  void Prepare() override {
    Folder().Write("data/brindle/servers/other.server", "library=/nowhere.so\nclass=Other.Class\n");
    m_data.emplace(PathOf("data"));
    m_reason.clear();
    m_bRegistered = false;
    m_bUnregistered = false;
  }
  void Act(CBrindle*, Outcome& outcome) override {
    std::string reason;
    m_bRegistered = CAutomationClasses::RegisterLibrary(SERVER_LIBRARY, reason);
    {
      const TestsOwn own;
      m_reason = reason;
      m_between = Files();
    }
    outcome.loaded = true;
    m_bUnregistered = CAutomationClasses::UnregisterLibrary(SERVER_LIBRARY, reason);
    const TestsOwn own;
    m_reason += reason;
  }
  void Finish(Outcome&) override { m_data.reset(); }
  [[nodiscard]] std::string Judge(const Trial&, const Outcome& outcome, const Outcome&) override {
    const std::vector<std::string> before = {"other.server"};
    const std::vector<std::string> with = {"libbrindle-filesystem.server", "other.server"};
    if (outcome.loaded) { // otherwise std::bad_alloc came out of the first one
      if (m_between != (m_bRegistered ? with : before))
        return "what was registered does not agree with the result";
      if (!m_bRegistered && m_reason.empty())
        return "refused without a reason";
    }
    const std::vector<std::string> after = Files();
    if (after != before && after != with)
      return "files are left: " + std::to_string(after.size());
    if (m_bUnregistered && after != before)
      return "still registered";
    if (after == with && Folder().Read("data/brindle/servers/libbrindle-filesystem.server") !=
                             "# A server library for \"createobject\".\nlibrary=" SERVER_LIBRARY
                             "\nclass=Brindle.FileSystem\n")
      return "the registration is not whole";
    return {};
  }

private:
  [[nodiscard]] std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(PathOf("data/brindle/servers")))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

  std::optional<DataFolder> m_data;
  std::vector<std::string> m_between;
  std::string m_reason;
  bool m_bRegistered = false;
  bool m_bUnregistered = false;
};

class Externals : public Scenario {
public:
  [[nodiscard]] std::vector<FaultKind> Kinds() const override { return {FaultKind::Memory, FaultKind::Library}; }
  void Prepare() override {
    std::filesystem::create_symlink(TEST_ROUTINES, PathOf("routines.dll"));
    Folder().Write("script.bas", "declare function AddNumbers lib \"" + PathOf("routines") +
                                     R"(" (byval a as integer, b as integer) as integer
declare function FillText lib ")" + PathOf("routines") +
                                     R"(" alias "fill" (t as string) as integer
x = 5
print int(AddNumbers(3, x)); int(x)
s = "short"
print int(fill(s)); s
print "done"
)");
  }
  [[nodiscard]] std::string Judge(const Trial& trial, const Outcome& outcome, const Outcome& reference) override {
    if (reference.output != "05\n0short\ndone\n")
      return "the scenario does not do what it should: " + reference.output;
    if (outcome.thrown)
      return "std::bad_alloc left ExecuteProgram";
    if (outcome.output == reference.output)
      return {};
    const bool told = trial.kind == FaultKind::Memory ? outcome.Reported(50) || outcome.Reported(17)
                                                      : outcome.Reported(25) || outcome.Reported(26);
    return told ? "" : "not reported";
  }
};

PseudoTerminal* line = nullptr;

CBasicVariable Reply(CBrindle*, CBasicVariableArray&, int) {
  const TestsOwn own;
  line->Send("LEVEL 3");
  return CBasicVariable(line->AwaitBytes(7) ? 1 : 0);
}

class Serial : public Scenario {
public:
  [[nodiscard]] std::uint64_t EveryOne() const override { return 50; }
  [[nodiscard]] std::vector<FaultKind> Kinds() const override {
    return {FaultKind::Memory, FaultKind::Serial, FaultKind::Process};
  }
  void Prepare() override {
    m_devices.emplace();
    m_terminal.emplace();
    m_devices->Link(1, m_terminal->Device());
    line = &*m_terminal;
    Folder().Write("script.bas", R"(print comportopen(1, 9600, 2, 0, 20)
print comportwrite(1, "*IDN?")
n = reply()
print comportread(1)
print comportread(1); "|"
print comportclose(1)
n = comportopen(1)
print comportwrite(1, "again")
print "done"
)");
  }
  [[nodiscard]] std::unique_ptr<CBrindle> Make(RecordingUserInterface& ui) override {
    auto interpreter = Scenario::Make(ui);
    interpreter->AddCustomFunction(u"reply", &Reply, 0, nullptr);
    return interpreter;
  }
  void Finish(Outcome&) override {
    std::string sent = m_terminal->Receive(17, 0);
    if (const std::size_t echo = sent.find("LEVEL 3"); echo != std::string::npos)
      sent.erase(echo, 7); // of a line that was never opened
    m_bWhole = sent.empty() || sent == "*IDN?" || sent == "again" || sent == "*IDN?again";
  }
  [[nodiscard]] std::string Judge(const Trial& trial, const Outcome& outcome, const Outcome& reference) override {
    if (reference.output != "True\nTrue\nLEVEL 3\n|\nTrue\nTrue\ndone\n")
      return "the scenario does not do what it should: " + reference.output;
    if (outcome.thrown)
      return "std::bad_alloc left ExecuteProgram";
    if (!m_bWhole)
      return "a part of a text was sent";
    if (outcome.output == reference.output)
      return {};
    if (trial.kind == FaultKind::Memory)
      return outcome.Reported(50) || outcome.Reported(17) ? "" : "not reported";
    // A line that fails is no error of the script: it reads nothing and writes nothing.
    return outcome.errors.empty() && outcome.output.ends_with("done\n") ? "" : "the script does not reach its end";
  }

private:
  std::optional<DeviceFolder> m_devices;
  std::optional<PseudoTerminal> m_terminal;
  bool m_bWhole = true;
};

class Programs : public Scenario {
public:
  [[nodiscard]] std::vector<FaultKind> Kinds() const override {
    return {FaultKind::Memory, FaultKind::File, FaultKind::Process};
  }
  void Prepare() override {
    Folder().Write("script.bas", "runexe \"/bin/true\", \"a parameter that is not short\"\nprint \"done\"\n");
  }
  [[nodiscard]] std::string Judge(const Trial& trial, const Outcome& outcome, const Outcome& reference) override {
    if (reference.output != "done\n")
      return "the scenario does not do what it should: " + reference.output;
    if (outcome.thrown)
      return "std::bad_alloc left ExecuteProgram";
    if (waitpid(-1, nullptr, WNOHANG | __WALL) >= 0 || errno != ECHILD)
      return "a child is left";
    // A program that cannot be started is no error.
    return outcome.output != reference.output && outcome.errors.empty()  ? "not reported"
           : trial.kind == FaultKind::Process && !outcome.errors.empty() ? "reported"
                                                                         : "";
  }
};

CBasicVariable Host(CBrindle* interpreter, CBasicVariableArray& arguments, int value) {
  CBasicVariable sum(arguments.GetSize() > 0 ? arguments[0].GetNumberValue() + value : 0.0);
  interpreter->EventThrow(CString(u"fromhost"), &sum);
  return sum;
}

class HostEvents : public Scenario {
public:
  void Prepare() override {
    Folder().Write("script.bas", R"(event create alarm Note
event create fromhost Note
print int(host(3))
stayresident
print "done"
end
sub Note(a)
  print "note "; a
endsub
)");
  }
  [[nodiscard]] std::unique_ptr<CBrindle> Make(RecordingUserInterface& ui) override {
    auto interpreter = Scenario::Make(ui);
    interpreter->AddCustomFunction(u"host", &Host, 4, nullptr);
    interpreter->AddCustomFunction(u"one argument", &Host, 4, nullptr);
    return interpreter;
  }
  void Act(CBrindle* interpreter, Outcome& outcome) override {
    Scenario::Act(interpreter, outcome);
    try {
      CBasicVariable value(u"a text of some length");
      CBasicVariableArray arguments;
      arguments.Add(value);
      arguments.Add(value);
      interpreter->EventThrow(CString(u"Alarm"), arguments);
      interpreter->EventThrow(CString(u"Alarm"), &value);
      interpreter->EventThrow(CString(u"nobody"), &value);
      CBrindle::SendEvent(CString(u"ALARM"), arguments);
      CBrindle::SendEvent(CString(u"ALARM"), &value);
    } catch (const std::bad_alloc&) {
      m_bThrown = true;
    }
  }
  void Finish(Outcome& outcome) override { outcome.notices.assign(m_bThrown ? 1 : 0, "thrown at the host"); }
  [[nodiscard]] std::string Judge(const Trial&, const Outcome& outcome, const Outcome& reference) override {
    const bool thrown = m_bThrown;
    m_bThrown = false;
    if (!reference.output.starts_with("note 7.000000\n7\ndone\nnote a text of some length\n"))
      return "the scenario does not do what it should: " + reference.output;
    if (outcome.thrown)
      return "std::bad_alloc left ExecuteProgram";
    return outcome.output != reference.output && outcome.errors.empty() && !thrown ? "not reported" : "";
  }

private:
  bool m_bThrown = false;
};

class Enciphered : public Scenario {
public:
  [[nodiscard]] std::vector<FaultKind> Kinds() const override { return {FaultKind::Memory, FaultKind::File}; }
  void Prepare() override {
    std::string reason;
    const auto script = CEnvironment::EncipherScript("print \"secret \"; int(Twice(4))\nprint \"done\"\nend\n"
                                                     "function Twice(n)\n  Twice = n * 2\nendfunction\n",
                                                     reason);
    Folder().Write("script.bas", *script);
  }
  [[nodiscard]] std::string Judge(const Trial& trial, const Outcome& outcome, const Outcome& reference) override {
    if (reference.output != "secret 8\ndone\n")
      return "the scenario does not do what it should: " + reference.output;
    if (outcome.thrown)
      return "std::bad_alloc left ExecuteProgram";
    if (!reference.output.starts_with(outcome.output))
      return "printed something else";
    if (outcome.output == reference.output)
      return {};
    return outcome.Reported(17) || (trial.kind == FaultKind::Memory && outcome.Reported(50)) ? "" : "not reported";
  }
};

// A page that the system knows, and no built-in one.
class CodePages : public Scenario {
public:
  ~CodePages() override { EXPECT_TRUE(CEnvironment::SetAnsiCodePage("UTF-8")); }
  [[nodiscard]] std::vector<FaultKind> Kinds() const override { return {FaultKind::Memory, FaultKind::Library}; }
  void Prepare() override {
    EXPECT_TRUE(CEnvironment::SetAnsiCodePage("UTF-8"));
    Folder().Write("script.bas", "print \"\xE9\"\nprint \"done\"\n");
  }
  void Act(CBrindle* interpreter, Outcome& outcome) override {
    try {
      m_bSet = false;
      m_bSet = CEnvironment::SetAnsiCodePage("EUC-JP") && CEnvironment::SetAnsiCodePage("KOI8-T");
    } catch (const std::bad_alloc&) {
      const TestsOwn own;
      outcome.notices.push_back("thrown at the host");
    }
    Scenario::Act(interpreter, outcome);
  }
  [[nodiscard]] std::string Judge(const Trial&, const Outcome& outcome, const Outcome& reference) override {
    if (reference.output != "И\ndone\n")
      return "the scenario does not do what it should: " + reference.output;
    if (outcome.thrown)
      return "std::bad_alloc left ExecuteProgram";
    if (m_bSet && outcome.errors.empty() && outcome.output != reference.output)
      return "set, but another page is used";
    return {};
  }

private:
  bool m_bSet = false;
};

} // namespace

TEST(CallFaults, an_object_of_the_host) {
  Objects scenario;
  Sweep("object of the host", scenario);
}

TEST(CallFaults, an_object_of_a_server_library) {
  ServerLibrary scenario;
  Sweep("server library", scenario);
}

TEST(CallFaults, registering_and_unregistering) {
  Registering scenario;
  Sweep("registering", scenario);
}

TEST(CallFaults, a_declared_routine) {
  Externals scenario;
  Sweep("declared routine", scenario);
}

TEST(CallFaults, a_serial_port) {
  Serial scenario;
  Sweep("serial port", scenario);
}

TEST(CallFaults, a_program_is_started) {
  Programs scenario;
  Sweep("program", scenario);
}

TEST(CallFaults, events_from_the_host) {
  HostEvents scenario;
  Sweep("host events", scenario);
}

TEST(CallFaults, an_enciphered_script) {
  Enciphered scenario;
  Sweep("enciphered", scenario);
}

TEST(CallFaults, a_code_page_of_the_system) {
  CodePages scenario;
  Sweep("code page", scenario);
}
