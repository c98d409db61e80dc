// The built-in functions: names, codes and family handlers. One table.
#include "brindle/interpreter.h"
#include "interpreter/func_desc.h"
#include "interpreter/language.h"
#include "interpreter/state.h"

#include <array>
#include <memory>
#include <string_view>

bool CBrindle::BuildFunctionTable() {
  struct BuiltIn {
    std::u16string_view name;
    FUNCTION_TYPE code;
    CFuncDesc::Handler handler;
  };
  // A name without a handler is known to the language but reports "Undefined function name".
  // ORDER FUNCTION
  static constexpr std::array kBuiltIns = {
      BuiltIn{u"year", FUNCTION_YEAR, &CBrindle::ExecTimeFunc},
      BuiltIn{u"month", FUNCTION_MONTH, &CBrindle::ExecTimeFunc},
      BuiltIn{u"day", FUNCTION_DAY, &CBrindle::ExecTimeFunc},
      BuiltIn{u"hour", FUNCTION_HOUR, &CBrindle::ExecTimeFunc},
      BuiltIn{u"minute", FUNCTION_MINUTE, &CBrindle::ExecTimeFunc},
      BuiltIn{u"second", FUNCTION_SECOND, &CBrindle::ExecTimeFunc},
      BuiltIn{u"weekday", FUNCTION_WEEKDAY, &CBrindle::ExecTimeFunc},

      BuiltIn{u"sin", FUNCTION_SIN, &CBrindle::ExecArithmetics},
      BuiltIn{u"cos", FUNCTION_COS, &CBrindle::ExecArithmetics},
      BuiltIn{u"tan", FUNCTION_TAN, &CBrindle::ExecArithmetics},
      BuiltIn{u"asin", FUNCTION_ASIN, &CBrindle::ExecArithmetics},
      BuiltIn{u"acos", FUNCTION_ACOS, &CBrindle::ExecArithmetics},
      BuiltIn{u"atan", FUNCTION_ATAN, &CBrindle::ExecArithmetics},
      BuiltIn{u"log", FUNCTION_LOG, &CBrindle::ExecArithmetics},
      BuiltIn{u"log2", FUNCTION_LOG2, &CBrindle::ExecArithmetics},
      BuiltIn{u"log10", FUNCTION_LOG10, &CBrindle::ExecArithmetics},
      BuiltIn{u"sqr", FUNCTION_SQR, &CBrindle::ExecArithmetics},
      BuiltIn{u"abs", FUNCTION_ABS, &CBrindle::ExecArithmetics},
      BuiltIn{u"rad2dms", FUNCTION_RAD2DMS, &CBrindle::ExecArithmetics},
      BuiltIn{u"dms2rad", FUNCTION_DMS2RAD, &CBrindle::ExecArithmetics},
      BuiltIn{u"isnan", FUNCTION_ISNAN, &CBrindle::ExecArithmetics},
      BuiltIn{u"loword", FUNCTION_LOWORD, &CBrindle::ExecArithmetics},
      BuiltIn{u"hiword", FUNCTION_HIWORD, &CBrindle::ExecArithmetics},
      BuiltIn{u"swap", FUNCTION_SWAP, &CBrindle::ExecArithmetics},
      BuiltIn{u"int", FUNCTION_INT, &CBrindle::ExecArithmetics},
      BuiltIn{u"max", FUNCTION_MAX, &CBrindle::ExecArithmetics},
      BuiltIn{u"min", FUNCTION_MIN, &CBrindle::ExecArithmetics},
      BuiltIn{u"ubound", FUNCTION_UBOUND, &CBrindle::ExecArithmetics},
      BuiltIn{u"rand", FUNCTION_RAND, &CBrindle::ExecArithmetics},

      BuiltIn{u"mapset", FUNCTION_MAPSET, &CBrindle::ExecMapOperation},
      BuiltIn{u"mapget", FUNCTION_MAPGET, &CBrindle::ExecMapOperation},
      BuiltIn{u"maphas", FUNCTION_MAPHAS, &CBrindle::ExecMapOperation},
      BuiltIn{u"mapremove", FUNCTION_MAPREMOVE, &CBrindle::ExecMapOperation},
      BuiltIn{u"mapgetkeys", FUNCTION_MAPGETKEYS, &CBrindle::ExecMapOperation},
      BuiltIn{u"mapgetvalues", FUNCTION_MAPGETVALUES, &CBrindle::ExecMapOperation},

      BuiltIn{u"left", FUNCTION_LEFT, &CBrindle::ExecStringOperation},
      BuiltIn{u"right", FUNCTION_RIGHT, &CBrindle::ExecStringOperation},
      BuiltIn{u"mid", FUNCTION_MID, &CBrindle::ExecStringOperation},
      BuiltIn{u"instr", FUNCTION_INSTR, &CBrindle::ExecStringOperation},
      BuiltIn{u"replace", FUNCTION_REPLACE, &CBrindle::ExecStringOperation},
      BuiltIn{u"lcase", FUNCTION_LCASE, &CBrindle::ExecStringOperation},
      BuiltIn{u"ucase", FUNCTION_UCASE, &CBrindle::ExecStringOperation},
      BuiltIn{u"len", FUNCTION_LEN, &CBrindle::ExecStringOperation},
      BuiltIn{u"repeat", FUNCTION_REPEAT, &CBrindle::ExecStringOperation},
      BuiltIn{u"format", FUNCTION_FORMAT, &CBrindle::ExecStringOperation},
      BuiltIn{u"val", FUNCTION_VAL, &CBrindle::ExecStringOperation},
      BuiltIn{u"str", FUNCTION_STR, &CBrindle::ExecStringOperation},
      BuiltIn{u"getpath", FUNCTION_GETPATH, &CBrindle::ExecStringOperation},
      BuiltIn{u"getname", FUNCTION_GETNAME, &CBrindle::ExecStringOperation},

      BuiltIn{u"fileopendlg", FUNCTION_FILEOPENDLG, &CBrindle::ExecFileDlg},
      BuiltIn{u"filesaveasdlg", FUNCTION_FILESAVEASDLG, &CBrindle::ExecFileDlg},

      BuiltIn{u"read", FUNCTION_READ, &CBrindle::ExecFileOperation},
      BuiltIn{u"write", FUNCTION_WRITE, &CBrindle::ExecFileOperation},
      BuiltIn{u"readline", FUNCTION_READLINE, &CBrindle::ExecFileOperation},
      BuiltIn{u"readlist", FUNCTION_READLIST, &CBrindle::ExecFileOperation},
      BuiltIn{u"writeline", FUNCTION_WRITELINE, &CBrindle::ExecFileOperation},
      BuiltIn{u"filesize", FUNCTION_FILESIZE, &CBrindle::ExecFileOperation},
      BuiltIn{u"seek", FUNCTION_SEEK, &CBrindle::ExecFileOperation},
      BuiltIn{u"iseof", FUNCTION_ISEOF, &CBrindle::ExecFileOperation},
      BuiltIn{u"getfilepos", FUNCTION_GETFILEPOS, &CBrindle::ExecFileOperation},

      BuiltIn{u"getwindowhandle", FUNCTION_GETWINDOWHANDLE, &CBrindle::ExecWindowHandle},

      BuiltIn{u"copydata", FUNCTION_COPYDATA, &CBrindle::ExecCopyData},

      BuiltIn{u"pointoffset", FUNCTION_POINTOFFSET, &CBrindle::ExecPointOffset},

      BuiltIn{u"sendmessage", FUNCTION_SENDMESSAGE, &CBrindle::ExecSendMessage},

      BuiltIn{u"popupmenu", FUNCTION_POPUPMENU, &CBrindle::ExecPopupMenu},

      BuiltIn{u"ask", FUNCTION_ASK, &CBrindle::ExecAsk},

      BuiltIn{u"findfiles", FUNCTION_FINDFILES, &CBrindle::ExecFindFiles},

      BuiltIn{u"controlvalue", FUNCTION_CONTROLVALUE, &CBrindle::ExecGetControlValue},

      BuiltIn{u"dbfopen", FUNCTION_DBFOPEN, &CBrindle::ExecDBFOperation},
      BuiltIn{u"dbfcreate", FUNCTION_DBFCREATE, &CBrindle::ExecDBFOperation},
      BuiltIn{u"dbfclose", FUNCTION_DBFCLOSE, &CBrindle::ExecDBFOperation},
      BuiltIn{u"dbfnumrecords", FUNCTION_DBFNUMRECORDS, &CBrindle::ExecDBFOperation},
      BuiltIn{u"dbfread", FUNCTION_DBFREAD, &CBrindle::ExecDBFOperation},
      BuiltIn{u"dbfwrite", FUNCTION_DBFWRITE, &CBrindle::ExecDBFOperation},
      BuiltIn{u"dbfappend", FUNCTION_DBFAPPEND, &CBrindle::ExecDBFOperation},
      BuiltIn{u"dbfseek", FUNCTION_DBFSEEK, &CBrindle::ExecDBFOperation},
      BuiltIn{u"dbfdelete", FUNCTION_DBFDELETE, &CBrindle::ExecDBFOperation},
      BuiltIn{u"dbfnumfields", FUNCTION_DBFNUMFIELDS, &CBrindle::ExecDBFOperation},
      BuiltIn{u"dbffieldnames", FUNCTION_DBFFIELDNAMES, &CBrindle::ExecDBFOperation},

      BuiltIn{u"comportopen", FUNCTION_COMPORTOPEN, &CBrindle::ExecComPortOperation},
      BuiltIn{u"comportclose", FUNCTION_COMPORTCLOSE, &CBrindle::ExecComPortOperation},
      BuiltIn{u"comportread", FUNCTION_COMPORTREAD, &CBrindle::ExecComPortOperation},
      BuiltIn{u"comportwrite", FUNCTION_COMPORTWRITE, &CBrindle::ExecComPortOperation},

      BuiltIn{u"createobject", FUNCTION_CREATEOBJECT, &CBrindle::ExecCreateObject},

      BuiltIn{u"getvarstats", FUNCTION_GETVARSTATS, &CBrindle::ExecGetVarStats},

      BuiltIn{u"garbagecollection", FUNCTION_GARBAGECOLLECTION, &CBrindle::ExecGarbageCollection},
  };
  static_assert(kBuiltIns.size() == 86);

  m_pState->functions.Clear();
  for (const BuiltIn& builtIn : kBuiltIns) {
    auto function = std::make_unique<CFuncDesc>(CString(builtIn.name), builtIn.code, builtIn.handler);
    if (AddFunction(function.get()))
      function.release();
  }
  return true;
}
