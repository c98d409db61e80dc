#include "brindle/automation.h"

#include "support/counting_dispatch.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

namespace {

static_assert(std::is_same_v<BSTR, OLECHAR*> && sizeof(OLECHAR) == 2);
static_assert(std::is_same_v<VARIANT, tagVARIANT>);
static_assert(offsetof(VARIANT, vt) == 0 && offsetof(VARIANT, bstrVal) == 8);
static_assert(sizeof(VARIANT) == 8 + 2 * sizeof(void*));
static_assert(sizeof(GUID) == 16 && offsetof(GUID, Data4) == 8);
static_assert(offsetof(DISPPARAMS, cArgs) == 2 * sizeof(void*));
static_assert(SUCCEEDED(S_OK) && SUCCEEDED(S_FALSE) && FAILED(E_FAIL) && FAILED(DISP_E_EXCEPTION));
static_assert(E_OUTOFMEMORY == static_cast<HRESULT>(0x8007000EU));

const OLECHAR kAbc[] = {u'a', u'b', u'c', 0};

std::u16string TextOf(BSTR text) {
  return {reinterpret_cast<const char16_t*>(text), SysStringLen(text)};
}

TEST(Automation, text_is_copied_with_its_length_before_it) {
  BSTR text = SysAllocString(kAbc);
  ASSERT_NE(text, nullptr);
  EXPECT_NE(text, kAbc);
  EXPECT_EQ(TextOf(text), u"abc");
  EXPECT_EQ(text[3], 0);
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, reinterpret_cast<const char*>(text) - 4, sizeof bytes);
  EXPECT_EQ(bytes, 6U);
  SysFreeString(text);
}

TEST(Automation, text_of_a_length_may_hold_zeros) {
  const OLECHAR units[] = {u'a', 0, u'b'};
  BSTR text = SysAllocStringLen(units, 3);
  EXPECT_EQ(SysStringLen(text), 3U);
  EXPECT_EQ(text[2], u'b');
  EXPECT_EQ(text[3], 0);
  SysFreeString(text);
}

TEST(Automation, empty_texts_are_not_null) {
  const OLECHAR empty[] = {0};
  for (BSTR text : {SysAllocString(empty), SysAllocStringLen(kAbc, 0), SysAllocStringLen(nullptr, 0)}) {
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(SysStringLen(text), 0U);
    EXPECT_EQ(text[0], 0);
    SysFreeString(text);
  }
}

TEST(Automation, length_without_a_text_makes_room) {
  BSTR text = SysAllocStringLen(nullptr, 100);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(SysStringLen(text), 100U);
  EXPECT_EQ(text[100], 0);
  for (int i = 0; i < 100; ++i)
    text[i] = u'x';
  SysFreeString(text);
}

TEST(Automation, null_is_no_text) {
  EXPECT_EQ(SysAllocString(nullptr), nullptr);
  EXPECT_EQ(SysStringLen(nullptr), 0U);
  SysFreeString(nullptr);
}

TEST(Automation, length_that_no_header_can_hold_is_refused) {
  EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFFU), nullptr);
  EXPECT_EQ(SysAllocStringLen(nullptr, 0x80000000U), nullptr);
}

TEST(Automation, init_makes_any_memory_empty) {
  VARIANT value;
  std::memset(&value, 0xFF, sizeof value);
  VariantInit(&value);
  EXPECT_EQ(value.vt, VT_EMPTY);
}

TEST(Automation, clear_releases_what_the_value_owns) {
  CountingDispatch object;
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_DISPATCH;
  value.pdispVal = &object;
  object.AddRef();
  EXPECT_EQ(VariantClear(&value), S_OK);
  EXPECT_EQ(object.Held(), 0);
  EXPECT_EQ(value.vt, VT_EMPTY);

  value.vt = VT_UNKNOWN;
  value.punkVal = &object;
  object.AddRef();
  EXPECT_EQ(VariantClear(&value), S_OK);
  EXPECT_EQ(object.Held(), 0);

  value.vt = VT_BSTR;
  value.bstrVal = SysAllocString(kAbc);
  EXPECT_EQ(VariantClear(&value), S_OK);
  EXPECT_EQ(VariantClear(&value), S_OK); // twice is harmless

  for (const VARTYPE kind : {VT_BSTR, VT_DISPATCH, VT_UNKNOWN}) {
    VariantInit(&value);
    value.vt = kind;
    EXPECT_EQ(VariantClear(&value), S_OK); // nulls are harmless
    EXPECT_EQ(value.vt, VT_EMPTY);
  }
}

TEST(Automation, clear_leaves_what_a_reference_points_at) {
  CountingDispatch object;
  IDispatch* pointer = &object;
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_BYREF | VT_DISPATCH;
  value.ppdispVal = &pointer;
  EXPECT_EQ(VariantClear(&value), S_OK);
  EXPECT_EQ(value.vt, VT_EMPTY);
  EXPECT_EQ(object.Released(), 0);
  EXPECT_EQ(pointer, &object);
}

TEST(Automation, copy_duplicates_texts_and_adds_references) {
  CountingDispatch object;
  VARIANT source;
  VARIANT target;
  VariantInit(&source);
  VariantInit(&target);
  source.vt = VT_BSTR;
  const OLECHAR units[] = {u'a', 0, u'b'};
  source.bstrVal = SysAllocStringLen(units, 3);
  EXPECT_EQ(VariantCopy(&target, &source), S_OK);
  EXPECT_NE(target.bstrVal, source.bstrVal);
  EXPECT_EQ(TextOf(target.bstrVal), TextOf(source.bstrVal));
  VariantClear(&source);
  EXPECT_EQ(SysStringLen(target.bstrVal), 3U);

  source.vt = VT_DISPATCH;
  source.pdispVal = &object;
  EXPECT_EQ(VariantCopy(&target, &source), S_OK); // the text in the target is freed
  EXPECT_EQ(object.Held(), 1);
  EXPECT_EQ(target.pdispVal, &object);
  EXPECT_EQ(VariantCopy(&target, &source), S_OK); // over itself by another value
  EXPECT_EQ(object.Held(), 1);
  EXPECT_EQ(VariantCopy(&target, &target), S_OK);
  EXPECT_EQ(object.Held(), 1);

  VARIANT number;
  VariantInit(&number);
  number.vt = VT_R8;
  number.dblVal = 2.5;
  EXPECT_EQ(VariantCopy(&target, &number), S_OK);
  EXPECT_EQ(object.Held(), 0);
  EXPECT_EQ(target.vt, VT_R8);
  EXPECT_EQ(target.dblVal, 2.5);
}

TEST(Automation, copy_of_a_null_text_is_one) {
  VARIANT source;
  VARIANT target;
  VariantInit(&source);
  VariantInit(&target);
  source.vt = VT_BSTR;
  EXPECT_EQ(VariantCopy(&target, &source), S_OK);
  EXPECT_EQ(target.vt, VT_BSTR);
  EXPECT_EQ(SysStringLen(target.bstrVal), 0U);
  VariantClear(&target);
}

TEST(Automation, interfaces_are_asked_for_by_their_identifier) {
  CountingDispatch object;
  void* found = nullptr;
  EXPECT_EQ(object.QueryInterface(IID_IDispatch, &found), S_OK);
  EXPECT_EQ(found, &object);
  object.Release();
  EXPECT_EQ(object.QueryInterface(IID_NULL, &found), E_NOINTERFACE);
  EXPECT_EQ(found, nullptr);
  EXPECT_TRUE(IID_IUnknown != IID_IDispatch);
}

} // namespace
