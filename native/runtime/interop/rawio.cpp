// Python binary file objects seen from managed code: the raw-I/O callbacks,
// the _ShlBufferView that hands managed memory to write()/readinto()
// without copying, and the conversion of Python arguments to Stream.
#include "interop/streams.h"

#include "marshal/error_bridge.h"
#include "marshal/module_type_instance.h"
#include "marshal/scalars.h"
#include "module/identifiers.h"
#include "module/import_errors.h"
#include "objects/clr_object.h"
#include "objects/markattr.h"

namespace {

struct ShlBufferView {
    PyObject_HEAD
    void* data;
    Py_ssize_t length;
    int32_t readonly;
};

int shlbuffer_getbuffer(PyObject* self, Py_buffer* view, int flags)
{
    auto* buffer = reinterpret_cast<ShlBufferView*>(self);
    return PyBuffer_FillInfo(view, self, buffer->data, buffer->length, buffer->readonly, flags);
}

PyBufferProcs shlbuffer_as_buffer = {shlbuffer_getbuffer, nullptr};

PyTypeObject make_shlbuffer_type()
{
    PyTypeObject type{};
    Py_SET_REFCNT(reinterpret_cast<PyObject*>(&type), 1);
    type.tp_name = "_wrpgen._interop._ShlBufferView";
    type.tp_basicsize = sizeof(ShlBufferView);
    type.tp_flags = Py_TPFLAGS_DEFAULT;
    type.tp_as_buffer = &shlbuffer_as_buffer;
    return type;
}

// Calls file.<method>(view over data) and detaches the view afterwards, so a
// file object that kept it can no longer reach the caller's memory.
PyObject* call_with_view(PyObject* file, PyObject* method, void* data, Py_ssize_t length, int32_t readonly)
{
    PyObject* view = fn_create_shlbuffer_view(data, length, readonly);
    if (!view)
        return nullptr;
    PyObject* result = PyObject_CallMethodObjArgs(file, method, view, nullptr);
    auto* buffer = reinterpret_cast<ShlBufferView*>(view);
    buffer->data = nullptr;
    buffer->length = 0;
    Py_DECREF(view);
    return result;
}

// A count result of write()/readinto(): None is 0 bytes; -1 on error.
int32_t count_result(PyObject* result)
{
    if (!result)
        return -1;
    if (result == Py_None) {
        Py_DECREF(result);
        return 0;
    }
    int32_t count = 0;
    int ok = fn_conv_py_long_to_clr_int32(result, &count);
    Py_DECREF(result);
    return ok ? count : -1;
}

int64_t int64_result(PyObject* result)
{
    if (!result)
        return -1;
    int64_t value = 0;
    int ok = fn_conv_py_long_to_clr_int64(result, &value);
    Py_DECREF(result);
    return ok ? value : -1;
}

// 1 closed, 0 open, -1 when reading `closed` failed (chained TypeError set).
int closed_state(PyObject* file)
{
    PyObject* closed = PyObject_GetAttr(file, PyWrpIdRawIo_Closed);
    int state = closed ? PyObject_IsTrue(closed) : -1;
    Py_XDECREF(closed);
    if (state < 0) {
        PyShlErr_ChainFormat(PyExc_TypeError, "An error occurred while checking if the stream is closed");
        return -1;
    }
    return state;
}

// readable()/writable()/seekable(): a closed file answers 0 without a call.
int32_t ask_capability(PyObject* file, PyObject* method)
{
    int closed = closed_state(file);
    if (closed < 0)
        return -1;
    if (closed)
        return 0;
    PyObject* result = PyObject_CallMethodObjArgs(file, method, nullptr);
    if (!result)
        return -1;
    int truth = PyObject_IsTrue(result);
    Py_DECREF(result);
    return truth < 0 ? -1 : truth;
}

int64_t length_failure()
{
    PyShlErr_ChainFormat(PyExc_TypeError, "While calculating the length of the stream, an error occurred.");
    return -1;
}

// file.seek(offset, whence) as a new reference.
PyObject* seek_to(PyObject* file, long long offset, int whence)
{
    PyObject* py_offset = PyLong_FromLongLong(offset);
    PyObject* py_whence = py_offset ? PyLong_FromLong(whence) : nullptr;
    PyObject* result =
        py_whence ? PyObject_CallMethodObjArgs(file, PyWrpIdRawIo_Seek, py_offset, py_whence, nullptr) : nullptr;
    Py_XDECREF(py_offset);
    Py_XDECREF(py_whence);
    return result;
}

}  // namespace

PyTypeObject wrpPye_tyds_FFFFFFFF_ShlBufferView = make_shlbuffer_type();

PyObject* fn_create_shlbuffer_view(void* data, Py_ssize_t length, int32_t readonly)
{
    PyTypeObject* type = &wrpPye_tyds_FFFFFFFF_ShlBufferView;
    if (!(type->tp_flags & Py_TPFLAGS_READY) && PyType_Ready(type) < 0)
        return nullptr;
    ShlBufferView* view = PyObject_New(ShlBufferView, type);
    if (!view)
        return nullptr;
    view->data = data;
    view->length = length;
    view->readonly = readonly;
    return reinterpret_cast<PyObject*>(view);
}

int32_t fn_clbk_rawio_write(PyObject* file, const void* data, int32_t count)
{
    return count_result(call_with_view(file, PyWrpIdRawIo_Write, const_cast<void*>(data), count, 1));
}

