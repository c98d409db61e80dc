// The "map" statement and the map family of the built-in functions.
#include "brindle/interpreter.h"
#include "interpreter/error_numbers.h"
#include "interpreter/state.h"

using namespace brindle;

bool CBrindle::MapAdd(const CString& name) {
  ++m_pState->mapChanges;
  m_pState->m_mapMaps[name] = std::make_unique<ScriptMap>();
  return true;
}

ScriptMap* CBrindle::MapLookup(const CString& name) {
  const auto map = m_pState->m_mapMaps.find(name);
  return map == m_pState->m_mapMaps.end() ? nullptr : map->second.get();
}

bool CBrindle::MapClear(const CString& name) {
  if (ScriptMap* map = MapLookup(name))
    map->Clear();
  return false; // Deliberate: in every case
}

bool CBrindle::MapAddToMap(const CString& name, const CString& key, const CBasicVariable& value) {
  if (ScriptMap* map = MapLookup(name))
    map->Set(key, value);
  return false; // Deliberate: in every case
}

bool CBrindle::MapGetFromMap(const CString& name, const CString& key, CBasicVariable& out) {
  const ScriptMap* map = MapLookup(name);
  const CBasicVariable* value = map == nullptr ? nullptr : map->Find(key);
  if (value == nullptr)
    return false;
  out.Set(*value);
  return true;
}

bool CBrindle::MapRemoveFromMap(const CString& name, const CString& key) {
  ScriptMap* map = MapLookup(name);
  return map != nullptr && map->Remove(key);
}

bool CBrindle::MapGetKeys(const CString& name, CBasicVariable& out) {
  const ScriptMap* map = MapLookup(name);
  if (map == nullptr)
    return false;
  map->ForEach([&out](const CString& key, const CBasicVariable&) { out.AddItem(key); });
  return true;
}

bool CBrindle::MapGetValues(const CString& name, CBasicVariable& out) {
  const ScriptMap* map = MapLookup(name);
  if (map == nullptr)
    return false;
  // Deliberate: an array contributes one item, the one at the index of `out`.
  map->ForEach([&out](const CString&, const CBasicVariable& value) { out.AddItem(value); });
  return true;
}

bool CBrindle::MapsFree() {
  ++m_pState->mapChanges;
  m_pState->m_mapMaps.clear();
  return true;
}

// map create NAME, map clear NAME; the name is an expression.
bool CBrindle::ExecMap() {
  get_token();
  if (m_pState->token.kind != TOKEN_KEYWORD)
    return Fail(kErrorSyntax);
  const KEYWORD_TYPE keyword = m_pState->token.keyword;
  CBasicVariable name;
  get_exp(name);
  if (name.GetType() == BVT_NONE)
    return Fail(kErrorSyntax);
  switch (keyword) {
  case KEYWORD_CLEAR: return MapClear(name.GetStringValue());
  case KEYWORD_CREATE: return MapAdd(name.GetStringValue());
  default: ReportError(kErrorInvalidKeyword); return false;
  }
}

bool CBrindle::ExecMapOperation(CBasicVariable& result, Arguments& args, FUNCTION_TYPE type) {
  if (!CheckArguments(args, type))
    return false;
  const bool namesOnly = type == FUNCTION_MAPGETKEYS || type == FUNCTION_MAPGETVALUES;
  const CString name = args[0].GetStringValue();
  const CString key = namesOnly ? CString() : args[1].GetStringValue();
  switch (type) {
  case FUNCTION_MAPSET: result.SetValue(MapAddToMap(name, key, args[2])); return true;
  case FUNCTION_MAPGET:
    result.SetValue(0.0);
    MapGetFromMap(name, key, result);
    return true;
  case FUNCTION_MAPHAS: {
    const ScriptMap* map = MapLookup(name);
    result.SetValue(map != nullptr && map->Find(key) != nullptr);
    return true;
  }
  case FUNCTION_MAPREMOVE: result.SetValue(MapRemoveFromMap(name, key)); return true;
  case FUNCTION_MAPGETKEYS: MapGetKeys(name, result); return true;
  case FUNCTION_MAPGETVALUES: MapGetValues(name, result); return true;
  default: return false;
  }
}
