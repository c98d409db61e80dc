#include "conversion.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace brindle {

namespace {

constexpr double kExactIntegers = 9007199254740992.0; // 2^53

[[noreturn]] void Refuse(const std::string& name, const std::string& reason) {
  throw std::runtime_error("D-Bus: " + name + " " + reason);
}

std::string TextOf(const CVarBase& value, const std::string& name) {
  std::string text = value.GetStringValue().ToUtf8();
  if (text.find('\0') != std::string::npos)
    Refuse(name, "holds a zero character");
  return text;
}

// A whole number between the limits; a text is read with all its digits, a fraction is cut as the language does.
template <class Integer> Integer IntegerOf(const CVarBase& value, const std::string& name) {
  using Limits = std::numeric_limits<Integer>;
  if (value.GetType() == BVT_STRING) {
    const std::string text = TextOf(value, name);
    errno = 0;
    char* end = nullptr;
    if constexpr (Limits::is_signed) {
      const long long number = std::strtoll(text.c_str(), &end, 10);
      if (errno == 0 && number >= Limits::min() && number <= Limits::max() && *end != 'e' && *end != 'E')
        return static_cast<Integer>(number);
    } else if (text.find('-') == std::string::npos) {
      const unsigned long long number = std::strtoull(text.c_str(), &end, 10);
      if (errno == 0 && number <= Limits::max() && *end != 'e' && *end != 'E')
        return static_cast<Integer>(number);
    }
  }
  const double number = std::trunc(value.GetDoubleValue());
  // The limits of 64 bits are no doubles: beyond them the next one is the power of two.
  const double above = std::ldexp(1.0, Limits::digits);
  if (!(number < above && number >= (Limits::is_signed ? -above : 0.0)))
    Refuse(name, "does not fit into its type");
  return static_cast<Integer>(number);
}

bool TruthOf(const CVarBase& value) {
  if (value.GetType() != BVT_STRING)
    return value.GetDoubleValue() != 0.0;
  return value.GetStringValue().CompareNoCase(u"True") == 0 || value.GetDoubleValue() != 0.0;
}

template <class Value> void Append(sd_bus_message* message, char type, Value value) {
  Checked(sd_bus_message_append_basic(message, type, &value), "an argument cannot be passed");
}

void AppendVariant(sd_bus_message* message, const CVarBase& value, const std::string& name) {
  std::string type = "s";
  if (value.GetType() == BVT_NUMBER)
    type = std::trunc(value.GetDoubleValue()) == value.GetDoubleValue() ? "i" : "d";
  else if (value.GetType() == BVT_OBJECT)
    type = "o";
  Checked(sd_bus_message_open_container(message, SD_BUS_TYPE_VARIANT, type.c_str()), "an argument cannot be passed");
  AppendArgument(message, type, value, name);
  Checked(sd_bus_message_close_container(message), "an argument cannot be passed");
}

VARIANT Empty() {
  VARIANT value;
  VariantInit(&value);
  return value;
}

VARIANT Number(double number) {
  VARIANT value = Empty();
  if (number == std::trunc(number) && std::fabs(number) <= std::numeric_limits<LONG>::max()) {
    value.vt = VT_I4;
    value.lVal = static_cast<LONG>(number);
  } else {
    value.vt = VT_R8;
    value.dblVal = number;
  }
  return value;
}

VARIANT Text(const char* text) {
  VARIANT value = Empty();
  const CString units = CString::FromUtf8(text);
  value.bstrVal = SysAllocStringLen(units.GetString(), static_cast<UINT>(units.GetLength()));
  if (value.bstrVal == nullptr)
    throw std::bad_alloc();
  value.vt = VT_BSTR;
  return value;
}

// The items of an array or of several results, freed unless they are given away.
class Items {
public:
  Items() = default;
  Items(const Items&) = delete;
  Items& operator=(const Items&) = delete;
  ~Items() {
    for (VARIANT& item : m_items)
      VariantClear(&item);
  }
  void Add(VARIANT item) { m_items.push_back(item); }
  [[nodiscard]] std::size_t Count() const { return m_items.size(); }
  [[nodiscard]] VARIANT TakeOnly() {
    const VARIANT only = m_items.front();
    m_items.clear();
    return only;
  }
  [[nodiscard]] VARIANT TakeArray() {
    VARIANT value = Empty();
    value.parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(m_items.size()));
    void* data = nullptr;
    if (value.parray == nullptr || FAILED(SafeArrayAccessData(value.parray, &data)))
      throw std::bad_alloc();
    for (std::size_t i = 0; i < m_items.size(); ++i)
      static_cast<VARIANT*>(data)[i] = m_items[i];
    SafeArrayUnaccessData(value.parray);
    m_items.clear();
    value.vt = VT_ARRAY | VT_VARIANT;
    return value;
  }

private:
  std::vector<VARIANT> m_items;
};

