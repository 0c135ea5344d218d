// Conversions of plain Python arguments to collection, enumerable and stream
// parameters (the steps that need no managed runtime).
#include "interop/collections.h"
#include "interop/streams.h"
#include "runtime_python.h"

using namespace runtimetest;

namespace {

class InteropConversionTest : public PythonTest {
protected:
    static void SetUpTestSuite()
    {
        PythonTest::SetUpTestSuite();
        // orvane.pyio from the source tree.
        std::string here = __FILE__;
        std::string python_dir = here.substr(0, here.rfind('/')) + "/../../python";
        ASSERT_TRUE(exec("sys.path.insert(0, r'''" + python_dir +
                         "''')\n"
                         "import io, collections\n"
                         "def gen():\n"
                         "    yield 1\n"));
    }
};

using Converter = int (*)(PyObject*, VariantArg*);

struct Case {
    const char* expression;
    int kind;  // -1: refused
    const char* message;
};

void check(Converter convert, const char* name, std::initializer_list<Case> cases)
{
    for (const Case& c : cases) {
        PyObject* obj = eval(c.expression);
        ASSERT_NE(obj, nullptr) << c.expression;
        VariantArg out{-7, reinterpret_cast<void*>(1)};
        int ok = convert(obj, &out);
        if (c.kind < 0) {
            EXPECT_EQ(ok, 0) << name << ": " << c.expression;
            PyError error;
            take_error(error);
            EXPECT_EQ(error.type, "TypeError") << name << ": " << c.expression;
            EXPECT_EQ(error.message, c.message) << name << ": " << c.expression;
        } else {
            EXPECT_EQ(ok, 1) << name << ": " << c.expression;
            EXPECT_EQ(out.type, c.kind) << name << ": " << c.expression;
            EXPECT_EQ(out.value, obj == Py_None ? nullptr : obj) << name << ": " << c.expression;
        }
        Py_DECREF(obj);
    }
}

TEST_F(InteropConversionTest, ListLikeParametersTakeListsAndSizedSequences)
{
    check(wrpPye_conv_py_to_clr_ilist, "IList",
          {{"None", 0, ""},
           {"[1, 2]", 1, ""},
           {"MyList([1])", 1, ""},
           {"(1, 2)", 2, ""},
           {"range(3)", 2, ""},
           {"5", -1, "can't build List value from 'int'"},
           {"gen()", -1, "can't build List value from 'generator'"},
           {"{1: 2}", -1, "can't build List value from 'dict'"}});
    check(wrpPye_conv_py_to_clr_array, "Array",
          {{"[1]", 1, ""}, {"(1,)", 2, ""}, {"object()", -1, "can't build Array value from 'object'"}});
    check(wrpPye_conv_py_to_clr_arrlist, "ArrayList",
          {{"[1]", 1, ""}, {"(1,)", 2, ""}, {"1.5", -1, "can't build ArrayList value from 'float'"}});
    check(wrpPye_conv_py_to_clr_colbase, "CollectionBase",
          {{"[1]", 1, ""}, {"3", -1, "can't build CollectionBase value from 'int'"}});
    check(wrpPye_conv_py_to_clr_rocolbase, "ReadOnlyCollectionBase",
          {{"(1,)", 2, ""}, {"3", -1, "can't build ReadOnlyCollectionBase value from 'int'"}});
}

TEST_F(InteropConversionTest, CollectionsIterablesAndIterators)
{
    check(wrpPye_conv_py_to_clr_icol, "ICollection",
          {{"[1]", 1, ""},
           {"{1: 2}", 1, ""},
           {"{1, 2}", 1, ""},
           {"gen()", -1, "can't build List value from 'generator'"},
           {"5", -1, "can't build List value from 'int'"}});
    check(wrpPye_conv_py_to_clr_iter, "IEnumerable",
          {{"gen()", 1, ""},
           {"[1]", 1, ""},
           {"'text'", 1, ""},
           {"None", 0, ""},
           {"5", -1, "can't build IEnumerable value from 'int'"}});
    check(wrpPye_conv_py_to_clr_iterator, "IEnumerator",
          {{"gen()", 1, ""}, {"iter([1])", 1, ""}, {"[1]", -1, "can't build IEnumerator value from 'list'"}});
}

TEST_F(InteropConversionTest, StreamsTakeBinaryFileObjects)
{
    check(wrpPye_conv_py_to_clr_stream, "Stream",
          {{"None", 0, ""},
           {"io.BytesIO()", 1, ""},
           {"io.BufferedReader(io.BytesIO(b'x'))", 1, ""},
           {"type('Raw', (io.RawIOBase,), {})()", 1, ""},
           {"__import__('orvane.pyio', fromlist=['BufferStream']).BufferStream()", 1, ""},
           {"io.StringIO()", -1, "can't build Stream from '_io.StringIO'"},
           {"b'bytes'", -1, "can't build Stream from 'bytes'"}});
}

TEST_F(InteropConversionTest, WrappersOfOtherKindsAreRefusedWithoutTheRuntime)
{
    // An _IterWrapper instance is not an IList and carries no host mark here.
    ASSERT_EQ(PyType_Ready(&wrpPye_tyds_FFFFFFFF_IterWrapper), 0);
    PyObject* it = new_wrapper(&wrpPye_tyds_FFFFFFFF_IterWrapper, reinterpret_cast<void*>(0x42));
    VariantArg out{};
    EXPECT_EQ(wrpPye_conv_py_to_clr_iterator(it, &out), 1);
    EXPECT_EQ(out.type, 0);
    EXPECT_EQ(out.value, reinterpret_cast<void*>(0x42));
    EXPECT_EQ(wrpPye_conv_py_to_clr_ilist(it, &out), 0);
    PyError error;
    take_error(error);
    EXPECT_NE(error.message.find("can't build List value from '"), std::string::npos) << error.message;
    drop_wrapper(it);
}

}  // namespace
