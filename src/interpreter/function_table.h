// The functions that one interpreter knows by name: built-ins, script procedures, declared externals.
// Room: interpreter. Used by: AddFunction, LookupFunction, the label scan.
// May touch: nothing.
// Invariant: keys are the descriptors' names; a descriptor's address never changes while it is in the table.
#pragma once

#include "interpreter/func_desc.h"
#include "interpreter/function_signature.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>

namespace brindle {

class FunctionTable {
public:
  [[nodiscard]] CFuncDesc* Find(const CString& lowered) const {
    const auto entry = m_functions.find(lowered);
    return entry == m_functions.end() ? nullptr : entry->second.get();
  }
  // Takes ownership unless the name is there already.
  [[nodiscard]] bool Add(CFuncDesc* function) {
    const auto [entry, added] = m_functions.try_emplace(function->m_strName);
    if (added)
      entry->second.reset(function);
    return added;
  }
  void Clear() noexcept { m_functions.clear(); }
  // To be said when names may mean something else from now on: what was compiled counts on them.
  void NoteChange() noexcept { ++m_nChanges; }
  [[nodiscard]] std::uint64_t Changes() const noexcept { return m_nChanges; }
  // Every one, in no particular order.
  template <class Action> void ForEach(Action action) const {
    for (const auto& function : m_functions)
      action(*function.second);
  }

  // Of built-ins.
  [[nodiscard]] const FunctionSignature& SignatureOf(FUNCTION_TYPE code) const noexcept {
    return m_signatures[static_cast<std::size_t>(code)];
  }
  void SetSignature(FUNCTION_TYPE code, const FunctionSignature& signature) noexcept {
    m_signatures[static_cast<std::size_t>(code)] = signature;
  }

private:
  std::array<FunctionSignature, FUNCTION_RAND + 1> m_signatures{}; // ORDER FUNCTION
  std::unordered_map<CString, std::unique_ptr<CFuncDesc>> m_functions;
  std::uint64_t m_nChanges = 0;
};

} // namespace brindle
