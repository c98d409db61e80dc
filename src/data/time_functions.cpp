// The time family of the built-in functions: the local time of the device.
#include "brindle/interpreter.h"
#include "interpreter/language.h"
#include "platform/clock.h"

bool CBrindle::ExecTimeFunc(CBasicVariable& result, Arguments&, FUNCTION_TYPE type) {
  const brindle::LocalTime now = brindle::Now();
  switch (type) {
  case FUNCTION_YEAR: result.SetValue(now.year); return true;
  case FUNCTION_MONTH: result.SetValue(now.month); return true;
  case FUNCTION_DAY: result.SetValue(now.day); return true;
  case FUNCTION_HOUR: result.SetValue(now.hour); return true;
  case FUNCTION_MINUTE: result.SetValue(now.minute); return true;
  case FUNCTION_SECOND: result.SetValue(now.second); return true;
  case FUNCTION_WEEKDAY: result.SetValue(now.weekday); return true;
  default: return false;
  }
}
