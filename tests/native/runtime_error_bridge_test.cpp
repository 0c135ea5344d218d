// The error bridge: managed exceptions to RuntimeError, Python errors to text
// for managed code, and chained raising.
#include "marshal/error_bridge.h"
#include "runtime_python.h"

using namespace runtimetest;

namespace {

class ErrorBridgeTest : public PythonTest {
protected:
    // Runs the catch-and-clear callback; the text it produced, or "<none>".
    std::string catch_and_clear()
    {
        PyObject* holder = nullptr;
        PyStringArg text{-1, 0, nullptr};
        int status = fn_catch_and_clear_py_error(&holder, &text);
        EXPECT_FALSE(PyErr_Occurred()) << "the callback never leaves an error pending";
        if (status != 0)
            return "<none>";
        EXPECT_NE(holder, nullptr);
        EXPECT_EQ(text.data, PyUnicode_DATA(holder)) << "the text lives in the holder";
        std::string result = to_utf8(holder);
        EXPECT_EQ((size_t)text.length, (size_t)PyUnicode_GET_LENGTH(holder));
        Py_DECREF(holder);
        return result;
    }
};

TEST_F(ErrorBridgeTest, ManagedExceptionBecomesRuntimeError)
{
    PyObject* type = PyUnicode_FromString("System.ArgumentException");
    PyObject* message = PyUnicode_FromString("bad");
    Py_INCREF(type);
    Py_ssize_t before = Py_REFCNT(type);
    on_clr_exception(type, message);
    EXPECT_EQ(Py_REFCNT(type), before - 1) << "the callback takes over the strings";
    Py_DECREF(type);

    PyError error;
    take_error(error);
    EXPECT_EQ(error.type, "RuntimeError");
    EXPECT_EQ(error.message, "Proxy error(System.ArgumentException): bad");

    on_clr_exception(PyUnicode_FromString("System.ArgumentException"), nullptr);
    take_error(error);
    EXPECT_EQ(error.message, "Proxy error(System.ArgumentException): <unknown>");
    on_clr_exception(nullptr, nullptr);
    take_error(error);
    EXPECT_EQ(error.message, "Proxy error(<unknown>): <unknown>");
}

TEST_F(ErrorBridgeTest, PendingErrorBecomesTracebackText)
{
    EXPECT_EQ(catch_and_clear(), "<none>");

    PyObject* result =
        PyRun_String("def _fail():\n    raise ValueError('x')\n_fail()\n", Py_file_input, globals(), globals());
    ASSERT_EQ(result, nullptr);
    std::string text = catch_and_clear();
    EXPECT_EQ(text.rfind("Traceback (most recent call last):\n", 0), 0u) << text;
    EXPECT_NE(text.find("in _fail"), std::string::npos) << text;
    ASSERT_GE(text.size(), 14u);
    EXPECT_EQ(text.substr(text.size() - 14), "ValueError: x\n") << text;

    // Without a traceback only the exception line is formatted.
    PyErr_SetString(PyExc_ValueError, "x");
    EXPECT_EQ(catch_and_clear(), "ValueError: x\n");
}

TEST_F(ErrorBridgeTest, FallbackWhenTracebackModuleIsUnusable)
{
    UnraisableCapture capture;
    ASSERT_TRUE(exec("_saved_tb = sys.modules.get('traceback')\nsys.modules['traceback'] = None\n"));
    PyErr_SetString(PyExc_ValueError, "x");
    std::string without_tb = catch_and_clear();
    PyObject* failed = PyRun_String("raise KeyError('k')\n", Py_file_input, globals(), globals());
    EXPECT_EQ(failed, nullptr);
    std::string with_tb = catch_and_clear();
    ASSERT_TRUE(exec("sys.modules['traceback'] = _saved_tb\n"));

    EXPECT_EQ(without_tb, "ValueError: x");
    EXPECT_EQ(with_tb, "KeyError: 'k'");
    // Why formatting failed is not lost: it is reported as unraisable.
    ASSERT_EQ(capture.count(), 2);
    EXPECT_EQ(capture.entry(0).rfind("FormatCallbackException|", 0), 0u) << capture.entry(0);
}

TEST_F(ErrorBridgeTest, ChainFormatSetsCauseAndContext)
{
    PyErr_SetString(PyExc_KeyError, "first");
    EXPECT_EQ(PyShlErr_ChainFormat(PyExc_ImportError, "second %d '%s'", 5, "x"), nullptr);
    PyError error;
    take_error(error);
    EXPECT_EQ(error.type, "ImportError");
    EXPECT_EQ(error.message, "second 5 'x'");
    EXPECT_EQ(error.cause(), "KeyError: 'first'");
    EXPECT_EQ(error.context(), "KeyError: 'first'");

    // With nothing pending it raises the new error alone.
    PyShlErr_ChainFormat(PyExc_TypeError, "alone");
    take_error(error);
    EXPECT_EQ(error.type, "TypeError");
    EXPECT_EQ(error.cause(), "");
}

}  // namespace
