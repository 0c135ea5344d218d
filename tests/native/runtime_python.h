// An embedded CPython 3.9 for the runtime's unit tests: started once per
// process, never finalised (the runtime's singletons outlive any test).
#pragma once

#include <Python.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "module/identifiers.h"
#include "objects/clr_object.h"

namespace runtimetest {

inline void ensure_python()
{
    static const bool started = [] {
        if (!Py_IsInitialized()) {
            // The interpreter looks for its standard library beside the
            // executable; point it at the installation libpython came from.
            Dl_info info{};
            if (!std::getenv("PYTHONHOME") && dladdr(reinterpret_cast<void*>(&Py_Initialize), &info) &&
                info.dli_fname) {
                std::string lib = info.dli_fname;
                std::string::size_type pos = lib.rfind("/lib/");
                if (pos != std::string::npos) {
                    static wchar_t* home = Py_DecodeLocale(lib.substr(0, pos).c_str(), nullptr);
                    Py_SetPythonHome(home);
                }
            }
            Py_InitializeEx(0);
        }
        fn_intern_identifiers();
        return true;
    }();
    (void)started;
}

// Globals shared by every evaluated snippet, with the standard modules the
// runtime deals with already imported.
inline PyObject* globals()
{
    static PyObject* dict = [] {
        PyObject* d = PyDict_New();
        PyDict_SetItemString(d, "__builtins__", PyEval_GetBuiltins());
        PyObject* done = PyRun_String("import sys, decimal, uuid, datetime, types\n"
                                      "from decimal import Decimal\n"
                                      "class MyInt(int): pass\n"
                                      "class MyFloat(float): pass\n"
                                      "class MyStr(str): pass\n"
                                      "class MyList(list): pass\n"
                                      "class MyTuple(tuple): pass\n"
                                      "class MyDate(datetime.date): pass\n",
                                      Py_file_input, d, d);
        if (!done)
            PyErr_Print();
        Py_XDECREF(done);
        return d;
    }();
    return dict;
}

// New reference to the value of a Python expression (null with the error printed).
inline PyObject* eval(const std::string& expression)
{
    PyObject* result = PyRun_String(expression.c_str(), Py_eval_input, globals(), globals());
    if (!result)
        PyErr_Print();
    return result;
}

// Runs statements in the shared globals; false (error printed) when they raised.
inline bool exec(const std::string& statements)
{
    PyObject* result = PyRun_String(statements.c_str(), Py_file_input, globals(), globals());
    if (!result) {
        PyErr_Print();
        return false;
    }
    Py_DECREF(result);
    return true;
}

inline std::string to_utf8(PyObject* text)
{
    if (!text)
        return "<null>";
    PyObject* str = PyObject_Str(text);
    if (!str) {
        PyErr_Clear();
        return "<str failed>";
    }
    std::string result = PyUnicode_AsUTF8(str);
    Py_DECREF(str);
    return result;
}

// The pending error, taken and cleared.
struct PyError {
    std::string type;     // exception class name
    std::string message;  // str(value)
    PyObject* value = nullptr;

    PyError() = default;
    PyError(const PyError&) = delete;
    PyError& operator=(const PyError&) = delete;
    ~PyError() { Py_XDECREF(value); }

    // The exception's __cause__ as "Type: message", or "" when it has none.
    std::string cause() const
    {
        PyObject* cause = value ? PyException_GetCause(value) : nullptr;
        if (!cause)
            return "";
        std::string text = std::string(Py_TYPE(cause)->tp_name) + ": " + to_utf8(cause);
        Py_DECREF(cause);
        return text;
    }
    std::string context() const
    {
        PyObject* context = value ? PyException_GetContext(value) : nullptr;
        if (!context)
            return "";
        std::string text = std::string(Py_TYPE(context)->tp_name) + ": " + to_utf8(context);
        Py_DECREF(context);
        return text;
    }
};

inline void take_error(PyError& error)
{
    Py_CLEAR(error.value);
    error.message.clear();
    PyObject *type, *value, *tb;
    PyErr_Fetch(&type, &value, &tb);
    if (!type) {
        error.type = "<none>";
        return;
    }
    PyErr_NormalizeException(&type, &value, &tb);
    error.type = reinterpret_cast<PyTypeObject*>(type)->tp_name;
    error.message = to_utf8(value);
    error.value = value;
    Py_DECREF(type);
    Py_XDECREF(tb);
}

// Every test starts and ends with no Python error pending.
class PythonTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { ensure_python(); }
    void SetUp() override { ASSERT_FALSE(PyErr_Occurred()); }
    void TearDown() override
    {
        if (PyErr_Occurred()) {
            PyErr_Print();
            ADD_FAILURE() << "a Python error was left pending";
        }
    }
};

// Collects what PyErr_WriteUnraisable reports while alive.
class UnraisableCapture {
public:
    UnraisableCapture()
    {
        exec("_unraisable = []\n"
             "_saved_hook = sys.unraisablehook\n"
             "sys.unraisablehook = lambda u: _unraisable.append((u.object, u.exc_type.__name__, str(u.exc_value),"
             " repr(u.exc_value.__cause__)))\n");
    }
    ~UnraisableCapture() { exec("sys.unraisablehook = _saved_hook\n"); }
    UnraisableCapture(const UnraisableCapture&) = delete;
    UnraisableCapture& operator=(const UnraisableCapture&) = delete;

    Py_ssize_t count() const
    {
        PyObject* list = PyDict_GetItemString(globals(), "_unraisable");
        return list ? PyList_Size(list) : -1;
    }
    // "object|type|message|repr(cause)" of report i.
    std::string entry(Py_ssize_t i) const
    {
        PyObject* item = PyList_GetItem(PyDict_GetItemString(globals(), "_unraisable"), i);
        if (!item) {
            PyErr_Clear();
            return "<missing>";
        }
        std::string text;
        for (Py_ssize_t k = 0; k < 4; ++k)
            text += (k ? "|" : "") + to_utf8(PyTuple_GetItem(item, k));
        return text;
    }
};

// A minimal wrapper type of this module (it deallocates like every generated
// type) for tests that need PyClrObject instances. Fake handles must be
// cleared before the last reference goes, since no CLR runs here.
inline PyTypeObject make_wrapper_type(const char* name, PyTypeObject* base = nullptr)
{
    PyTypeObject type{};
    Py_SET_REFCNT(reinterpret_cast<PyObject*>(&type), 1);
    type.tp_name = name;
    type.tp_basicsize = sizeof(PyClrObject);
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE;
    type.tp_dealloc = wrapClrObject_tp_dealloc;
    type.tp_alloc = PyType_GenericAlloc;
    type.tp_new = PyType_GenericNew;
    type.tp_base = base;
    return type;
}

// A new wrapper of `type` holding `handle` (not owned: see above).
inline PyObject* new_wrapper(PyTypeObject* type, void* handle)
{
    PyObject* obj = PyType_GenericNew(type, nullptr, nullptr);
    if (obj)
        reinterpret_cast<PyClrObject*>(obj)->clr_handle = handle;
    return obj;
}

inline void drop_wrapper(PyObject* obj)
{
    if (!obj)
        return;
    reinterpret_cast<PyClrObject*>(obj)->clr_handle = nullptr;
    Py_DECREF(obj);
}

}  // namespace runtimetest