template <class Value> Value Read(sd_bus_message* message, char type) {
  Value value{};
  Checked(sd_bus_message_read_basic(message, type, &value), "the answer cannot be read");
  return value;
}

template <class Integer> VARIANT WideNumber(Integer number) {
  const auto asDouble = static_cast<double>(number);
  if (std::fabs(asDouble) < kExactIntegers)
    return Number(asDouble);
  // With every digit: the language makes a text of these kinds.
  VARIANT value = Empty();
  value.vt = std::numeric_limits<Integer>::is_signed ? VT_I8 : VT_UI8;
  value.ullVal = static_cast<ULONGLONG>(number);
  return value;
}

[[noreturn]] void RefuseResult(char type, const char* contents) {
  throw std::runtime_error("D-Bus: the answer holds a value of the type \"" + std::string(1, type) +
                           (contents != nullptr ? contents : "") + "\", which scripts cannot take");
}

VARIANT ReadValue(sd_bus_message* message, const PathToObject& toObject, bool inArray);

VARIANT ReadArray(sd_bus_message* message, const char* contents, const PathToObject& toObject) {
  if (contents == nullptr || contents[1] != '\0' || contents[0] == SD_BUS_TYPE_UNIX_FD)
    RefuseResult(SD_BUS_TYPE_ARRAY, contents);
  Items items;
  Checked(sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, contents), "the answer cannot be read");
  while (Checked(sd_bus_message_at_end(message, 0), "the answer cannot be read") == 0)
    items.Add(ReadValue(message, toObject, true));
  Checked(sd_bus_message_exit_container(message), "the answer cannot be read");
  return items.TakeArray();
}

VARIANT ReadValue(sd_bus_message* message, const PathToObject& toObject, bool inArray) {
  char type = 0;
  const char* contents = nullptr;
  Checked(sd_bus_message_peek_type(message, &type, &contents), "the answer cannot be read");
  switch (type) {
  case SD_BUS_TYPE_BYTE: return Number(Read<std::uint8_t>(message, type));
  case SD_BUS_TYPE_INT16: return Number(Read<std::int16_t>(message, type));
  case SD_BUS_TYPE_UINT16: return Number(Read<std::uint16_t>(message, type));
  case SD_BUS_TYPE_INT32: return Number(Read<std::int32_t>(message, type));
  case SD_BUS_TYPE_UINT32: return Number(Read<std::uint32_t>(message, type));
  case SD_BUS_TYPE_INT64: return WideNumber(Read<std::int64_t>(message, type));
  case SD_BUS_TYPE_UINT64: return WideNumber(Read<std::uint64_t>(message, type));
  case SD_BUS_TYPE_DOUBLE: {
    VARIANT value = Empty();
    value.dblVal = Read<double>(message, type);
    value.vt = VT_R8;
    return value;
  }
  case SD_BUS_TYPE_BOOLEAN: {
    VARIANT value = Empty();
    value.boolVal = Read<int>(message, type) != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    value.vt = VT_BOOL;
    return value;
  }
  case SD_BUS_TYPE_STRING:
  case SD_BUS_TYPE_SIGNATURE: return Text(Read<const char*>(message, type));
  case SD_BUS_TYPE_OBJECT_PATH: {
    VARIANT value = Empty();
    value.pdispVal = toObject(Read<const char*>(message, type));
    value.vt = VT_DISPATCH;
    return value;
  }
  case SD_BUS_TYPE_VARIANT: {
    Checked(sd_bus_message_enter_container(message, SD_BUS_TYPE_VARIANT, contents), "the answer cannot be read");
    Items item;
    item.Add(ReadValue(message, toObject, inArray));
    Checked(sd_bus_message_exit_container(message), "the answer cannot be read");
    return item.TakeOnly();
  }
  case SD_BUS_TYPE_ARRAY:
    if (!inArray)
      return ReadArray(message, contents, toObject);
    [[fallthrough]];
  default: RefuseResult(type, contents);
  }
}

} // namespace

