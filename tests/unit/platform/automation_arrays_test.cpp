#include "brindle/automation.h"

#include "support/counting_dispatch.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace {

static_assert(offsetof(SAFEARRAY, pvData) == 16 && sizeof(SAFEARRAYBOUND) == 8);

TEST(AutomationArrays, a_vector_is_zeroed_and_knows_its_bounds_and_kind) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_I4, -2, 3);
  ASSERT_NE(array, nullptr);
  LONG bound = 0;
  VARTYPE kind = VT_EMPTY;
  EXPECT_EQ(SafeArrayGetDim(array), 1U);
  EXPECT_EQ(SafeArrayGetElemsize(array), 4U);
  EXPECT_EQ(SafeArrayGetVartype(array, &kind), S_OK);
  EXPECT_EQ(kind, VT_I4);
  EXPECT_EQ(SafeArrayGetLBound(array, 1, &bound), S_OK);
  EXPECT_EQ(bound, -2);
  EXPECT_EQ(SafeArrayGetUBound(array, 1, &bound), S_OK);
  EXPECT_EQ(bound, 0);
  EXPECT_EQ(SafeArrayGetLBound(array, 2, &bound), DISP_E_BADINDEX);
  EXPECT_EQ(SafeArrayGetLBound(array, 0, &bound), DISP_E_BADINDEX);
  LONG number = 7;
  for (LONG index = -2; index <= 0; ++index) {
    EXPECT_EQ(SafeArrayGetElement(array, &index, &number), S_OK);
    EXPECT_EQ(number, 0);
  }
  for (LONG index : {-3, 1, 1000000}) {
    EXPECT_EQ(SafeArrayGetElement(array, &index, &number), DISP_E_BADINDEX);
    EXPECT_EQ(SafeArrayPutElement(array, &index, &number), DISP_E_BADINDEX);
  }
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(AutomationArrays, every_kind_has_its_width) {
  const struct {
    VARTYPE kind;
    UINT width; // 0: no arrays of it
  } rows[] = {{VT_I1, 1},
              {VT_UI1, 1},
              {VT_I2, 2},
              {VT_UI2, 2},
              {VT_BOOL, 2},
              {VT_I4, 4},
              {VT_UI4, 4},
              {VT_INT, 4},
              {VT_UINT, 4},
              {VT_R4, 4},
              {VT_ERROR, 4},
              {VT_I8, 8},
              {VT_UI8, 8},
              {VT_R8, 8},
              {VT_CY, 8},
              {VT_DATE, 8},
              {VT_BSTR, sizeof(void*)},
              {VT_DISPATCH, sizeof(void*)},
              {VT_UNKNOWN, sizeof(void*)},
              {VT_VARIANT, sizeof(VARIANT)},
              {VT_EMPTY, 0},
              {VT_NULL, 0},
              {VT_VOID, 0},
              {VT_ARRAY | VT_I4, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.kind);
    SAFEARRAY* array = SafeArrayCreateVector(row.kind, 0, 2);
    EXPECT_EQ(array != nullptr, row.width != 0);
    EXPECT_EQ(SafeArrayGetElemsize(array), row.width);
    SafeArrayDestroy(array);
  }
}

TEST(AutomationArrays, sizes_that_no_memory_can_hold_are_refused) {
  EXPECT_EQ(SafeArrayCreateVector(VT_I8, 0, 0xFFFFFFFF), nullptr);
  SAFEARRAYBOUND bounds[] = {{0x10000, 0}, {0x10000, 0}, {0x10000, 0}, {0x10000, 0}};
  EXPECT_EQ(SafeArrayCreate(VT_UI1, 4, bounds), nullptr);
  EXPECT_EQ(SafeArrayCreate(VT_UI1, 0, bounds), nullptr);
  EXPECT_EQ(SafeArrayCreate(VT_UI1, 65, bounds), nullptr);
  EXPECT_EQ(SafeArrayCreate(VT_UI1, 1, nullptr), nullptr);
}

