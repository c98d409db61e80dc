// FastRouteTest: programs run by the executing parser and by compiled statements.
// Room: tests. Used by: unit tests of the fast route.
// May touch: the process-wide choice of the route, which it sets back.
// Must not: share an interpreter between two runs.
// Invariant: every run has a new interpreter with the same host functions.
#pragma once

#include "brindle/environment.h"
#include "support/counting_dispatch.h"
#include "support/script_test.h"

#include <functional>
#include <stdexcept>

class FastRouteTest : public ScriptTest {
protected:
  using Route = CEnvironment::Route;

  FastRouteTest() { s_pObject = &m_object; }
  ~FastRouteTest() override {
    CEnvironment::SetRoute(Route::Automatic);
    m_pInterpreter.reset();
    s_pObject = nullptr;
  }

  // Messages and error boxes of a run in their order; boxes are answered by OK.
  std::vector<std::string> ShownBy(std::string_view program, Route route, unsigned giveUpEvery = 0) {
    Begin(route, giveUpEvery);
    m_ui.onError = [this] { m_ui.messages.push_back(m_ui.errors.back()); };
    Run(program);
    return m_ui.messages;
  }
  // What a run leaves that is aborted at the error box behind so many others: boxes, level, position, loops.
  std::string LeftBy(std::string_view program, Route route, unsigned giveUpEvery = 0, int patience = 0) {
    Begin(route, giveUpEvery);
    m_ui.onError = nullptr;
    m_ui.errorAnswers.assign(static_cast<std::size_t>(patience), CUserInterface::ErrorAnswer::Ok);
    m_ui.CancelErrors();
    std::string left;
    try {
      Run(program);
    } catch (const std::runtime_error& error) {
      left += std::string("thrown: ") + error.what() + "\n";
    }
    for (const std::string& error : m_ui.errors)
      left += "error " + error + "\n";
    const brindle::InterpreterState& state = State();
    left += "level " + std::to_string(state.m_nScopeLevel) + ", position " + std::to_string(state.position) +
            ", stop " + std::to_string(state.stop) + ", frames " + std::to_string(state.fast.frames.size()) + "\n";
    for (const CStackData& entry : state.control)
      left += "loop " + entry.name.ToUtf8() + " from " + std::to_string(entry.position) + "\n";
    return left;
  }
  [[nodiscard]] long ObjectsHeld() const { return m_object.Held(); }
  void Begin(Route route, unsigned giveUpEvery) {
    CEnvironment::SetRoute(route, giveUpEvery);
    m_pInterpreter.reset(); // the host's functions end with the last interpreter
    m_pInterpreter = std::make_unique<CBrindle>();
    m_pInterpreter->SetUserInterface(&m_ui);
    m_pInterpreter->AddCustomFunction(u"fail", &Fail, 0, nullptr);
    m_pInterpreter->AddCustomFunction(u"object", &Object, 0, nullptr);
    m_pInterpreter->AddCustomFunction(u"held", &Held, 0, nullptr);
    m_pInterpreter->AddCustomFunction(u"register", &Register, 0, nullptr);
    m_ui.Forget();
    m_ui.errorAnswers.clear();
    m_ui.defaultErrorAnswer = CUserInterface::ErrorAnswer::Ok;
  }

private:
  static CBasicVariable Fail(CBrindle*, CBasicVariableArray&, int) { throw std::runtime_error("the host's own"); }
  static CBasicVariable Object(CBrindle*, CBasicVariableArray&, int) {
    CBasicVariable value;
    value.SetValue(static_cast<IDispatch*>(s_pObject));
    return value;
  }
  static CBasicVariable Held(CBrindle*, CBasicVariableArray&, int) {
    return CBasicVariable(static_cast<int>(s_pObject->Held()));
  }
  static CBasicVariable Late(CBrindle*, CBasicVariableArray&, int) { return CBasicVariable(100.0); }
  // Adds a host function under the name that it is given.
  static CBasicVariable Register(CBrindle* interpreter, CBasicVariableArray& arguments, int) {
    interpreter->AddCustomFunction(arguments[0].GetStringValue(), &Late, 0, nullptr);
    return CBasicVariable(0.0);
  }

  static inline CountingDispatch* s_pObject = nullptr;
  CountingDispatch m_object;
};
