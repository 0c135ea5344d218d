// GUIDs, nullable and by-reference arguments, and the object-inspection helpers.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "marshal/byref.h"
#include "marshal/guid.h"
#include "marshal/nullable.h"
#include "marshal/object_inspection.h"
#include "runtime_python.h"

using runtimetest::eval;
using runtimetest::exec;
using runtimetest::PyError;
using runtimetest::take_error;
using runtimetest::to_utf8;

namespace {

int g_convert_calls = 0;

// A stand-in inner converter: ints (not bool) into an int64, counting its calls.
int convert_int(PyObject* obj, int64_t* out)
{
    ++g_convert_calls;
    if (!PyLong_Check(obj) || PyBool_Check(obj)) {
        PyErr_Format(PyExc_TypeError, "not an int: '%s'", Py_TYPE(obj)->tp_name);
        return 0;
    }
    *out = PyLong_AsLongLong(obj);
    return PyErr_Occurred() ? 0 : 1;
}

// Returns neither 1 nor 0 and sets no error.
int convert_odd(PyObject*, void*, void*)
{
    return 2;
}

class GuidByRefMarshal : public runtimetest::PythonTest {
protected:
    static void SetUpTestSuite()
    {
        runtimetest::PythonTest::SetUpTestSuite();
        exec("class Outer:\n"
             "    class Inner: pass\n"
             "class RaisingName:\n"
             "    def __getattr__(self, name): raise RuntimeError('no name')\n"
             "class OnlyGetItem:\n"
             "    def __getitem__(self, i): raise IndexError\n");
    }

    void SetUp() override
    {
        runtimetest::PythonTest::SetUp();
        g_convert_calls = 0;
    }

    static void expect_error(const char* type, const std::string& message)
    {
        PyError error;
        take_error(error);
        EXPECT_EQ(error.type, type);
        EXPECT_EQ(error.message, message);
    }

