#include "data/variable_store.h"

#include "platform/number_text.h"

#include <algorithm>
#include <utility>

namespace brindle {

namespace {

constexpr std::u16string_view kScopeMark = u"__#";
// Levels beyond this are never entered, so a name that carries one names no frame.
constexpr int kDeepestFrame = 100000;
// A name of more marks than this is taken as it is: each mark makes a name of its own.
constexpr int kMostMarks = 4;

int CountMarks(std::u16string_view key) {
  int count = 0;
  for (std::size_t at = key.find(kScopeMark); at != std::u16string_view::npos && count <= kMostMarks;
       at = key.find(kScopeMark, at + 1))
    ++count;
  return count;
}

// The level at the end of a key of the form NAME__#LEVEL as this store itself would write it.
std::optional<int> LevelOfKey(std::u16string_view key, std::size_t mark) {
  const std::u16string_view digits = key.substr(mark + kScopeMark.size());
  if (digits.empty() || digits.size() > 7 || digits[0] == u'0')
    return std::nullopt;
  for (const char16_t unit : digits)
    if (unit < u'0' || unit > u'9')
      return std::nullopt;
  const int level = ParseInteger(digits);
  return level <= kDeepestFrame ? std::optional(level) : std::nullopt;
}

} // namespace

CString VariableStore::ScopedKey(const CString& spelling, int level) {
  CString key = spelling;
  key.MakeLower();
  key.Append(kScopeMark);
  return key += FormatInteger(level);
}

int VariableStore::NumberOf(const CString& lowered) {
  const auto known = m_numbers.find(lowered);
  if (known != m_numbers.end())
    return known->second;
  Name name;
  name.lowered = lowered;
  const std::size_t mark = lowered.View().rfind(kScopeMark);
  if (mark != std::u16string_view::npos && mark > 0 && CountMarks(lowered.View()) <= kMostMarks) {
    if (const auto level = LevelOfKey(lowered.View(), mark)) {
      name.aliasNumber = NumberOf(lowered.Left(static_cast<int>(mark)));
      name.aliasLevel = *level;
    }
  }
  const int number = static_cast<int>(m_names.size());
  m_names.push_back(std::move(name));
  m_numbers.emplace(lowered, number);
  m_nFrameSize = m_names.size() + kTemporaries;
  return number;
}

NameRef VariableStore::Ref(const CString& spelling) {
  CString lowered = spelling;
  return {spelling, NumberOf(lowered.MakeLower())};
}

std::optional<NameRef> VariableStore::KnownRef(const CString& spelling) const {
  CString lowered = spelling;
  const auto known = m_numbers.find(lowered.MakeLower());
  if (known == m_numbers.end())
    return std::nullopt;
  return NameRef{spelling, known->second};
}

VariableSlot* VariableStore::FindLocal(int number, int level) noexcept {
  if (static_cast<std::size_t>(level) >= m_frames.size())
    return nullptr;
  Frame& frame = m_frames[static_cast<std::size_t>(level)];
  const auto place = static_cast<std::size_t>(number + kTemporaries);
  if (place >= frame.count)
    return nullptr;
  VariableSlot& slot = frame.slots[place];
  return slot.IsDefined() ? &slot : nullptr;
}

VariableSlot& VariableStore::LocalSlot(int number, int level) {
  return FrameAt(level)[number + kTemporaries];
}

// With room for every name; by half as much again where a program makes names all the time.
VariableSlot* VariableStore::MakeFrame(int level) {
  if (static_cast<std::size_t>(level) + 2 > m_frames.size())
    m_frames.resize(static_cast<std::size_t>(level) + 2);
  Frame& frame = m_frames[static_cast<std::size_t>(level)];
  const std::size_t count = std::max(m_nFrameSize, frame.count + frame.count / 2);
  auto slots = std::make_unique<VariableSlot[]>(count);
  for (std::size_t place = 0; place < frame.count; ++place)
    slots[place].MoveFrom(frame.slots[place]);
  for (std::size_t place = frame.count; place < kNumberTemporaries; ++place)
    slots[place].SetNumber(0);
  MemoryAccount::Add((count - frame.count) * sizeof(VariableSlot));
  frame.slots = std::move(slots);
  frame.count = count;
  return frame.slots.get();
}

int VariableStore::LocalPlace(int number) noexcept {
  m_names[static_cast<std::size_t>(number)].usedAsLocal = true;
  return number + kTemporaries;
}

VariableSlot* VariableStore::FindGlobal(const NameRef& name) noexcept {
  for (const auto& global : m_names[static_cast<std::size_t>(name.number)].globals)
    if (global->spelling == name.spelling)
      return &global->slot;
  return nullptr;
}

VariableSlot* VariableStore::Find(const NameRef& name, int level) {
  Name& entry = m_names[static_cast<std::size_t>(name.number)];
  for (const auto& global : entry.globals)
    if (global->slot.IsDefined() && global->spelling == name.spelling)
      return &global->slot;
  if (entry.aliasNumber >= 0 && name.spelling == entry.lowered) {
    if (VariableSlot* slot = FindLocal(entry.aliasNumber, entry.aliasLevel))
      return slot;
  }
  return FindLocal(name.number, level);
}

VariableSlot& VariableStore::Make(const NameRef& name, int level, bool global) {
  if (!global)
    return LocalSlot(name.number, level);
  Name& entry = m_names[static_cast<std::size_t>(name.number)];
  if (entry.aliasNumber >= 0 && name.spelling == entry.lowered)
    return LocalSlot(entry.aliasNumber, entry.aliasLevel);
  for (const auto& known : entry.globals)
    if (known->spelling == name.spelling)
      return known->slot;
  if (entry.usedAsLocal)
    ++m_nLayout;
  entry.globals.push_back(std::make_unique<Global>(Global{name.spelling, VariableSlot()}));
  return entry.globals.back()->slot;
}

CString VariableStore::KeyOf(const NameRef& name, int level) {
  VariableSlot* found = Find(name, level);
  return found != nullptr && found != FindLocal(name.number, level) ? name.spelling : ScopedKey(name.spelling, level);
}

bool VariableStore::Undefine(const NameRef& name, int level) {
  VariableSlot* slot = FindLocal(name.number, level);
  if (slot == nullptr)
    return false;
  slot->Undefine();
  return true;
}

int VariableStore::Count() const {
  int count = 0;
  for (const Frame& frame : m_frames)
    for (std::size_t place = kTemporaries; place < frame.count; ++place)
      count += frame.slots[place].IsDefined() ? 1 : 0;
  for (const Name& name : m_names)
    for (const auto& global : name.globals)
      count += global->slot.IsDefined() ? 1 : 0;
  return count;
}

int VariableStore::RemoveLevel(int level) {
  int removed = 0;
  const auto remove = [&removed](VariableSlot& slot) {
    if (slot.IsDefined()) {
      slot.Undefine();
      ++removed;
    }
  };
  if (static_cast<std::size_t>(level) < m_frames.size()) {
    Frame& frame = m_frames[static_cast<std::size_t>(level)];
    for (std::size_t place = kTemporaries; place < frame.count; ++place)
      remove(frame.slots[place]);
  }
  // A global whose spelling happens to end like a local's key is taken for one.
  const CString suffix = CString(kScopeMark) + FormatInteger(level);
  for (Name& name : m_names)
    for (const auto& global : name.globals)
      if (global->spelling.GetLength() > suffix.GetLength() && global->spelling.View().ends_with(suffix.View()))
        remove(global->slot);
  return removed;
}

bool VariableStore::FindObject(int level, Place& place) const noexcept {
  // The level that counts is the one behind the first mark of a key.
  const auto levelOf = [](const CString& key, int otherwise) {
    const std::size_t mark = key.View().find(kScopeMark);
    return mark == std::u16string_view::npos ? otherwise : ParseInteger(key.View().substr(mark + kScopeMark.size()));
  };
  if (!place.global) {
    for (; place.outer < m_frames.size(); ++place.outer, place.inner = 0) {
      const Frame& frame = m_frames[place.outer];
      for (; place.inner + kTemporaries < frame.count; ++place.inner)
        if (frame.slots[place.inner + kTemporaries].HoldsObject() &&
            levelOf(m_names[place.inner].lowered, static_cast<int>(place.outer)) >= level)
          return true;
    }
    place = {true, 0, 0};
  }
  for (; place.outer < m_names.size(); ++place.outer, place.inner = 0) {
    const auto& globals = m_names[place.outer].globals;
    for (; place.inner < globals.size(); ++place.inner)
      if (globals[place.inner]->slot.HoldsObject() && levelOf(globals[place.inner]->spelling, 0) >= level)
        return true;
  }
  return false;
}

VariableSlot* VariableStore::At(const Place& place) noexcept {
  VariableSlot* slot = nullptr;
  if (!place.global)
    return FindLocal(static_cast<int>(place.inner), static_cast<int>(place.outer));
  if (place.outer < m_names.size() && place.inner < m_names[place.outer].globals.size())
    slot = &m_names[place.outer].globals[place.inner]->slot;
  return slot != nullptr && slot->IsDefined() ? slot : nullptr;
}

void VariableStore::Clear() noexcept {
  // The names keep their numbers: tokens remember them. The variables leave the store before they end.
  const std::vector<Frame> frames = std::exchange(m_frames, {});
  for (Name& name : m_names)
    const std::vector<std::unique_ptr<Global>> globals = std::exchange(name.globals, {});
  ++m_nLayout;
}

} // namespace brindle
