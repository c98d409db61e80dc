// Objects that a host hands to scripts: every place that holds one, and when it lets go.
#include "support/counting_dispatch.h"
#include "support/script_test.h"

namespace {

CountingDispatch* served = nullptr; // what "makeobject" gives
std::vector<IDispatch*> seen;       // what "look" was given

CBasicVariable MakeObject(CBrindle*, CBasicVariableArray&, int) {
  CBasicVariable result;
  result.SetValue(served);
  return result;
}

CBasicVariable MakeArray(CBrindle*, CBasicVariableArray&, int) {
  CBasicVariable result;
  for (int i = 0; i < 3; ++i)
    result.AddItem(served);
  return result;
}

CBasicVariable Look(CBrindle*, CBasicVariableArray& arguments, int) {
  for (int i = 0; i < arguments.GetSize(); ++i)
    seen.push_back(arguments[i].GetObjectValue());
  return CBasicVariable(served == nullptr ? -1 : static_cast<int>(served->Held()));
}

CBasicVariable CurrentIndex(CBrindle*, CBasicVariableArray& arguments, int) {
  return CBasicVariable(arguments[0].GetCurIndex());
}

class HostObjects : public ScriptTest {
protected:
  HostObjects() {
    served = &m_object;
    seen.clear();
    Interpreter().AddCustomFunction(u"makeobject", &MakeObject, 0, nullptr);
    Interpreter().AddCustomFunction(u"makearray", &MakeArray, 0, nullptr);
    Interpreter().AddCustomFunction(u"look", &Look, 0, nullptr);
  }
  ~HostObjects() override {
    m_pInterpreter.reset();
    EXPECT_EQ(m_object.Held(), 0) << "nothing is held beyond the interpreter's end";
    served = nullptr;
  }

  // The references held after running a program.
  long HeldAfter(const std::string& program) {
    Run(program);
    EXPECT_TRUE(m_ui.errors.empty()) << m_ui.errors[0];
    return m_object.Held();
  }

