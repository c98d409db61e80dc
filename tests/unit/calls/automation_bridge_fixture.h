// Objects in scripts, against a server written by COM's interfaces: what reaches it, what comes back, and how many
// references are held at every step.
#pragma once

#include "brindle/automation_classes.h"
#include "support/script_test.h"
#include "support/scripted_object.h"

#include <cmath>
#include <limits>
#include <stdexcept>

namespace {

using Kinds = std::vector<std::pair<VARTYPE, std::string>>;

ScriptedObject* served = nullptr;

BSTR Text(const char16_t* text) {
  return SysAllocString(reinterpret_cast<const OLECHAR*>(text));
}

class AutomationBridge : public ScriptTest {
protected:
  AutomationBridge() {
    served = &m_object;
    CAutomationClasses::Add(u"Test.Object", [](IDispatch** object) {
      served->AddRef();
      *object = served;
      return S_OK;
    });
    m_object.Add("nothing", nullptr);
    m_object.Add("self", [this](DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
      if (result != nullptr) {
        m_object.AddRef();
        result->vt = VT_DISPATCH;
        result->pdispVal = &m_object;
      }
      return S_OK;
    });
    m_object.Add("give", [this](DISPPARAMS&, VARIANT* result, EXCEPINFO*) { return VariantCopy(result, &m_given); });
    m_object.Add("value", [this](DISPPARAMS& arguments, VARIANT* result, EXCEPINFO*) {
      return arguments.cArgs == 1 ? VariantCopy(&m_given, &arguments.rgvarg[0]) : VariantCopy(result, &m_given);
    });
    VariantInit(&m_given);
  }
  ~AutomationBridge() override {
    m_pInterpreter.reset();
    VariantClear(&m_given);
    EXPECT_EQ(m_object.Held(), 0) << "nothing is held beyond the interpreter's end";
    CAutomationClasses::Remove(u"Test.Object");
  }

  // Runs a program that starts with an object in o, and expects it to report nothing.
  void RunWithObject(const std::string& program) {
    Run("o = createobject(\"Test.Object\")\n" + program);
    EXPECT_TRUE(m_ui.errors.empty()) << m_ui.errors[0];
    EXPECT_TRUE(m_ui.notices.empty()) << m_ui.notices[0];
  }
  // The text, between brackets, that a result of this kind shows as.
  std::string Shown(const VARIANT& value) {
    VariantClear(&m_given);
    VariantCopy(&m_given, &value);
    m_ui.Forget();
    RunWithObject("r = o.give()\np = o.give\nprint \"[\"; r; \"]\"; p\n");
    std::string output = m_ui.Output();
    const std::size_t end = output.find(']');
    EXPECT_EQ(output.substr(1, end - 1) + "\n", output.substr(end + 1)) << "a property reads as a result does";
    return output.substr(0, end + 1);
  }

  ScriptedObject m_object;
  VARIANT m_given;
};

} // namespace
