// "open" and "close".
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"
#include "platform/number_text.h"

#include <utility>

using namespace brindle;

namespace {

constexpr int kFirstFile = 1;
constexpr int kLastFile = 256;

struct OpenRequest {
  unsigned mode = CFile::modeRead;
  bool append = false;
  bool text = false;
  int number = -1;
};

// 0, or the number of the error.
int OpenInto(FileTable& files, const CString& path, const OpenRequest& request) {
  if (request.number < kFirstFile || request.number > kLastFile)
    return kErrorFileNumber;
  FileHolder holder;
  const unsigned flags = request.mode | CFile::shareDenyNone;
  try {
    if (request.text) {
      holder.text = std::make_unique<TextFile>();
      if (!holder.text->Open(path, flags))
        return kErrorFileNotFound;
      if (request.append)
        holder.text->SeekToEnd();
    } else {
      holder.raw = std::make_unique<CFile>();
      if (!holder.raw->Open(path.View(), flags))
        return kErrorFileNotFound;
      if (request.append)
        holder.raw->Seek(0, CFile::end);
    }
  } catch (const CFileException&) {
    return kErrorFileNotFound; // it opens but cannot be positioned or read: no file to work with
  }
  files.Add(static_cast<unsigned>(request.number), std::move(holder));
  return 0;
}

} // namespace

// open path [for input|output|append] [as number] [text], the parts behind the path in any order. One that
// fails is left behind its line.
bool CBrindle::ExecOpenFile() {
  const auto fail = [this](int number) {
    ReportError(number);
    FindEOL();
    return false;
  };
  CBasicVariable path;
  get_exp(path);
  if (path.GetType() != BVT_STRING)
    return fail(kErrorArgumentType);

  OpenRequest request;
  const TokenState& token = m_pState->token;
  for (;;) {
    get_token();
    if (token.command == COMMAND_FOR) {
      get_token();
      if (token.kind != TOKEN_KEYWORD)
        return fail(kErrorSyntax);
      if (token.keyword == KEYWORD_OUTPUT)
        request.mode = CFile::modeCreate | CFile::modeReadWrite;
      else
        request.mode = token.keyword == KEYWORD_APPEND ? CFile::modeReadWrite : CFile::modeRead;
      request.append = token.keyword == KEYWORD_APPEND;
    } else if (AtStatementEnd()) {
      putback();
      break;
    } else if (token.keyword == KEYWORD_AS) {
      CBasicVariable number;
      get_exp(number);
      request.number = ToInt32(number.GetNumberValue());
    } else if (token.keyword == KEYWORD_TEXT) {
      request.text = true;
    } else if (token.kind == TOKEN_NONE) {
      NextChar();
    }
  }
  const FileRoot::Scope files(m_pState->budget->Root());
  const int error = OpenInto(m_pState->files, path.GetStringValue(), request);
  return error == 0 || fail(files.HasRefused() ? kErrorNotAllowed : error);
}

bool CBrindle::ExecCloseFile() {
  CBasicVariable number;
  get_exp(number);
  if (number.GetType() != BVT_NUMBER)
    return Fail(kErrorArgumentType);
  m_pState->files.Close(ToUint32(number.GetNumberValue())); // one that is not open is ignored
  return true;
}
