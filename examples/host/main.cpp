// A host in twenty lines: adds a function of its own to the language and runs a script.
#include <brindle/brindle.h>

#include <iostream>

static CBasicVariable BatteryLevel(CBrindle*, CBasicVariableArray& arguments, int percent) {
  return CBasicVariable(arguments.IsEmpty() ? percent : percent / 2);
}

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: brindle_example_host SCRIPT\n";
    return 2;
  }
  CBrindle interpreter;
  interpreter.AddCustomFunction(u"batterylevel", BatteryLevel, 80, nullptr);
  const bool loaded = interpreter.ExecuteProgram(CString::FromUtf8(argv[1]));
  std::cerr << interpreter.GetLastError().ToUtf8();
  return loaded && interpreter.GetLastError().IsEmpty() ? 0 : 1;
}