TEST(AutomationArrays, the_first_dimension_runs_fastest) {
  SAFEARRAYBOUND bounds[] = {{2, 0}, {3, 1}};
  SAFEARRAY* array = SafeArrayCreate(VT_UI1, 2, bounds);
  LONG bound = 0;
  EXPECT_EQ(SafeArrayGetUBound(array, 1, &bound), S_OK);
  EXPECT_EQ(bound, 1);
  EXPECT_EQ(SafeArrayGetUBound(array, 2, &bound), S_OK);
  EXPECT_EQ(bound, 3);
  BYTE value = 9;
  LONG indices[] = {1, 2};
  EXPECT_EQ(SafeArrayPutElement(array, indices, &value), S_OK);
  void* data = nullptr;
  ASSERT_EQ(SafeArrayAccessData(array, &data), S_OK);
  EXPECT_EQ(static_cast<BYTE*>(data)[3], 9);
  EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
  SafeArrayDestroy(array);
}

TEST(AutomationArrays, elements_own_their_texts_and_references) {
  CountingDispatch object;
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 2);
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_DISPATCH;
  value.pdispVal = &object;
  LONG index = 0;
  EXPECT_EQ(SafeArrayPutElement(array, &index, &value), S_OK);
  EXPECT_EQ(SafeArrayPutElement(array, &index, &value), S_OK); // over itself
  EXPECT_EQ(object.Held(), 1);
  SAFEARRAY* copy = nullptr;
  EXPECT_EQ(SafeArrayCopy(array, &copy), S_OK);
  EXPECT_EQ(object.Held(), 2);
  SafeArrayDestroy(array);
  EXPECT_EQ(object.Held(), 1);
  VARIANT element;
  VariantInit(&element);
  EXPECT_EQ(SafeArrayGetElement(copy, &index, &element), S_OK);
  EXPECT_EQ(object.Held(), 2);
  VariantClear(&element);
  SafeArrayDestroy(copy);
  EXPECT_EQ(object.Held(), 0);

  array = SafeArrayCreateVector(VT_DISPATCH, 0, 1);
  EXPECT_EQ(SafeArrayPutElement(array, &index, static_cast<IDispatch*>(&object)), S_OK);
  EXPECT_EQ(object.Held(), 1);
  EXPECT_EQ(SafeArrayPutElement(array, &index, nullptr), S_OK);
  EXPECT_EQ(object.Held(), 0);
  SafeArrayDestroy(array);

  array = SafeArrayCreateVector(VT_BSTR, 0, 2);
  const OLECHAR units[] = {u'a', 0, u'b'};
  BSTR text = SysAllocStringLen(units, 3);
  EXPECT_EQ(SafeArrayPutElement(array, &index, text), S_OK);
  SysFreeString(text);
  EXPECT_EQ(SafeArrayGetElement(array, &index, &text), S_OK);
  EXPECT_EQ(SysStringLen(text), 3U);
  SysFreeString(text);
  SafeArrayDestroy(array);
}

TEST(AutomationArrays, an_array_in_use_is_not_freed) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, 1);
  void* data = nullptr;
  SafeArrayAccessData(array, &data);
  EXPECT_EQ(SafeArrayDestroy(array), DISP_E_ARRAYISLOCKED);
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_ARRAY | VT_I4;
  value.parray = array;
  EXPECT_EQ(VariantClear(&value), DISP_E_ARRAYISLOCKED);
  EXPECT_EQ(value.parray, array);
  EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
  EXPECT_EQ(SafeArrayUnaccessData(array), E_UNEXPECTED);
  EXPECT_EQ(VariantClear(&value), S_OK);
  EXPECT_EQ(value.vt, VT_EMPTY);
}

