// Python binary file objects seen from managed code: the raw-I/O callbacks,
// the _ShlBufferView through which they hand bytes to write()/readinto(),
// and the conversion of Python arguments to Stream.
#include "interop/streams.h"

#include <cstring>

#include "marshal/error_bridge.h"
#include "marshal/module_type_instance.h"
#include "marshal/scalars.h"
#include "module/identifiers.h"
#include "module/import_errors.h"
#include "objects/clr_object.h"
#include "objects/markattr.h"

namespace {

// A buffer object over native memory. A view made for one file call owns a
// copy of the caller's bytes (`owned`, freed with the view): the file object
// may keep the view, or a memoryview of it, past the call, and must then
// reach memory that is still allocated rather than managed memory that the
// caller has since unpinned, moved or freed. Views over caller memory
// (`owned` null) are for callers that keep that memory alive themselves.
struct ShlBufferView {
    PyObject_HEAD void* data;
    Py_ssize_t length;
    int32_t readonly;
    void* owned;
};

int shlbuffer_getbuffer(PyObject* self, Py_buffer* view, int flags)
{
    auto* buffer = reinterpret_cast<ShlBufferView*>(self);
    return PyBuffer_FillInfo(view, self, buffer->data, buffer->length, buffer->readonly, flags);
}

void shlbuffer_dealloc(PyObject* self)
{
    // Every export holds a reference to the view, so none is left here.
    PyMem_Free(reinterpret_cast<ShlBufferView*>(self)->owned);
    PyObject_Del(self);
}

PyBufferProcs shlbuffer_as_buffer = {shlbuffer_getbuffer, nullptr};

PyTypeObject make_shlbuffer_type()
{
    PyTypeObject type{};
    Py_SET_REFCNT(reinterpret_cast<PyObject*>(&type), 1);
    type.tp_name = "_wrpgen._interop._ShlBufferView";
    type.tp_basicsize = sizeof(ShlBufferView);
    type.tp_flags = Py_TPFLAGS_DEFAULT;
    type.tp_dealloc = shlbuffer_dealloc;
    type.tp_as_buffer = &shlbuffer_as_buffer;
    return type;
}

ShlBufferView* new_view(void* data, Py_ssize_t length, int32_t readonly)
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
    view->owned = nullptr;
    return view;
}

// A new view owning `length` bytes, filled from `source` when given.
ShlBufferView* new_owning_view(const void* source, Py_ssize_t length, int32_t readonly)
{
    void* block = PyMem_Malloc(length > 0 ? (size_t)length : 1);
    if (!block) {
        PyErr_NoMemory();
        return nullptr;
    }
    if (source && length > 0)
        memcpy(block, source, (size_t)length);
    ShlBufferView* view = new_view(block, length, readonly);
    if (!view) {
        PyMem_Free(block);
        return nullptr;
    }
    view->owned = block;
    return view;
}

// The count write() or readinto() returned for a request of `requested`
// bytes. None stands for 0 bytes. A raw file that reports a count outside
// [0, requested], or no integer at all, is broken: it is an OSError here,
// as in Python's own buffered I/O, rather than a count the caller would
// have to distrust. Takes over `result` (null: the call raised); -1 with the
// error set.
int32_t count_result(PyObject* result, int32_t requested, const char* method)
{
    int32_t count = -1;
    PyObject* index = nullptr;
    long long value = 0;
    int overflow = 0;
    if (!result)
        goto done;
    if (result == Py_None) {
        count = 0;
        goto done;
    }
    if (!PyIndex_Check(result)) {
        PyErr_Format(PyExc_OSError, "%s() returned a length of type '%s' (should have been an int)", method,
                     Py_TYPE(result)->tp_name);
        goto done;
    }
    index = PyNumber_Index(result);
    if (!index)
        goto done;
    value = PyLong_AsLongLongAndOverflow(index, &overflow);
    if (value == -1 && PyErr_Occurred())
        goto done;
    if (overflow || value < 0 || value > requested) {
        PyErr_Format(PyExc_OSError, "%s() returned invalid length %S (should have been between 0 and %d)", method,
                     index, (int)requested);
        goto done;
    }
    count = (int32_t)value;
done:
    Py_XDECREF(index);
    Py_XDECREF(result);
    return count;
}

// file.write(view of a copy of data[0:count]): bytes written, -1 on error.
int32_t write_copy(PyObject* file, const void* data, int32_t count)
{
    ShlBufferView* view = new_owning_view(data, count, 1);
    if (!view)
        return -1;
    PyObject* result = PyObject_CallMethodObjArgs(file, PyWrpIdRawIo_Write, reinterpret_cast<PyObject*>(view), nullptr);
    Py_DECREF(view);
    return count_result(result, count, "write");
}

// file.readinto(view of a block of `count` bytes), then the bytes it reported
// copied to `data`: bytes read, -1 on error.
int32_t read_copy(PyObject* file, void* data, int32_t count)
{
    ShlBufferView* view = new_owning_view(nullptr, count, 0);
    if (!view)
        return -1;
    PyObject* result =
        PyObject_CallMethodObjArgs(file, PyWrpIdRawIo_ReadInto, reinterpret_cast<PyObject*>(view), nullptr);
    int32_t read = count_result(result, count, "readinto");
    if (read > 0)
        memcpy(data, view->owned, (size_t)read);
    Py_DECREF(view);
    return read;
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
    return reinterpret_cast<PyObject*>(new_view(data, length, readonly));
}

int32_t fn_clbk_rawio_write(PyObject* file, const void* data, int32_t count)
{
    return write_copy(file, data, count);
}

int32_t fn_clbk_rawio_write_byte(PyObject* file, int32_t value)
{
    unsigned char byte = (unsigned char)(value & 0xFF);
    return write_copy(file, &byte, 1);
}

int32_t fn_clbk_rawio_read(PyObject* file, void* data, int32_t count)
{
    return read_copy(file, data, count);
}

int32_t fn_clbk_rawio_readbyte(PyObject* file)
{
    unsigned char byte = 0;
    ShlBufferView* view = new_owning_view(nullptr, 1, 0);
    if (!view)
        return -2;
    PyObject* result =
        PyObject_CallMethodObjArgs(file, PyWrpIdRawIo_ReadInto, reinterpret_cast<PyObject*>(view), nullptr);
    byte = *static_cast<unsigned char*>(view->owned);
    Py_DECREF(view);
    if (result == Py_None) {
        Py_DECREF(result);
        PyErr_SetString(PyExc_OSError, "no bytes are available for reading");
        return -2;
    }
    switch (count_result(result, 1, "readinto")) {
    case -1:
        return -2;
    case 0:
        return -1;  // end of stream
    default:
        return byte;
    }
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
    if (fn_is_host_marked_wrapper(obj)) {
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