  CountingDispatch m_object;
};

TEST_F(HostObjects, a_result_that_is_dropped_is_released) {
  EXPECT_EQ(HeldAfter("call makeobject()\ncall makearray()\n"), 0);
  EXPECT_GT(m_object.Taken(), 0);
}

TEST_F(HostObjects, a_variable_holds_one_reference_until_the_interpreter_ends) {
  EXPECT_EQ(HeldAfter("o = makeobject()\n"), 1);
  EXPECT_EQ(HeldAfter("print \"another run\"\n"), 1);
  m_pInterpreter.reset();
  EXPECT_EQ(m_object.Held(), 0);
}

TEST_F(HostObjects, what_overwrites_a_variable_releases_it) {
  const char* const statements[] = {
      "o = 5",           "o = \"text\"",          "o = Nothing",
      "dim o as string", "o = makearray() o = 1", "o = maphas(\"m\", \"k\")",
      "o[0] = 1",        "for o = 1 to 2 next",
  };
  for (const char* statement : statements) {
    SCOPED_TRACE(statement);
    EXPECT_EQ(HeldAfter("o = makeobject()\n"), 1);
    EXPECT_EQ(HeldAfter(std::string(statement) + "\n"), 0);
  }
}

TEST_F(HostObjects, copies_hold_one_each) {
  EXPECT_EQ(HeldAfter("o = makeobject()\np = o\nq = p\n"), 3);
  EXPECT_EQ(HeldAfter("o = o\n"), 3);
  EXPECT_EQ(HeldAfter("p = 1\n"), 2);
  EXPECT_EQ(HeldAfter("o = q\n"), 2);
}

TEST_F(HostObjects, every_item_of_an_array_holds_one) {
  EXPECT_EQ(HeldAfter("dim a[4]\nfor i = 0 to 3\na[i] = makeobject()\nnext\n"), 4);
  EXPECT_EQ(HeldAfter("a[1] = 5\n"), 3);
  EXPECT_EQ(HeldAfter("b = a\n"), 6);
  EXPECT_EQ(HeldAfter("dim b\n"), 4) << "shrunk to its first item";
  EXPECT_EQ(HeldAfter("dim a[3]\n"), 3);
  EXPECT_EQ(HeldAfter("a = 1\n"), 1);
  EXPECT_EQ(HeldAfter("c = makearray()\n"), 4);
  EXPECT_EQ(HeldAfter("c = b\nb = 1\n"), 1);
}

TEST_F(HostObjects, globals_outlive_procedures) {
  EXPECT_EQ(HeldAfter("global g\ncall keep()\nend\nsub keep()\ng = makeobject()\nendsub\n"), 1);
  EXPECT_EQ(HeldAfter("g = 0\n"), 0);
}

TEST_F(HostObjects, locals_of_a_procedure_are_released_at_the_return_to_the_main_program) {
  EXPECT_EQ(HeldAfter("call work()\nend\nsub work()\no = makeobject()\np = o\na = makearray()\ncall look(o)\nendsub\n"),
            0);
  ASSERT_EQ(seen, std::vector<IDispatch*>{&m_object});
  // The variables stay, with null objects in them.
  Run("call look(o__#2)\nprint \"[\"; o__#2; \"]\"; a__#2[2]; ubound(\"o__#2\"); ubound(\"a__#2\")\n");
  EXPECT_EQ(seen.back(), nullptr);
  EXPECT_EQ(m_ui.Output(), "[0]013\n");
}

TEST_F(HostObjects, every_way_out_of_a_procedure_releases) {
  const char* const bodies[] = {"return\n", "if 1 = 1 then\nreturn\nendif\n", "for i = 1 to 2\nreturn\nnext\n", "end\n",
                                ""};
  for (const char* body : bodies) {
    SCOPED_TRACE(body);
    EXPECT_EQ(HeldAfter("call work()\nend\nsub work()\no = makeobject()\n" + std::string(body) + "endsub\n"), 0);
  }
}

TEST_F(HostObjects, deeper_levels_are_released_at_the_return_to_the_main_program) {
  EXPECT_EQ(HeldAfter("call outer()\nend\nsub outer()\ncall inner()\nprint look()\nendsub\n"
                      "sub inner()\no = makeobject()\nendsub\n"),
            0);
  EXPECT_EQ(m_ui.Output(), "1\n") << "back at level 2 the object of level 3 is still held";
}

TEST_F(HostObjects, locals_of_the_main_program_stay_when_a_procedure_returns) {
  EXPECT_EQ(HeldAfter("o = makeobject()\ncall work()\nprint look(o)\nend\nsub work()\no = makeobject()\nendsub\n"), 1);
  EXPECT_EQ(m_ui.Output(), "2\n") << "the variable and the argument";
}

TEST_F(HostObjects, a_function_gives_its_object_to_the_caller) {
  EXPECT_EQ(HeldAfter("o = fetch()\nend\nfunction fetch()\nfetch = makeobject()\nendfunction\n"), 1);
  EXPECT_EQ(HeldAfter("o = through()\nend\nfunction through()\nthrough = fetch()\nendfunction\n"), 1);
  EXPECT_EQ(HeldAfter("a = many()\nend\nfunction many()\nmany = makearray()\nendfunction\n"), 4);
  EXPECT_EQ(HeldAfter("call fetch()\nprint ubound(\"o\")\n"), 4);
}

TEST_F(HostObjects, parameters_hold_their_own_reference) {
  EXPECT_EQ(HeldAfter("o = makeobject()\ncall work(o)\nend\nsub work(p)\ncall look(p)\np = 0\nendsub\n"), 1);
  EXPECT_EQ(seen, std::vector<IDispatch*>{&m_object});
}

TEST_F(HostObjects, the_item_that_was_current_is_current_again) {
  Interpreter().AddCustomFunction(u"currentindex", &CurrentIndex, 0, nullptr);
  Run("call work()\nprint currentindex(a__#2)\nend\nsub work()\na = makearray()\na[1] = makeobject()\nendsub\n");
  EXPECT_EQ(m_object.Held(), 0);
  EXPECT_EQ(m_ui.Output(), "1\n");
}

TEST_F(HostObjects, items_that_are_no_objects_stay) {
  Run("call work()\nprint a__#2[0]; a__#2[1]; a__#2[2]\nend\nsub work()\ndim a[3]\na[0] = \"text\"\na[1] = "
      "makeobject()\n"
      "a[2] = int(7)\nendsub\n");
  EXPECT_EQ(m_object.Held(), 0);
  EXPECT_EQ(m_ui.Output(), "text07\n") << "a null object reads as 0";
}

TEST_F(HostObjects, a_release_at_the_return_throws_the_change_event) {
  Run("event create changed look\ncall work()\nend\nsub work()\no = makeobject()\nwatch create o changed\nendsub\n");
  EXPECT_EQ(seen, std::vector<IDispatch*>{nullptr});
}

TEST_F(HostObjects, globals_with_a_level_in_their_name_count_as_that_level) {
  EXPECT_EQ(HeldAfter("global kept__#1, dropped__#2, deep__#17\nkept__#1 = makeobject()\ndropped__#2 = makeobject()\n"
                      "deep__#17 = makeobject()\ncall nothingmuch()\nend\nsub nothingmuch()\nendsub\n"),
            1);
}

TEST_F(HostObjects, maps_hold_a_reference_until_the_entry_goes) {
  EXPECT_EQ(
      HeldAfter("map create \"m\"\ncall mapset(\"m\", \"a\", makeobject())\ncall mapset(\"m\", \"b\", makeobject())\n"
                "call mapset(\"m\", \"c\", makearray())\n"),
      5);
  EXPECT_EQ(HeldAfter("call mapset(\"m\", \"a\", 1)\n"), 4);
  EXPECT_EQ(HeldAfter("x = mapget(\"m\", \"b\")\n"), 5);
  EXPECT_EQ(HeldAfter("x = 0\ncall mapremove(\"m\", \"b\")\n"), 3);
  EXPECT_EQ(HeldAfter("map clear \"m\"\n"), 0);
  EXPECT_EQ(HeldAfter("call mapset(\"m\", \"k\", makeobject())\n"), 1);
  EXPECT_EQ(HeldAfter("map create \"m\"\n"), 0) << "a replaced map ends with its values";
  EXPECT_EQ(HeldAfter("call mapset(\"m\", \"k\", makeobject())\n"), 1);
}

TEST_F(HostObjects, mapgetvalues_gives_objects) {
  EXPECT_EQ(
      HeldAfter("map create \"m\"\ncall mapset(\"m\", \"a\", makeobject())\ncall mapset(\"m\", \"b\", makeobject())\n"
                "v = mapgetvalues(\"m\")\ncall look(v[0], v[1])\n"),
      4);
  EXPECT_EQ(seen, (std::vector<IDispatch*>{&m_object, &m_object}));
}

TEST_F(HostObjects, mapset_in_a_procedure_keeps_the_object) {
  EXPECT_EQ(
      HeldAfter(
          "map create \"m\"\ncall work()\nend\nsub work()\no = makeobject()\ncall mapset(\"m\", \"k\", o)\nendsub\n"),
      1);
}

TEST_F(HostObjects, event_arguments_are_released_behind_the_throw) {
  EXPECT_EQ(HeldAfter("event create given look\nevent create given keep\nthrow given(makeobject())\nend\nsub keep(o)\n"
                      "p = o\nendsub\n"),
            0);
  EXPECT_EQ(seen, std::vector<IDispatch*>{&m_object});
  CBasicVariable value;
  value.SetValue(&m_object);
  EXPECT_TRUE(Interpreter().EventThrow(u"given", &value));
  EXPECT_EQ(m_object.Held(), 1) << "the host's own value";
}

TEST_F(HostObjects, garbagecollection_releases) {
  // Objects are let go at the return already; what was put there afterwards goes with its variable.
  EXPECT_EQ(HeldAfter("call work()\no__#2 = makeobject()\nend\nsub work()\no = 1\nendsub\n"), 1);
  EXPECT_EQ(HeldAfter("call garbagecollection()\n"), 0);
}

TEST_F(HostObjects, a_field_of_a_record_keeps_no_object) {
  EXPECT_EQ(HeldAfter("type T\nx as integer\nendtype\ndim r as T\nr.x = makeobject()\n"), 0);
}

TEST_F(HostObjects, an_aborted_run_keeps_only_what_variables_hold) {
  m_ui.CancelErrors();
  Run("o = makeobject()\ncall work(makeobject())\nend\nsub work(p)\nq = makeobject()\ncall look(p, nope(\nendsub\n");
  EXPECT_EQ(m_ui.errors.size(), 1U);
  // The next return to the main program lets go what the aborted call left behind.
  m_ui.errors.clear();
  EXPECT_EQ(HeldAfter("call nothingmuch()\nend\nsub nothingmuch()\nendsub\n"), 1);
}

TEST_F(HostObjects, objects_in_expressions_are_released) {
  m_ui.defaultErrorAnswer = CUserInterface::ErrorAnswer::Ok;
  Run("x = makeobject() + 1\ny = 1 + makeobject()\nprint len(makeobject())\nif makeobject() = makeobject() "
      "then\nendif\n"
      "z = str(makeobject())\n");
  EXPECT_EQ(m_object.Held(), m_ui.ErrorNumbers() == Numbers{18} ? 1 : 0)
      << "x, whose sum reported 18, may keep its left side";
  Run("x = 0\n");
  EXPECT_EQ(m_object.Held(), 0);
}

TEST_F(HostObjects, two_interpreters_hold_their_own_references) {
  CBrindle second;
  second.SetUserInterface(&m_ui);
  second.ExecuteProgram(m_folder.Write("second.bas", "o = makeobject()\n"));
  EXPECT_EQ(HeldAfter("o = makeobject()\n"), 2);
  m_pInterpreter.reset();
  EXPECT_EQ(m_object.Held(), 1);
}

TEST_F(HostObjects, an_object_released_at_the_end_finds_its_interpreter_gone) {
  const CBrindle* interpreter = &Interpreter();
  int released = 0;
  CountingDispatch watcher([&] {
    ++released;
    EXPECT_FALSE(CBrindle::IsValidInterpreter(interpreter));
    CBasicVariable value(1);
    CBrindle::SendEvent(u"ping", &value); // reaches nobody
  });
  served = &watcher;
  Run("event create ping look\nmap create \"m\"\n");
  CString key(u"o");
  Access::SetVariable(Interpreter(), key, CBasicVariable(), 0);
  Access::FindVariable(Interpreter(), key)->SetValue(&watcher);
  m_pInterpreter.reset();
  EXPECT_EQ(released, 1);
  EXPECT_EQ(watcher.Held(), 0);
  EXPECT_TRUE(seen.empty());
}

} // namespace