void AppendArgument(sd_bus_message* message, const std::string& type, const CVarBase& value, const std::string& name) {
  switch (type.size() == 1 ? type[0] : '\0') {
  case SD_BUS_TYPE_BYTE: return Append(message, type[0], IntegerOf<std::uint8_t>(value, name));
  case SD_BUS_TYPE_INT16: return Append(message, type[0], IntegerOf<std::int16_t>(value, name));
  case SD_BUS_TYPE_UINT16: return Append(message, type[0], IntegerOf<std::uint16_t>(value, name));
  case SD_BUS_TYPE_INT32: return Append(message, type[0], IntegerOf<std::int32_t>(value, name));
  case SD_BUS_TYPE_UINT32: return Append(message, type[0], IntegerOf<std::uint32_t>(value, name));
  case SD_BUS_TYPE_INT64: return Append(message, type[0], IntegerOf<std::int64_t>(value, name));
  case SD_BUS_TYPE_UINT64: return Append(message, type[0], IntegerOf<std::uint64_t>(value, name));
  case SD_BUS_TYPE_DOUBLE: return Append(message, type[0], value.GetDoubleValue());
  case SD_BUS_TYPE_BOOLEAN: return Append(message, type[0], TruthOf(value) ? 1 : 0);
  case SD_BUS_TYPE_VARIANT: return AppendVariant(message, value, name);
  case SD_BUS_TYPE_STRING:
  case SD_BUS_TYPE_SIGNATURE:
  case SD_BUS_TYPE_OBJECT_PATH: {
    const bool isObject = type[0] == SD_BUS_TYPE_OBJECT_PATH && value.GetType() == BVT_OBJECT;
    const std::string text = isObject ? PathOfObject(value.GetObjectValue()) : TextOf(value, name);
    if (type[0] == SD_BUS_TYPE_OBJECT_PATH && sd_bus_object_path_is_valid(text.c_str()) <= 0)
      Refuse(name, "is no object path");
    if (sd_bus_message_append_basic(message, type[0], text.c_str()) < 0)
      Refuse(name, "cannot be passed as the type \"" + type + "\"");
    return;
  }
  default: Refuse(name, "has the type \"" + type + "\", which scripts cannot pass");
  }
}

bool CanRead(const std::string& signature) {
  static const std::string kSimple = "ynqiuxtdbsgov";
  for (std::size_t i = 0; i < signature.size(); ++i) {
    if (signature[i] == SD_BUS_TYPE_ARRAY)
      ++i;
    if (i >= signature.size() || kSimple.find(signature[i]) == std::string::npos)
      return false;
  }
  return true;
}

VARIANT ReadResult(sd_bus_message* message, const PathToObject& toObject) {
  Items items;
  while (Checked(sd_bus_message_at_end(message, 1), "the answer cannot be read") == 0)
    items.Add(ReadValue(message, toObject, false));
  if (items.Count() == 0)
    return Empty();
  return items.Count() == 1 ? items.TakeOnly() : items.TakeArray();
}

} // namespace brindle