    // by-reference conversion of `expression` into an int64 starting at -99.
    int byref_in(const std::string& expression, int64_t* value, PyObject** list = nullptr)
    {
        *value = -99;
        PyParamByRef arg = {nullptr, &fn_parbyref_convert<int64_t, convert_int>, value};
        PyObject* obj = eval(expression);
        if (!obj)
            return -1;
        int result = fn_conv_py_parbyref_to_clr_parbyref(obj, &arg);
        if (result) {
            EXPECT_EQ(arg.list, obj);
        }
        if (list)
            *list = obj;
        else
            Py_DECREF(obj);
        return result;
    }
};

TEST_F(GuidByRefMarshal, GuidBytesAreInManagedMemoryOrder)
{
    PyObject* uuid = eval("uuid.UUID('00112233-4455-6677-8899-aabbccddeeff')");
    ASSERT_NE(uuid, nullptr);
    ClrGuid guid{};
    ASSERT_EQ(fn_conv_py_uuid_to_clr_guid(uuid, &guid), 1);
    const uint8_t expected[16] = {0x33, 0x22, 0x11, 0x00, 0x55, 0x44, 0x77, 0x66,
                                  0x88, 0x99, 0xaa, 0xbb, 0xcc, 0xdd, 0xee, 0xff};
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(guid.bytes[i], expected[i]) << i;

    PyObject* back = fn_write_py_guid(&guid);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(PyObject_RichCompareBool(back, uuid, Py_EQ), 1) << to_utf8(back);
    Py_DECREF(back);
    Py_DECREF(uuid);

    PyObject* text = eval("'00112233-4455-6677-8899-aabbccddeeff'");
    EXPECT_EQ(fn_conv_py_uuid_to_clr_guid(text, &guid), 0);
    expect_error("TypeError", "can't build Guid from 'str'");
    Py_DECREF(text);
}

TEST_F(GuidByRefMarshal, ByRefInputRules)
{
    int64_t value = 0;
    EXPECT_EQ(byref_in("[]", &value), 1);
    EXPECT_EQ(value, -99);
    EXPECT_EQ(byref_in("[None]", &value), 1);
    EXPECT_EQ(value, -99);
    EXPECT_EQ(g_convert_calls, 0);
    EXPECT_EQ(byref_in("[7]", &value), 1);
    EXPECT_EQ(value, 7);
    EXPECT_EQ(byref_in("[8, 'ignored', None]", &value), 1);
    EXPECT_EQ(value, 8);

    EXPECT_EQ(byref_in("['x']", &value), 0);
    expect_error("TypeError", "not an int: 'str'");
    EXPECT_EQ(byref_in("(7,)", &value), 0);
    expect_error("TypeError", "argument should be empty list or list contains default value, not 'tuple'");
    EXPECT_EQ(byref_in("MyList([7])", &value), 0);
    expect_error("TypeError", "argument should be empty list or list contains default value, not 'MyList'");
    EXPECT_EQ(byref_in("None", &value), 0);
    expect_error("TypeError", "argument should be empty list or list contains default value, not 'NoneType'");
}

TEST_F(GuidByRefMarshal, ByRefOutValueFillsOrReplacesItemZero)
{
    int64_t value = 0;
    PyObject* empty = nullptr;
    PyObject* given = nullptr;
    ASSERT_EQ(byref_in("[]", &value, &empty), 1);
    ASSERT_EQ(byref_in("[7, 8]", &value, &given), 1);

    PyObject* out = PyLong_FromLong(100000);  // not a cached small int
    Py_ssize_t before = Py_REFCNT(out);
    Py_INCREF(out);  // the reference handed over
    EXPECT_EQ(fn_push_parbyref_outvalue(empty, out), 0);
    EXPECT_EQ(to_utf8(empty), "[100000]");
    EXPECT_EQ(Py_REFCNT(out), before + 1);  // held by the list only

    Py_INCREF(out);
    EXPECT_EQ(fn_push_parbyref_outvalue(given, out), 0);
    EXPECT_EQ(to_utf8(given), "[100000, 8]");
    EXPECT_EQ(Py_REFCNT(out), before + 2);

    Py_DECREF(empty);
    Py_DECREF(given);
    EXPECT_EQ(Py_REFCNT(out), before);
    Py_DECREF(out);
}

TEST_F(GuidByRefMarshal, NullableArguments)
{
    int64_t value = -1;
    PyNullableArg arg = {0, &fn_nullable_convert<int64_t, convert_int>, &value};
    EXPECT_EQ(fn_conv_py_nullable_to_clr_nullable(Py_None, &arg, nullptr), 1);
    EXPECT_EQ(arg.has_value, 0);
    EXPECT_EQ(value, -1);
    EXPECT_EQ(g_convert_calls, 0);

    PyObject* five = PyLong_FromLong(5);
    EXPECT_EQ(fn_conv_py_nullable_to_clr_nullable(five, &arg, nullptr), 1);
    EXPECT_EQ(arg.has_value, 1);
    EXPECT_EQ(value, 5);
    Py_DECREF(five);

    PyNullableArg odd = {0, &convert_odd, &value};
    EXPECT_EQ(fn_conv_py_nullable_to_clr_nullable(Py_True, &odd, nullptr), 0);
    EXPECT_EQ(odd.has_value, 0);
    EXPECT_TRUE(PyErr_ExceptionMatches(PyExc_TypeError));
    PyErr_Clear();
}

TEST_F(GuidByRefMarshal, ObjectInspection)
{
    struct Case {
        const char* expression;
        bool has_length;
        bool has_iter;
    } cases[] = {
        {"[1]", true, true},
        {"{}", true, true},
        {"'ab'", true, true},
        {"(x for x in ())", false, true},
        {"OnlyGetItem()", false, true},
        {"5", false, false},
    };
    for (const Case& c : cases) {
        PyObject* obj = eval(c.expression);
        ASSERT_NE(obj, nullptr);
        EXPECT_EQ(PyShlObject_HasLength(obj), c.has_length) << c.expression;
        EXPECT_EQ(PyShlObject_HasIter(obj), c.has_iter) << c.expression;
        Py_DECREF(obj);
    }
}

TEST_F(GuidByRefMarshal, QualifiedNames)
{
    PyObject* name = nullptr;
    PyObject* inner = eval("Outer.Inner");
    ASSERT_TRUE(fn_get_obj_qualname(inner, &name));
    EXPECT_EQ(to_utf8(name), "Outer.Inner");
    Py_XDECREF(name);
    Py_DECREF(inner);

    for (const char* text : {"5", "RaisingName()", "types.SimpleNamespace(__qualname__=5)"}) {
        PyObject* obj = eval(text);
        ASSERT_NE(obj, nullptr);
        EXPECT_FALSE(fn_get_obj_qualname(obj, &name)) << text;
        EXPECT_EQ(name, nullptr);
        EXPECT_FALSE(PyErr_Occurred()) << text;
        Py_DECREF(obj);
    }
}

}  // namespace
