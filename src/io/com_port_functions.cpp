// The serial port family of the built-in functions, and the interpreter's table of ports.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "platform/number_text.h"

#include <memory>
#include <utility>

using namespace brindle;

namespace {

// What the script gave, in the order of the setters; the rest stays as a new port has it.
void ApplyArguments(ComPort& port, const CBasicVariableArray& args) {
  const auto number = [&args](int index) { return ToInt32(args[index].GetNumberValue()); };
  if (args.GetSize() > 1)
    port.SetBaudRate(number(1));
  if (args.GetSize() > 2)
    port.SetParity(number(2));
  if (args.GetSize() > 3)
    port.SetStopBits(static_cast<std::uint8_t>(number(3)));
  if (args.GetSize() > 4)
    port.SetReadTimeout(number(4));
}

} // namespace

bool CBrindle::COMPortAdd(unsigned short number, std::unique_ptr<ComPort> port) {
  return m_pState->comPorts.Add(number, std::move(port));
}

ComPort* CBrindle::COMPortFind(unsigned short number) {
  return m_pState->comPorts.Find(number);
}

bool CBrindle::COMPortClose(unsigned short number) {
  return m_pState->comPorts.Close(number);
}

void CBrindle::COMPortCloseAll() {
  m_pState->comPorts.CloseAll();
}

bool CBrindle::ExecComPortOperation(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  if (!CheckArguments(args, type))
    return false;
  const int number = ToInt32(args[0].GetNumberValue());
  const auto key = static_cast<unsigned short>(number);

  switch (type) {
  case FUNCTION_COMPORTOPEN: {
    if (m_pState->budget->Limits().noSerialPorts) {
      result.SetValue(false);
      return Fail(kErrorNotAllowed);
    }
    auto port = std::make_unique<ComPort>(number);
    ApplyArguments(*port, args);
    // A device opens only once, so the port that the new one replaces must let go of it first.
    COMPortClose(key);
    // Deliberate: a port that does not open takes its number all the same, and the result is that of adding it.
    static_cast<void>(port->Open());
    result.SetValue(COMPortAdd(key, std::move(port)));
    return true;
  }
  case FUNCTION_COMPORTCLOSE: result.SetValue(COMPortClose(key)); return true;
  case FUNCTION_COMPORTREAD: {
    CString text;
    ComPort* const port = COMPortFind(key);
    if (port != nullptr && !port->IsOpen())
      return true; // the result stays as it is
    if (port != nullptr)
      port->Read(text);
    result.SetValue(text);
    return true;
  }
  case FUNCTION_COMPORTWRITE: {
    ComPort* const port = COMPortFind(key);
    if (port == nullptr)
      result.SetValue(CString());
    else if (port->IsOpen())
      result.SetValue(port->Write(args[1].GetStringValue()));
    return true;
  }
  default: ReportError(kErrorUndefinedFunction); return false;
  }
}
