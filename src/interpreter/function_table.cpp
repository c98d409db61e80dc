// The built-in functions: names, codes, family handlers, arguments and results. One table.
#include "brindle/interpreter.h"
#include "interpreter/func_desc.h"
#include "interpreter/language.h"
#include "interpreter/state.h"

#include <array>
#include <memory>
#include <string_view>

using namespace brindle;

namespace {

constexpr int kNoLimit = FunctionSignature::kNoLimit;

constexpr FunctionSignature Exactly(std::uint8_t count, ValueKinds result) {
  return {count, count, ArgumentCheck::Exact, ArgumentSilence::Never, result};
}

constexpr FunctionSignature AtLeast(std::uint8_t fewest, std::uint8_t most, ValueKinds result) {
  return {fewest, most, ArgumentCheck::Least, ArgumentSilence::Never, result};
}

// Nothing is asked for; up to `most` arguments mean something.
constexpr FunctionSignature None(std::uint8_t most, ValueKinds result) {
  return {0, most, ArgumentCheck::None, ArgumentSilence::Never, result};
}

// Deliberate: without any argument this family gives 0 and says nothing.
constexpr FunctionSignature Arithmetic(std::uint8_t fewest, std::uint8_t most) {
  return {fewest, most, ArgumentCheck::Least, ArgumentSilence::WithoutAny, kNumberValue};
}

} // namespace

