// The class "Brindle.FileSystem": files and folders for scripts. Paths are looked up as the file statements do it.
#include "file_operations.h"

#include <brindle/component.h>
#include <brindle/environment.h>

#include <limits>

namespace {

// ORDER MEMBER
enum Member { kExists, kIsFolder, kSize, kFreeSpace, kCopy, kMove, kDelete, kCreateFolder };

// Whole numbers are integers as long as they fit.
HRESULT ReturnBytes(VARIANT& result, double bytes) {
  result.vt = bytes <= std::numeric_limits<LONG>::max() ? VT_I4 : VT_R8;
  if (result.vt == VT_I4)
    result.lVal = static_cast<LONG>(bytes);
  else
    result.dblVal = bytes;
  return S_OK;
}

class FileSystem final : public CComponent {
public:
  FileSystem()
      : CComponent({u"Exists", u"IsFolder", u"Size", u"FreeSpace", u"Copy", u"Move", u"Delete", u"CreateFolder"}) {}

private:
  HRESULT Call(int member, WORD access, const Arguments& arguments, VARIANT& result) override {
    if (access != DISPATCH_METHOD)
      return DISP_E_MEMBERNOTFOUND;
    const bool two = member == kCopy || member == kMove;
    if (arguments.size() < (two ? 2U : 1U) || arguments.size() > (two ? 3U : 1U))
      return DISP_E_BADPARAMCOUNT;
    const std::string path = CEnvironment::PathToNative(arguments[0].GetStringValue());
    const std::string target = two ? CEnvironment::PathToNative(arguments[1].GetStringValue()) : std::string();
    const bool overwrite = arguments.size() == 3 && arguments[2].GetLongValue() != 0;
    switch (member) {
    case kExists: return Return(result, brindle::Exists(path));
    case kIsFolder: return Return(result, brindle::IsFolder(path));
    case kSize: return ReturnBytes(result, brindle::SizeOf(path));
    case kFreeSpace: return ReturnBytes(result, brindle::FreeSpaceOf(path));
    case kCopy: brindle::Copy(path, target, overwrite); break;
    case kMove: brindle::Move(path, target, overwrite); break;
    case kDelete: brindle::Delete(path); break;
    case kCreateFolder: brindle::CreateFolder(path); break;
    default: return DISP_E_MEMBERNOTFOUND;
    }
    return Return(result, true); // a failure has thrown
  }
};

} // namespace

BRINDLE_COMPONENT_EXPORT const char* const* BrindleClassIdentifiers() {
  static constexpr const char* kIdentifiers[] = {"Brindle.FileSystem", nullptr};
  return kIdentifiers;
}

BRINDLE_COMPONENT_EXPORT HRESULT BrindleCreateObject(const OLECHAR* identifier, IDispatch** object, BSTR*) {
  if (CString(identifier).CompareNoCase(u"Brindle.FileSystem") != 0)
    return CLASS_E_CLASSNOTAVAILABLE;
  *object = new FileSystem;
  return S_OK;
}