int32_t fn_clbk_rawio_write_byte(PyObject* file, int32_t value)
{
    unsigned char byte = (unsigned char)(value & 0xFF);
    return count_result(call_with_view(file, PyWrpIdRawIo_Write, &byte, 1, 1));
}

int32_t fn_clbk_rawio_read(PyObject* file, void* data, int32_t count)
{
    return count_result(call_with_view(file, PyWrpIdRawIo_ReadInto, data, count, 0));
}

int32_t fn_clbk_rawio_readbyte(PyObject* file)
{
    unsigned char byte = 0;
    PyObject* result = call_with_view(file, PyWrpIdRawIo_ReadInto, &byte, 1, 0);
    if (!result)
        return -2;
    if (result == Py_None) {
        Py_DECREF(result);
        PyErr_SetString(PyExc_OSError, "no bytes are available for reading");
        return -2;
    }
    int32_t count = 0;
    int ok = fn_conv_py_long_to_clr_int32(result, &count);
    Py_DECREF(result);
    if (!ok)
        return -2;
    return count == 0 ? -1 : byte;
}

int64_t fn_clbk_rawio_seek(PyObject* file, int64_t offset, int32_t whence)
{
    return int64_result(seek_to(file, offset, whence));
}

int32_t fn_clbk_rawio_flush(PyObject* file)
{
    PyObject* result = PyObject_CallMethodObjArgs(file, PyWrpIdRawIo_Flush, nullptr);
    if (!result)
        return -1;
    Py_DECREF(result);
    return 0;
}

void fn_clbk_rawio_close(PyObject* file)
{
    PyObject *type, *value, *tb;
    PyErr_Fetch(&type, &value, &tb);
    PyObject* result = PyObject_CallMethodObjArgs(file, PyWrpIdRawIo_Close, nullptr);
    if (result)
        Py_DECREF(result);
    else
        PyErr_WriteUnraisable(file);
    PyErr_Restore(type, value, tb);
}

int32_t fn_clbk_rawio_readable(PyObject* file)
{
    return ask_capability(file, PyWrpIdRawIo_Readable);
}

int32_t fn_clbk_rawio_writable(PyObject* file)
{
    return ask_capability(file, PyWrpIdRawIo_Writable);
}

int32_t fn_clbk_rawio_seekable(PyObject* file)
{
    return ask_capability(file, PyWrpIdRawIo_Seekable);
}

int64_t fn_clbk_rawio_tell(PyObject* file)
{
    return int64_result(PyObject_CallMethodObjArgs(file, PyWrpIdRawIo_Tell, nullptr));
}

int64_t fn_clbk_rawio_length(PyObject* file)
{
    int closed = closed_state(file);
    if (closed < 0)
        return -1;
    if (closed)
        return -3;
    PyObject* seekable = PyObject_CallMethodObjArgs(file, PyWrpIdRawIo_Seekable, nullptr);
    if (!seekable)
        return length_failure();
    int truth = PyObject_IsTrue(seekable);
    Py_DECREF(seekable);
    if (truth < 0)
        return length_failure();
    if (!truth)
        return -2;

    PyObject* current = seek_to(file, 0, 1);
    if (!current)
        return length_failure();
    PyObject* end = seek_to(file, 0, 2);
    if (!end) {
        Py_DECREF(current);
        return length_failure();
    }
    PyObject* restored = PyObject_CallMethodObjArgs(file, PyWrpIdRawIo_Seek, current, nullptr);
    Py_DECREF(current);
    if (!restored) {
        Py_DECREF(end);
        return length_failure();
    }
    Py_DECREF(restored);
    int64_t length = 0;
    int ok = fn_conv_py_long_to_clr_int64(end, &length);
    Py_DECREF(end);
    if (!ok)
        return length_failure();
    return length;
}

int wrpPye_conv_py_to_clr_stream(PyObject* obj, VariantArg* out)
{
    out->type = 0;
    out->value = nullptr;
    if (obj == Py_None)
        return 1;
    if (fn_is_this_module_clr_object(obj) && PyObject_TypeCheck(obj, &wrpPye_tyds_FFFFFFFF_StreamWrapper)) {
        out->value = fn_clr_handle(obj);
        return 1;
    }
    if (fn_has_host_markattr(obj)) {
        PyHost_ph_Stream* host = PyHost_ph_Stream::get_instance();
        bool accepted = !host->is_not_valid() && host->is_assignable_to(fn_clr_handle(obj));
        if (PyErr_Occurred())
            return 0;
        if (accepted) {
            out->value = fn_clr_handle(obj);
            return 1;
        }
    } else {
        struct Candidate {
            const char* module;
            PyObject* name;
        };
        const Candidate candidates[] = {
            {"io", PyWrpIdTypeName_RawIOBase},
            {"io", PyWrpIdTypeName_BufferedIOBase},
            {"orvane.pyio", PyWrpIdTypeName_BufferStream},
        };
        for (const Candidate& candidate : candidates) {
            int found = fn_is_instance_of_module_type(obj, candidate.module, candidate.name);
            if (found < 0)
                return 0;
            if (found) {
                out->type = 1;
                out->value = obj;
                return 1;
            }
        }
    }
    PyErr_Format(PyExc_TypeError, "can't build Stream from '%s'", Py_TYPE(obj)->tp_name);
    return 0;
}
