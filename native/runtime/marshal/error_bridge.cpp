// Errors across the boundary: managed exceptions become pending Python errors,
// Python errors raised inside callbacks become text for managed code, and
// import-time errors are chained onto their causes.
#include "marshal/error_bridge.h"

#include "marshal/strings.h"
#include "module/identifiers.h"

PyObject* PyShlErr_ChainFormatV(PyObject* exception_type, const char* format, va_list args)
{
    PyObject *cause_type, *cause, *cause_tb;
    PyErr_Fetch(&cause_type, &cause, &cause_tb);
    if (!cause_type) {
        PyErr_FormatV(exception_type, format, args);
        return nullptr;
    }
    PyErr_NormalizeException(&cause_type, &cause, &cause_tb);
    if (cause && cause_tb)
        PyException_SetTraceback(cause, cause_tb);

    PyErr_FormatV(exception_type, format, args);

    PyObject *type, *value, *tb;
    PyErr_Fetch(&type, &value, &tb);
    PyErr_NormalizeException(&type, &value, &tb);
    if (value && cause) {
        // Both setters steal a reference.
        Py_INCREF(cause);
        PyException_SetCause(value, cause);
        Py_INCREF(cause);
        PyException_SetContext(value, cause);
    }
    PyErr_Restore(type, value, tb);

    Py_DECREF(cause_type);
    Py_XDECREF(cause);
    Py_XDECREF(cause_tb);
    return nullptr;
}

PyObject* PyShlErr_ChainFormat(PyObject* exception_type, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    PyShlErr_ChainFormatV(exception_type, format, args);
    va_end(args);
    return nullptr;
}

void on_clr_exception(PyObject* type_text, PyObject* message_text)
{
    PyObject* type = type_text ? type_text : PyWrpIdTraceBack_Unknown;
    PyObject* message = message_text ? message_text : PyWrpIdTraceBack_Unknown;
    // An error a Python callback left pending stays visible as the cause.
    if (PyErr_Occurred())
        PyShlErr_ChainFormat(PyExc_RuntimeError, "Proxy error(%U): %U", type, message);
    else
        PyErr_Format(PyExc_RuntimeError, "Proxy error(%U): %U", type, message);
    Py_XDECREF(type_text);
    Py_XDECREF(message_text);
}

namespace {

// The interpreter's own rendering: traceback.format_exception(_only) joined.
// New reference, or null (with or without an error set) when it cannot be had.
PyObject* format_with_traceback_module(PyObject* type, PyObject* value, PyObject* tb)
{
    PyObject* module = PyImport_ImportModule("traceback");
    if (!module) {
        if (!PyErr_Occurred())
            PyErr_Format(PyExc_ImportError, "cannot import '%s' module", "traceback");
        return nullptr;
    }
    PyObject* formatter =
        PyObject_GetAttr(module, tb ? PyWrpIdTraceBack_FormatException : PyWrpIdTraceBack_FormatExceptionOnly);
    Py_DECREF(module);
    if (!formatter)
        return nullptr;

    PyObject* text = nullptr;
    PyObject* lines = nullptr;
    if (PyCallable_Check(formatter)) {
        lines = tb ? PyObject_CallFunctionObjArgs(formatter, type, value, tb, nullptr)
                   : PyObject_CallFunctionObjArgs(formatter, type, value, nullptr);
        if (lines)
            text = PyUnicode_Join(PyWrpIdStr_Empty, lines);
    }
    Py_XDECREF(lines);
    Py_DECREF(formatter);
    return text;
}

// "<name>: <message>" built by hand when the traceback module failed. New
// reference, or null with an error set when str() of the type or value failed.
PyObject* format_fallback(PyObject* type, PyObject* value, PyObject* tb)
{
    PyObject* name = PyObject_GetAttr(type, PyWrpIdType_Qualname);
    if (!name) {
        PyErr_Clear();
    } else if (!PyUnicode_Check(name)) {
        Py_CLEAR(name);
    }
    if (!name) {
        name = PyObject_Str(type);
        if (!name)
            return nullptr;
    }

    PyObject* message = nullptr;
    if (value) {
        message = PyObject_Str(value);
        if (!message) {
            Py_DECREF(name);
            return nullptr;
        }
    }

    PyObject* trailer = nullptr;
    bool trailer_failed = false;
    if (tb) {
        trailer = PyObject_Str(tb);
        if (!trailer) {
            PyErr_Clear();
            trailer_failed = true;
        }
    }
    bool nonempty = !tb || (trailer && PyUnicode_GET_LENGTH(trailer) > 0);

    // Missing parts print as "" (message) and "<unknown>" (trailer).
    PyObject* shown_message = message ? message : PyWrpIdStr_Empty;
    PyObject* shown_trailer = trailer ? trailer : PyWrpIdTraceBack_Unknown;
    PyObject* text;
    if (trailer_failed)
        text = PyUnicode_FromFormat("%U: %U\n%U", name, shown_message, shown_trailer);
    else if (!message && nonempty)
        text = PyUnicode_FromFormat("%U:", name);
    else if (nonempty)
        text = PyUnicode_FromFormat("%U: %U", name, shown_message);
    else
        text = PyUnicode_FromFormat("%U: %U\n%U", name, shown_message, shown_trailer);

    Py_DECREF(name);
    Py_XDECREF(message);
    Py_XDECREF(trailer);
    return text;
}

}  // namespace

int fn_catch_and_clear_py_error(PyObject** holder, PyStringArg* text)
{
    if (!PyErr_Occurred())
        return -1;

    PyObject *type, *value, *tb;
    PyErr_Fetch(&type, &value, &tb);
    PyErr_NormalizeException(&type, &value, &tb);

    PyObject* result = nullptr;
    PyObject *kept_type = nullptr, *kept_value = nullptr, *kept_tb = nullptr;
    if (value) {
        result = format_with_traceback_module(type, value, tb);
        if (!result)
            PyErr_Fetch(&kept_type, &kept_value, &kept_tb);
    }
    if (!result && type)
        result = format_fallback(type, value, tb);

    int status = -1;
    if (result) {
        if (fn_conv_py_string_to_clr_string_value(result, text)) {
            *holder = result;
            status = 0;
        } else {
            Py_DECREF(result);
        }
    }

    if (kept_type) {
        if (!PyErr_Occurred()) {
            PyErr_Restore(kept_type, kept_value, kept_tb);
        } else {
            Py_DECREF(kept_type);
            Py_XDECREF(kept_value);
            Py_XDECREF(kept_tb);
        }
    }
    // The caller never sees a pending error: whatever went wrong here is printed.
    if (PyErr_Occurred())
        PyErr_WriteUnraisable(PyWrpIdTraceBack_FormatExceptionWarning);

    Py_XDECREF(type);
    Py_XDECREF(value);
    Py_XDECREF(tb);
    return status;
}