bool CBrindle::BuildFunctionTable() {
  struct BuiltIn {
    std::u16string_view name;
    FUNCTION_TYPE code;
    CFuncDesc::Handler handler;
    FunctionSignature signature;
  };
  // A name without a handler is known to the language but reports "Undefined function name".
  // ORDER FUNCTION
  static constexpr std::array kBuiltIns = {
      BuiltIn{u"year", FUNCTION_YEAR, &CBrindle::ExecTimeFunc, None(0, kNumberValue)},
      BuiltIn{u"month", FUNCTION_MONTH, &CBrindle::ExecTimeFunc, None(0, kNumberValue)},
      BuiltIn{u"day", FUNCTION_DAY, &CBrindle::ExecTimeFunc, None(0, kNumberValue)},
      BuiltIn{u"hour", FUNCTION_HOUR, &CBrindle::ExecTimeFunc, None(0, kNumberValue)},
      BuiltIn{u"minute", FUNCTION_MINUTE, &CBrindle::ExecTimeFunc, None(0, kNumberValue)},
      BuiltIn{u"second", FUNCTION_SECOND, &CBrindle::ExecTimeFunc, None(0, kNumberValue)},
      BuiltIn{u"weekday", FUNCTION_WEEKDAY, &CBrindle::ExecTimeFunc, None(0, kNumberValue)},

      BuiltIn{u"sin", FUNCTION_SIN, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"cos", FUNCTION_COS, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"tan", FUNCTION_TAN, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"asin", FUNCTION_ASIN, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"acos", FUNCTION_ACOS, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"atan", FUNCTION_ATAN, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"log", FUNCTION_LOG, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"log2", FUNCTION_LOG2, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"log10", FUNCTION_LOG10, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"sqr", FUNCTION_SQR, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"abs", FUNCTION_ABS, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"rad2dms", FUNCTION_RAD2DMS, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"dms2rad", FUNCTION_DMS2RAD, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"isnan", FUNCTION_ISNAN, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"loword", FUNCTION_LOWORD, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"hiword", FUNCTION_HIWORD, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"swap", FUNCTION_SWAP, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"int", FUNCTION_INT, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"max", FUNCTION_MAX, &CBrindle::ExecArithmetics, Arithmetic(2, kNoLimit)},
      BuiltIn{u"min", FUNCTION_MIN, &CBrindle::ExecArithmetics, Arithmetic(2, kNoLimit)},
      BuiltIn{u"ubound", FUNCTION_UBOUND, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},
      BuiltIn{u"rand", FUNCTION_RAND, &CBrindle::ExecArithmetics, Arithmetic(1, 1)},

      BuiltIn{u"mapset", FUNCTION_MAPSET, &CBrindle::ExecMapOperation, Exactly(3, kNumberValue)},
      BuiltIn{u"mapget", FUNCTION_MAPGET, &CBrindle::ExecMapOperation, Exactly(2, kAnyValue)},
      BuiltIn{u"maphas", FUNCTION_MAPHAS, &CBrindle::ExecMapOperation, Exactly(2, kNumberValue)},
      BuiltIn{u"mapremove", FUNCTION_MAPREMOVE, &CBrindle::ExecMapOperation, Exactly(2, kNumberValue)},
      BuiltIn{u"mapgetkeys", FUNCTION_MAPGETKEYS, &CBrindle::ExecMapOperation,
              Exactly(1, kTextValue | kNotSet | kManyValues)},
      BuiltIn{u"mapgetvalues", FUNCTION_MAPGETVALUES, &CBrindle::ExecMapOperation, Exactly(1, kAnyValue)},

      BuiltIn{u"left", FUNCTION_LEFT, &CBrindle::ExecStringOperation, Exactly(2, kTextValue)},
      BuiltIn{u"right", FUNCTION_RIGHT, &CBrindle::ExecStringOperation, Exactly(2, kTextValue)},
      BuiltIn{u"mid", FUNCTION_MID, &CBrindle::ExecStringOperation, Exactly(3, kTextValue)},
      BuiltIn{u"instr", FUNCTION_INSTR, &CBrindle::ExecStringOperation, Exactly(2, kNumberValue)},
      BuiltIn{u"replace", FUNCTION_REPLACE, &CBrindle::ExecStringOperation, Exactly(3, kTextValue)},
      BuiltIn{u"lcase", FUNCTION_LCASE, &CBrindle::ExecStringOperation, AtLeast(1, 1, kTextValue)},
      BuiltIn{u"ucase", FUNCTION_UCASE, &CBrindle::ExecStringOperation, AtLeast(1, 1, kTextValue)},
      BuiltIn{u"len", FUNCTION_LEN, &CBrindle::ExecStringOperation, AtLeast(1, 1, kNumberValue)},
      BuiltIn{u"repeat", FUNCTION_REPEAT, &CBrindle::ExecStringOperation, AtLeast(2, 2, kTextValue)},
      BuiltIn{u"format", FUNCTION_FORMAT, &CBrindle::ExecStringOperation, Exactly(2, kTextValue)},
      BuiltIn{u"val", FUNCTION_VAL, &CBrindle::ExecStringOperation, AtLeast(1, 1, kNumberValue)},
      BuiltIn{u"str", FUNCTION_STR, &CBrindle::ExecStringOperation, AtLeast(1, 1, kTextValue)},
      BuiltIn{u"getpath", FUNCTION_GETPATH, &CBrindle::ExecStringOperation, AtLeast(1, 1, kTextValue | kNotSet)},
      BuiltIn{u"getname", FUNCTION_GETNAME, &CBrindle::ExecStringOperation, AtLeast(1, 1, kTextValue | kNotSet)},

      BuiltIn{u"fileopendlg", FUNCTION_FILEOPENDLG, &CBrindle::ExecFileDlg, None(4, kTextValue)},
      BuiltIn{u"filesaveasdlg", FUNCTION_FILESAVEASDLG, &CBrindle::ExecFileDlg, None(4, kTextValue)},

      BuiltIn{u"read", FUNCTION_READ, &CBrindle::ExecFileOperation,
              AtLeast(3, 3, kNumberValue | kManyValues | kNotSet)},
      BuiltIn{u"write", FUNCTION_WRITE, &CBrindle::ExecFileOperation, AtLeast(3, 3, kNumberValue)},
      BuiltIn{u"readline", FUNCTION_READLINE, &CBrindle::ExecFileOperation, AtLeast(1, 1, kTextValue)},
      BuiltIn{u"readlist", FUNCTION_READLIST, &CBrindle::ExecFileOperation,
              AtLeast(2, 2, kNumberValue | kManyValues | kNotSet)},
      BuiltIn{u"writeline", FUNCTION_WRITELINE, &CBrindle::ExecFileOperation, AtLeast(2, 3, kNumberValue)},
      BuiltIn{u"filesize", FUNCTION_FILESIZE, &CBrindle::ExecFileOperation, AtLeast(1, 1, kNumberValue)},
      BuiltIn{u"seek", FUNCTION_SEEK, &CBrindle::ExecFileOperation, AtLeast(2, 2, kNumberValue | kNotSet)},
      BuiltIn{u"iseof", FUNCTION_ISEOF, &CBrindle::ExecFileOperation, AtLeast(1, 1, kNumberValue)},
      BuiltIn{u"getfilepos", FUNCTION_GETFILEPOS, &CBrindle::ExecFileOperation, AtLeast(1, 1, kNumberValue)},

      BuiltIn{u"getwindowhandle", FUNCTION_GETWINDOWHANDLE, &CBrindle::ExecWindowHandle, None(1, kNumberValue)},

      BuiltIn{u"copydata", FUNCTION_COPYDATA, &CBrindle::ExecCopyData, Exactly(3, kNumberValue)},

      BuiltIn{u"pointoffset",
              FUNCTION_POINTOFFSET,
              &CBrindle::ExecPointOffset,
              {7, 7, ArgumentCheck::Least, ArgumentSilence::Always, kNumberValue | kManyValues | kNotSet}},

      BuiltIn{u"sendmessage", FUNCTION_SENDMESSAGE, &CBrindle::ExecSendMessage, None(kNoLimit, kNotSet)},

      BuiltIn{u"popupmenu", FUNCTION_POPUPMENU, &CBrindle::ExecPopupMenu, AtLeast(1, kNoLimit, kNumberValue)},

      BuiltIn{u"ask", FUNCTION_ASK, &CBrindle::ExecAsk, AtLeast(1, 1, kNumberValue)},

      BuiltIn{u"findfiles", FUNCTION_FINDFILES, &CBrindle::ExecFindFiles,
              AtLeast(2, 2, kTextValue | kNotSet | kManyValues)},

      BuiltIn{u"controlvalue", FUNCTION_CONTROLVALUE, &CBrindle::ExecGetControlValue, AtLeast(1, 2, kAnyValue)},

      BuiltIn{u"dbfopen", FUNCTION_DBFOPEN, &CBrindle::ExecDBFOperation, AtLeast(1, 1, kNumberValue)},
      BuiltIn{u"dbfcreate", FUNCTION_DBFCREATE, &CBrindle::ExecDBFOperation, AtLeast(1, kNoLimit, kNumberValue)},
      BuiltIn{u"dbfclose", FUNCTION_DBFCLOSE, &CBrindle::ExecDBFOperation, AtLeast(1, 1, kNumberValue)},
      BuiltIn{u"dbfnumrecords", FUNCTION_DBFNUMRECORDS, &CBrindle::ExecDBFOperation, AtLeast(1, 1, kNumberValue)},
      BuiltIn{u"dbfread", FUNCTION_DBFREAD, &CBrindle::ExecDBFOperation,
              AtLeast(1, 1, kTextValue | kNotSet | kManyValues)},
      BuiltIn{u"dbfwrite", FUNCTION_DBFWRITE, &CBrindle::ExecDBFOperation, AtLeast(1, kNoLimit, kNumberValue)},
      BuiltIn{u"dbfappend", FUNCTION_DBFAPPEND, &CBrindle::ExecDBFOperation, AtLeast(1, kNoLimit, kNumberValue)},
      BuiltIn{u"dbfseek", FUNCTION_DBFSEEK, &CBrindle::ExecDBFOperation, AtLeast(2, 2, kNumberValue | kNotSet)},
      BuiltIn{u"dbfdelete", FUNCTION_DBFDELETE, &CBrindle::ExecDBFOperation, AtLeast(2, 2, kNumberValue | kNotSet)},
      BuiltIn{u"dbfnumfields", FUNCTION_DBFNUMFIELDS, &CBrindle::ExecDBFOperation, AtLeast(1, 1, kNumberValue)},
      BuiltIn{u"dbffieldnames", FUNCTION_DBFFIELDNAMES, &CBrindle::ExecDBFOperation,
              AtLeast(1, 1, kTextValue | kNotSet | kManyValues)},

      BuiltIn{u"comportopen", FUNCTION_COMPORTOPEN, &CBrindle::ExecComPortOperation, AtLeast(1, 5, kNumberValue)},
      BuiltIn{u"comportclose", FUNCTION_COMPORTCLOSE, &CBrindle::ExecComPortOperation, AtLeast(1, 1, kNumberValue)},
      BuiltIn{u"comportread", FUNCTION_COMPORTREAD, &CBrindle::ExecComPortOperation,
              AtLeast(1, 1, kTextValue | kNotSet)},
      BuiltIn{u"comportwrite", FUNCTION_COMPORTWRITE, &CBrindle::ExecComPortOperation,
              AtLeast(2, 2, kNumberValue | kTextValue | kNotSet)},

      BuiltIn{u"createobject", FUNCTION_CREATEOBJECT, &CBrindle::ExecCreateObject, Exactly(1, kObjectValue)},

      BuiltIn{u"getvarstats", FUNCTION_GETVARSTATS, &CBrindle::ExecGetVarStats, None(0, kNumberValue | kManyValues)},

      BuiltIn{u"garbagecollection", FUNCTION_GARBAGECOLLECTION, &CBrindle::ExecGarbageCollection,
              None(0, kNumberValue)},
  };
  static_assert(kBuiltIns.size() == 86);

  m_pState->functions.Clear();
  for (const BuiltIn& builtIn : kBuiltIns) {
    auto function = std::make_unique<CFuncDesc>(CString(builtIn.name), builtIn.code, builtIn.handler);
    m_pState->functions.SetSignature(builtIn.code, builtIn.signature);
    if (AddFunction(function.get()))
      function.release();
  }
  return true;
}
