// Maps: order, whole copies, removal; and the map functions as members see them.
#include "data/map_table.h"
#include "support/counting_dispatch.h"
#include "support/script_test.h"

#include <algorithm>
#include <random>

namespace {

using brindle::ScriptMap;

std::string Shown(const ScriptMap& map) {
  std::string text;
  map.ForEach([&text](const CString& key, const CBasicVariable& value) {
    text += key.ToUtf8() + "=" + value.GetStringValue().ToUtf8() + " ";
  });
  return text;
}

TEST(MapTable, entries_come_in_the_order_of_first_storing) {
  ScriptMap map;
  EXPECT_EQ(Shown(map), "");
  map.Set(u"c", CBasicVariable(1));
  map.Set(u"a", CBasicVariable(2));
  map.Set(u"b", CBasicVariable(3));
  map.Set(u"c", CBasicVariable(4));
  EXPECT_EQ(Shown(map), "c=4 a=2 b=3 ");
  EXPECT_TRUE(map.Remove(u"c"));
  EXPECT_FALSE(map.Remove(u"c"));
  EXPECT_EQ(map.Find(u"c"), nullptr);
  map.Set(u"c", CBasicVariable(5));
  EXPECT_EQ(Shown(map), "a=2 b=3 c=5 ");
  map.Clear();
  EXPECT_EQ(Shown(map), "");
  EXPECT_EQ(map.Find(u"a"), nullptr);
  map.Set(u"z", CBasicVariable(6));
  EXPECT_EQ(Shown(map), "z=6 ");
}

TEST(MapTable, keys_are_compared_as_written) {
  ScriptMap map;
  map.Set(u"k", CBasicVariable(1));
  map.Set(u"K", CBasicVariable(2));
  map.Set(u"", CBasicVariable(3));
  map.Set(u" k", CBasicVariable(4));
  EXPECT_EQ(Shown(map), "k=1 K=2 =3  k=4 ");
  EXPECT_FALSE(map.Remove(u"k "));
}

TEST(MapTable, values_are_whole_copies) {
  CBasicVariable array(1);
  array.AddItem(2);
  array.AddItem(3);
  array.SetCurIndex(2);
  ScriptMap map;
  map.Set(u"a", array);
  array.SetValue(9);
  const CBasicVariable* stored = map.Find(u"a");
  ASSERT_NE(stored, nullptr);
  EXPECT_EQ(stored->GetNumItems(), 3);
  EXPECT_EQ(stored->GetCurIndex(), 2);
  EXPECT_EQ(stored->GetStringValue().ToUtf8(), "3");
  map.Set(u"a", CBasicVariable(u"one"));
  EXPECT_EQ(map.Find(u"a")->GetNumItems(), 1);
}

// Against a plain list: many keys come, go and come back.
TEST(MapTable, keeps_its_order_under_any_sequence) {
  std::mt19937 random(1);
  ScriptMap map;
  std::vector<std::pair<std::string, int>> model;
  const auto find = [&model](const std::string& key) {
    return std::find_if(model.begin(), model.end(), [&key](const auto& entry) { return entry.first == key; });
  };
  for (int step = 0; step < 20'000; ++step) {
    const unsigned keys = 4U << (random() % 6); // few keys now, many later
    const std::string key = std::string("k").append(std::to_string(random() % keys));
    const CString name = CString::FromUtf8(key);
    const auto entry = find(key);
    switch (random() % 16) {
    case 0:
      if (random() % 64 == 0) {
        map.Clear();
        model.clear();
      }
      break;
    case 1:
    case 2:
    case 3:
    case 4:
    case 5:
    case 6:
    case 7:
      EXPECT_EQ(map.Remove(name), entry != model.end());
      if (entry != model.end())
        model.erase(entry);
      break;
    default:
      map.Set(name, CBasicVariable(step));
      if (entry != model.end())
        entry->second = step;
      else
        model.emplace_back(key, step);
      break;
    }
    const CBasicVariable* value = map.Find(name);
    const auto expected = find(key);
    ASSERT_EQ(value != nullptr, expected != model.end());
    if (value != nullptr) {
      ASSERT_EQ(value->GetNumberValue(), expected->second);
    }
    if (step % 37 == 0) {
      std::string text;
      for (const auto& [modelKey, number] : model)
        text += modelKey + "=" + std::to_string(number) + " ";
      ASSERT_EQ(Shown(map), text) << "step " << step;
    }
  }
}

// A queue of keys: what was removed must not pile up.
TEST(MapTable, a_key_stored_and_removed_for_ever_stays_quick) {
  ScriptMap map;
  map.Set(u"first", CBasicVariable(0));
  for (int i = 0; i < 200'000; ++i) {
    map.Set(CString::FromUtf8(std::to_string(i)), CBasicVariable(i));
    if (i >= 10) {
      EXPECT_TRUE(map.Remove(CString::FromUtf8(std::to_string(i - 10))));
    }
  }
  int entries = 0;
  map.ForEach([&entries](const CString&, const CBasicVariable&) { ++entries; });
  EXPECT_EQ(entries, 11);
}

TEST(MapTable, objects_are_held_until_their_entry_goes) {
  CountingDispatch object;
  CBasicVariable value;
  value.SetValue(&object);
  {
    ScriptMap map;
    map.Set(u"a", value);
    map.Set(u"b", value);
    map.Set(u"c", value);
    EXPECT_EQ(object.Held(), 4);
    map.Set(u"a", CBasicVariable(1));
    EXPECT_EQ(object.Held(), 3);
    map.Remove(u"b");
    EXPECT_EQ(object.Held(), 2) << "at once, not when the place is used again";
    map.Clear();
    EXPECT_EQ(object.Held(), 1);
    map.Set(u"d", value);
  }
  EXPECT_EQ(object.Held(), 1);
}

// ---- the statement and the functions

using MapFunctions = ScriptTest;

TEST_F(MapFunctions, a_replaced_map_is_freed) {
  for (int i = 0; i < 3; ++i)
    Run("map create \"m\"\ncall mapset(\"m\", \"k\", 1)\nmap create \"n\"\nmap create \"m\"\n");
  EXPECT_EQ(State().m_mapMaps.size(), 2U);
}

TEST_F(MapFunctions, maps_stay_for_later_runs) {
  Run("map create \"m\"\ncall mapset(\"m\", \"k\", 5)\n");
  Run("print mapget(\"m\", \"k\")\n");
  EXPECT_EQ(m_ui.Output(), "5.000000\n");
}

TEST_F(MapFunctions, results_have_their_kinds) {
  Run("map create \"m\"\ns = mapset(\"m\", \"k\", int(5))\nh = maphas(\"m\", \"k\")\ng = mapget(\"m\", \"k\")\n"
      "n = mapget(\"m\", \"none\")\nr = mapremove(\"m\", \"k\")\nk = mapgetkeys(\"m\")\nv = mapgetvalues(\"m\")\n");
  const std::pair<const char16_t*, const char*> expected[] = {
      {u"s", "False"}, {u"h", "True"}, {u"g", "5"}, {u"n", "0.000000"}, {u"r", "True"}, {u"k", ""}, {u"v", ""}};
  for (const auto& [name, text] : expected)
    EXPECT_EQ(TextOf(name), text);
  CString keys(u"k");
  EXPECT_EQ(Access::FindVariable(Interpreter(), keys)->GetType(), BVT_NONE);
}

TEST_F(MapFunctions, errors_quote_their_line) {
  struct Row {
    const char* statement;
    Numbers errors;
  };
  const Row rows[] = {
      {"map m", {1}},
      {"map \"m\"", {1}},
      {"map ,", {1}},
      {"map create unset", {1}},
      {"map clear unset", {1}},
      {"map show unset", {1}},
      {"map remove \"m\"", {29}},
      {"map input \"m\"", {29}},
      {"x = mapset(\"m\", \"k\")", {24}},
      {"x = mapset(\"m\", \"k\", 1, 2)", {24}},
      {"x = mapget(\"m\")", {24}},
      {"x = mapget(\"m\", \"k\", 1)", {24}},
      {"x = maphas(\"m\")", {24}},
      {"x = maphas(\"m\", \"k\", 1)", {24}},
      {"x = mapremove(\"m\")", {24}},
      {"x = mapremove(\"m\", \"k\", 1)", {24}},
      {"x = mapgetkeys()", {24}},
      {"x = mapgetkeys(\"m\", 1)", {24}},
      {"x = mapgetvalues()", {24}},
      {"x = mapgetvalues(\"m\", 1)", {24}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.statement);
    m_ui.Forget();
    Run("dim unset\nmap create \"m\"\n" + std::string(row.statement) + "\nprint \"behind\"\n");
    EXPECT_EQ(m_ui.ErrorNumbers(), row.errors);
    ASSERT_FALSE(m_ui.errors.empty());
    EXPECT_TRUE(m_ui.errors[0].ends_with("\n\n" + std::string(row.statement))) << m_ui.errors[0];
    EXPECT_EQ(m_ui.Output(), "behind\n");
  }
}

} // namespace