TEST(AutomationArrays, values_that_are_arrays_copy_and_clear) {
  VARIANT source;
  VARIANT target;
  VariantInit(&source);
  VariantInit(&target);
  source.vt = VT_ARRAY | VT_I4;
  source.parray = SafeArrayCreateVector(VT_I4, 0, 1);
  LONG index = 0;
  LONG number = 5;
  SafeArrayPutElement(source.parray, &index, &number);
  EXPECT_EQ(VariantCopy(&target, &source), S_OK);
  EXPECT_NE(target.parray, source.parray);
  VariantClear(&source);
  number = 0;
  EXPECT_EQ(SafeArrayGetElement(target.parray, &index, &number), S_OK);
  EXPECT_EQ(number, 5);
  VARIANT other;
  VariantInit(&other);
  EXPECT_EQ(VariantCopy(&target, &other), S_OK); // the array goes
  source.vt = VT_ARRAY | VT_I4;                  // no array at all
  source.parray = nullptr;
  EXPECT_EQ(VariantCopy(&target, &source), S_OK);
  EXPECT_EQ(target.parray, nullptr);
  EXPECT_EQ(VariantClear(&target), S_OK);
  EXPECT_EQ(SafeArrayDestroy(nullptr), S_OK);
}

TEST(AutomationArrays, wrong_arguments_are_refused) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, 1);
  SAFEARRAY* copy = array;
  LONG index = 0;
  LONG number = 5;
  void* data = nullptr;
  VARTYPE kind = VT_EMPTY;
  EXPECT_EQ(SafeArrayCopy(array, nullptr), E_INVALIDARG);
  EXPECT_EQ(SafeArrayCopy(nullptr, &copy), S_OK);
  EXPECT_EQ(copy, nullptr);
  EXPECT_EQ(SafeArrayGetDim(nullptr), 0U);
  EXPECT_EQ(SafeArrayGetElemsize(nullptr), 0U);
  EXPECT_EQ(SafeArrayGetVartype(nullptr, &kind), E_INVALIDARG);
  EXPECT_EQ(SafeArrayGetVartype(array, nullptr), E_INVALIDARG);
  EXPECT_EQ(SafeArrayGetLBound(nullptr, 1, &number), E_INVALIDARG);
  EXPECT_EQ(SafeArrayGetLBound(array, 1, nullptr), E_INVALIDARG);
  EXPECT_EQ(SafeArrayGetUBound(nullptr, 1, &number), E_INVALIDARG);
  EXPECT_EQ(SafeArrayGetUBound(array, 1, nullptr), E_INVALIDARG);
  EXPECT_EQ(SafeArrayGetUBound(array, 2, &number), DISP_E_BADINDEX);
  EXPECT_EQ(SafeArrayAccessData(nullptr, &data), E_INVALIDARG);
  EXPECT_EQ(SafeArrayAccessData(array, nullptr), E_INVALIDARG);
  EXPECT_EQ(SafeArrayUnaccessData(nullptr), E_INVALIDARG);
  EXPECT_EQ(SafeArrayGetElement(nullptr, &index, &number), E_INVALIDARG);
  EXPECT_EQ(SafeArrayGetElement(array, nullptr, &number), E_INVALIDARG);
  EXPECT_EQ(SafeArrayGetElement(array, &index, nullptr), E_INVALIDARG);
  EXPECT_EQ(SafeArrayPutElement(nullptr, &index, &number), E_INVALIDARG);
  EXPECT_EQ(SafeArrayPutElement(array, nullptr, &number), E_INVALIDARG);
  EXPECT_EQ(SafeArrayPutElement(array, &index, nullptr), E_INVALIDARG);
  EXPECT_EQ(number, 5);
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(AutomationArrays, a_value_whose_array_is_in_use_takes_no_other) {
  VARIANT target;
  VariantInit(&target);
  target.vt = VT_ARRAY | VT_I4;
  target.parray = SafeArrayCreateVector(VT_I4, 0, 1);
  SAFEARRAY* const used = target.parray;
  void* data = nullptr;
  SafeArrayAccessData(used, &data);
  VARIANT source;
  VariantInit(&source);
  source.vt = VT_BSTR;
  source.bstrVal = SysAllocString(reinterpret_cast<const OLECHAR*>(u"text"));
  EXPECT_EQ(VariantCopy(&target, &source), DISP_E_ARRAYISLOCKED);
  EXPECT_EQ(target.vt, VT_ARRAY | VT_I4);
  EXPECT_EQ(target.parray, used);
  SafeArrayUnaccessData(used);
  EXPECT_EQ(VariantCopy(&target, &source), S_OK);
  EXPECT_EQ(target.vt, VT_BSTR);
  VariantClear(&source);
  VariantClear(&target);
}

} // namespace
