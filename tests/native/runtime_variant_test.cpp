// Classification of untyped arguments into variant tags.
#include "marshal/variant.h"
#include "runtime_python.h"

using namespace runtimetest;

namespace {

PyTypeObject variant_wrapper_type = make_wrapper_type("test.VariantWrapper");

class VariantTest : public PythonTest {
protected:
    static void SetUpTestSuite()
    {
        PythonTest::SetUpTestSuite();
        ASSERT_EQ(PyType_Ready(&variant_wrapper_type), 0);
    }
};

TEST_F(VariantTest, TagsFollowTheClassificationOrder)
{
    struct Case {
        const char* expression;
        int32_t tag;
    };
    const Case cases[] = {
        {"None", 0},
        {"True", 4},  // bool before int
        {"5", 5},
        {"MyInt(5)", 5},
        {"1.5", 6},
        {"MyFloat(1.5)", 6},
        {"Decimal('1.5')", 7},
        {"Decimal('1.5').as_tuple()", 8},      // a DecimalTuple, although a tuple
        {"datetime.datetime(2024, 1, 2)", 9},  // never 10
        {"datetime.date(2024, 1, 2)", 10},
        {"MyDate(2024, 1, 2)", 10},
        {"datetime.time(12, 30)", 11},
        {"datetime.timedelta(days=1)", 12},
        {"uuid.UUID(int=7)", 13},
        {"'text'", 2},
        {"MyStr('text')", 2},
        {"b'raw'", 3},
        {"bytearray(b'raw')", 3},
        {"memoryview(b'raw')", 3},
        {"[1, 2]", 14},
        {"(1, 2)", 15},
    };
    for (const Case& c : cases) {
        PyObject* obj = eval(c.expression);
        ASSERT_NE(obj, nullptr) << c.expression;
        VariantArg arg{-1, nullptr};
        EXPECT_EQ(fn_conv_py_variant_to_clr_variant(obj, &arg), 1) << c.expression;
        EXPECT_EQ(arg.type, c.tag) << c.expression;
        EXPECT_EQ(arg.value, obj) << "the object itself travels: " << c.expression;
        Py_DECREF(obj);
    }
}

TEST_F(VariantTest, UnknownValuesAreRefused)
{
    for (const char* expression : {"MyList([1])", "MyTuple((1,))", "object()", "{1: 2}", "{1}"}) {
        PyObject* obj = eval(expression);
        VariantArg arg{-1, nullptr};
        EXPECT_EQ(fn_conv_py_variant_to_clr_variant(obj, &arg), 0) << expression;
        Py_DECREF(obj);
        PyError error;
        take_error(error);
        EXPECT_EQ(error.type, "TypeError") << expression;
        EXPECT_EQ(error.message, "unknown variant type") << expression;
    }
}

TEST_F(VariantTest, WrappersPassTheirHandle)
{
    void* handle = reinterpret_cast<void*>(0x5150);
    PyObject* bound = new_wrapper(&variant_wrapper_type, handle);
    VariantArg arg{-1, nullptr};
    ASSERT_EQ(fn_conv_py_variant_to_clr_variant(bound, &arg), 1);
    EXPECT_EQ(arg.type, 1);
    EXPECT_EQ(arg.value, handle);
    drop_wrapper(bound);

    // A wrapper not bound to a managed instance is not a value.
    PyObject* unbound = new_wrapper(&variant_wrapper_type, nullptr);
    EXPECT_EQ(fn_conv_py_variant_to_clr_variant(unbound, &arg), 0);
    drop_wrapper(unbound);
    PyError error;
    take_error(error);
    EXPECT_EQ(error.message, "unknown variant type");
}

}  // namespace
