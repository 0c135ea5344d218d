// _StreamWrapper: a managed Stream with the methods of Python's binary I/O
// classes. Line reading, unbounded reads and buffer growth are done here on
// top of the proxy's Read and Seek.
#include <algorithm>
#include <cstring>

#include "hosting/object_host.h"
#include "interop/interop_state.h"
#include "interop/streams.h"
#include "interop/wrapper_common.h"
#include "marshal/error_bridge.h"
#include "marshal/scalars.h"
#include "objects/clr_object.h"
#include "objects/clr_to_py.h"

namespace {

constexpr Py_ssize_t kMaxTransfer = 0x7FFFFFFF;

const PyHost_ph_Stream* host()
{
    return PyHost_ph_Stream::get_instance();
}
void* handle(PyObject* self)
{
    return fn_clr_handle(self);
}
int32_t& closed_flag(PyObject* self)
{
    return reinterpret_cast<PyClrStreamObject*>(self)->closed;
}

bool is_closed(PyObject* self)
{
    if (!closed_flag(self))
        return false;
    PyErr_SetString(PyExc_ValueError, "I/O operation on closed stream");
    return true;
}

// 0 when the inner stream can seek; -1 with the TypeError of line reading.
int require_seekable(PyObject* self)
{
    bool seekable = host()->can_seek(handle(self));
    if (PyErr_Occurred()) {
        PyShlErr_ChainFormat(PyExc_TypeError,
                             "the operation supported only for seekable inner streams. an exception was thrown "
                             "during 'CanSeek' check");
        return -1;
    }
    if (!seekable) {
        PyErr_SetString(PyExc_TypeError,
                        "the operation supported only for seekable inner streams. the inner stream is not seekable");
        return -1;
    }
    return 0;
}

// The optional size argument of read/readline/readlines: -1 for missing or None.
int optional_size(PyObject* args, const char* name, Py_ssize_t* size)
{
    *size = -1;
    if (fn_check_args_count_out_of_range(PyTuple_GET_SIZE(args), name, 0, 1))
        return 0;
    return fn_conv_py_optional_to_ssize_t(args, size);
}

// One managed Read of at most kMaxTransfer bytes; -1 with an error pending.
Py_ssize_t read_chunk(PyObject* self, char* into, Py_ssize_t wanted)
{
    int32_t count = host()->read(handle(self), into, (int32_t)std::min(wanted, kMaxTransfer));
    if (PyErr_Occurred())
        return -1;
    return count < 0 ? 0 : count;
}

// The next buffer size of an unbounded read: +4 KiB up to 8 KiB, then tripling
// up to 64 KiB, then +max(total/8, 64 KiB); clamped to the largest Py_ssize_t.
Py_ssize_t grown_size(Py_ssize_t total)
{
    Py_ssize_t add;
    if (total <= 8192)
        add = 4096;
    else if (total <= 65536)
        add = 2 * total;
    else
        add = std::max<Py_ssize_t>(total / 8, 65536);
    return total > PY_SSIZE_T_MAX - add ? PY_SSIZE_T_MAX : total + add;
}

PyObject* overflow()
{
    PyErr_SetString(PyExc_OverflowError, "unbounded read returned more bytes than a Python bytes buffer can hold");
    return nullptr;
}

// Reads until the end of the stream or until `limit` bytes (limit < 0: none).
PyObject* bulk_read(PyObject* self, Py_ssize_t limit)
{
    Py_ssize_t size = limit < 0 ? 1024 : limit;
    PyObject* result = PyBytes_FromStringAndSize(nullptr, size);
    if (!result)
        return nullptr;
    Py_ssize_t total = 0;
    while (total < size) {
        Py_ssize_t count = read_chunk(self, PyBytes_AS_STRING(result) + total, size - total);
        if (count < 0)
            goto error;
        if (count == 0)
            break;
        total += count;
        if (limit >= 0 && total >= limit)
            break;
        if (total == size) {
            if (total == PY_SSIZE_T_MAX) {
                overflow();
                goto error;
            }
            size = grown_size(total);
            if (_PyBytes_Resize(&result, size) < 0)
                return nullptr;
        }
    }
    if (total != PyBytes_GET_SIZE(result) && _PyBytes_Resize(&result, total) < 0)
        return nullptr;
    return result;

error:
    Py_DECREF(result);
    return nullptr;
}

// One line (with its newline) of at most `size` bytes (size < 0: no limit);
// bytes read beyond the line are given back with a relative Seek.
PyObject* read_line(PyObject* self, Py_ssize_t size)
{
    Py_ssize_t limit = size < 0 ? PY_SSIZE_T_MAX : size;
    Py_ssize_t capacity = std::min<Py_ssize_t>(limit, 1024);
    PyObject* result = PyBytes_FromStringAndSize(nullptr, capacity);
    if (!result)
        return nullptr;
    Py_ssize_t total = 0;
    Py_ssize_t line_end = -1;
    Py_ssize_t count = read_chunk(self, PyBytes_AS_STRING(result), capacity);
    while (count > 0) {
        const char* fresh = PyBytes_AS_STRING(result) + total;
        total += count;
        if (const void* newline = std::memchr(fresh, '\n', (size_t)count)) {
            line_end = static_cast<const char*>(newline) - PyBytes_AS_STRING(result) + 1;
            break;
        }
        if (total == limit)
            break;
        if (total == capacity) {
            if (total == PY_SSIZE_T_MAX) {
                overflow();
                goto error;
            }
            capacity = std::min(grown_size(total), limit);
            if (_PyBytes_Resize(&result, capacity) < 0)
                return nullptr;
        }
        count = read_chunk(self, PyBytes_AS_STRING(result) + total, capacity - total);
    }
    if (count < 0)
        goto error;
    if (line_end >= 0 && total > line_end) {
        host()->seek(handle(self), line_end - total, 1);
        if (PyErr_Occurred())
            goto error;
    }
    {
        Py_ssize_t length = line_end >= 0 ? line_end : total;
        if (length != PyBytes_GET_SIZE(result) && _PyBytes_Resize(&result, length) < 0)
            return nullptr;
    }
    return result;

error:
    Py_DECREF(result);
    return nullptr;
}

// Writes a whole buffer in pieces the managed side accepts.
int write_all(PyObject* self, const char* data, Py_ssize_t length)
{
    while (length > 0) {
        int32_t piece = (int32_t)std::min(length, kMaxTransfer);
        host()->write(handle(self), data, piece);
        if (PyErr_Occurred())
            return -1;
        data += piece;
        length -= piece;
    }
    return 0;
}

const char* type_text(PyObject* obj)
{
    return obj == Py_None ? "None" : Py_TYPE(obj)->tp_name;
}

// Gets a contiguous buffer; TypeError "<what> argument must be ..." otherwise.
int get_contiguous(PyObject* obj, Py_buffer* view, bool writable, const char* bytes_like, const char* contiguous)
{
    int flags = writable ? PyBUF_FULL : PyBUF_FULL_RO;
    if (!PyObject_CheckBuffer(obj) || PyObject_GetBuffer(obj, view, flags) < 0) {
        PyErr_Clear();
        PyErr_Format(PyExc_TypeError, bytes_like, type_text(obj));
        return -1;
    }
    if (!PyBuffer_IsContiguous(view, 'C') && !PyBuffer_IsContiguous(view, 'F')) {
        PyBuffer_Release(view);
        PyErr_Format(PyExc_TypeError, contiguous, type_text(obj));
        return -1;
    }
    return 0;
}

PyObject* write_buffer(PyObject* self, PyObject* data)
{
    Py_buffer view;
    if (get_contiguous(data, &view, false, "write argument must be bytes-like object, not '%s'",
                       "write argument must be contiguous buffer, not '%s'") < 0)
        return nullptr;
    int rc = write_all(self, static_cast<const char*>(view.buf), view.len);
    Py_ssize_t length = view.len;
    PyBuffer_Release(&view);
    if (rc < 0)
        return nullptr;
    return PyLong_FromSsize_t(length);
}

// ---- methods -------------------------------------------------------------

PyObject* stream_close(PyObject* self, PyObject*)
{
    if (closed_flag(self))
        Py_RETURN_NONE;
    host()->close(handle(self));
    closed_flag(self) = 1;
    if (PyErr_Occurred())
        return nullptr;
    Py_RETURN_NONE;
}

PyObject* stream_closed_get(PyObject* self, void*)
{
    return PyBool_FromLong(closed_flag(self) != 0);
}

PyObject* stream_flush(PyObject* self, PyObject*)
{
    if (is_closed(self))
        return nullptr;
    host()->flush(handle(self));
    if (PyErr_Occurred())
        return nullptr;
    Py_RETURN_NONE;
}

template <bool (PyHost_ph_Stream::*Ask)(void*) const>
PyObject* stream_capability(PyObject* self, PyObject*)
{
    if (is_closed(self))
        return nullptr;
    bool answer = (host()->*Ask)(handle(self));
    if (PyErr_Occurred())
        return nullptr;
    return PyBool_FromLong(answer);
}

PyObject* stream_tell(PyObject* self, PyObject*)
{
    if (is_closed(self))
        return nullptr;
    int64_t position = host()->position(handle(self));
    if (PyErr_Occurred())
        return nullptr;
    return PyLong_FromLongLong(position);
}

PyObject* stream_seek(PyObject* self, PyObject* args)
{
    Py_ssize_t offset;
    int whence = 0;
    if (!PyArg_ParseTuple(args, "n|i:seek", &offset, &whence))
        return nullptr;
    if ((unsigned)whence > 2) {
        PyErr_Format(PyExc_ValueError, "invalid whence (%i, should be 0, 1 or 2)", whence);
        return nullptr;
    }
    if (whence == 0 && offset < 0) {
        PyErr_Format(PyExc_ValueError, "negative seek value %zd", offset);
        return nullptr;
    }
    if (is_closed(self))
        return nullptr;
    int64_t position = host()->seek(handle(self), offset, whence);
    if (PyErr_Occurred())
        return nullptr;
    return PyLong_FromLongLong(position);
}

PyObject* stream_truncate(PyObject* self, PyObject* args)
{
    if (is_closed(self))
        return nullptr;
    if (fn_check_args_count_out_of_range(PyTuple_GET_SIZE(args), "truncate", 0, 1))
        return nullptr;
    int32_t no_size = 1;
    Py_ssize_t size = 0;
    if (PyTuple_GET_SIZE(args) == 1 && PyTuple_GET_ITEM(args, 0) != Py_None) {
        if (!fn_conv_py_obj_to_ssize_t(PyTuple_GET_ITEM(args, 0), &size))
            return nullptr;
        no_size = 0;
    }
    int64_t result = host()->set_length(handle(self), no_size, size);
    if (PyErr_Occurred())
        return nullptr;
    return PyLong_FromLongLong(result);
}

PyObject* stream_write(PyObject* self, PyObject* data)
{
    if (is_closed(self))
        return nullptr;
    return write_buffer(self, data);
}

PyObject* stream_writelines(PyObject* self, PyObject* lines)
{
    if (is_closed(self))
        return nullptr;
    PyObject* iterator = PyObject_GetIter(lines);
    if (!iterator)
        return nullptr;
    PyObject* line;
    while ((line = PyIter_Next(iterator))) {
        PyObject* written = write_buffer(self, line);
        Py_DECREF(line);
        if (!written) {
            Py_DECREF(iterator);
            return nullptr;
        }
        Py_DECREF(written);
    }
    Py_DECREF(iterator);
    if (PyErr_Occurred())
        return nullptr;
    Py_RETURN_NONE;
}

PyObject* stream_readinto(PyObject* self, PyObject* target)
{
    if (is_closed(self))
        return nullptr;
    Py_buffer view;
    if (get_contiguous(target, &view, true, "readinto argument must be read-write bytes-like object, not '%s'",
                       "readinto argument must be read-write contiguous buffer, not '%s'") < 0)
        return nullptr;
    char* into = static_cast<char*>(view.buf);
    Py_ssize_t total = 0;
    while (total < view.len) {
        Py_ssize_t wanted = std::min(view.len - total, kMaxTransfer);
        Py_ssize_t count = read_chunk(self, into + total, wanted);
        if (count < 0) {
            PyBuffer_Release(&view);
            return nullptr;
        }
        total += count;
        if (count < wanted)
            break;
    }
    PyBuffer_Release(&view);
    return PyLong_FromSsize_t(total);
}

PyObject* stream_read(PyObject* self, PyObject* args)
{
    if (is_closed(self))
        return nullptr;
    Py_ssize_t size;
    if (!optional_size(args, "read", &size))
        return nullptr;
    if (size < 0 || size > kMaxTransfer)
        return bulk_read(self, size);
    PyObject* result = PyBytes_FromStringAndSize(nullptr, size);
    if (!result)
        return nullptr;
    // One Read only: a short read returns short data.
    Py_ssize_t count = read_chunk(self, PyBytes_AS_STRING(result), size);
    if (count < 0) {
        Py_DECREF(result);
        return nullptr;
    }
    if (count != size && _PyBytes_Resize(&result, count) < 0)
        return nullptr;
    return result;
}

PyObject* stream_readall(PyObject* self, PyObject*)
{
    if (is_closed(self))
        return nullptr;
    return bulk_read(self, -1);
}

PyObject* stream_readline(PyObject* self, PyObject* args)
{
    Py_ssize_t size;
    if (!optional_size(args, "readline", &size))
        return nullptr;
    if (is_closed(self) || require_seekable(self) < 0)
        return nullptr;
    return read_line(self, size);
}

PyObject* stream_iter(PyObject* self)
{
    if (is_closed(self) || require_seekable(self) < 0)
        return nullptr;
    Py_INCREF(self);
    return self;
}

PyObject* stream_iternext(PyObject* self)
{
    if (is_closed(self))
        return nullptr;
    PyObject* line = read_line(self, -1);
    if (line && PyBytes_GET_SIZE(line) == 0) {
        Py_DECREF(line);
        return nullptr;  // end of iteration, no error
    }
    return line;
}

PyObject* stream_readlines(PyObject* self, PyObject* args)
{
    Py_ssize_t hint;
    if (!optional_size(args, "readlines", &hint))
        return nullptr;
    if (is_closed(self) || require_seekable(self) < 0)
        return nullptr;
    PyObject* lines = PyList_New(0);
    if (!lines)
        return nullptr;
    Py_ssize_t total = 0;
    for (;;) {
        PyObject* line = read_line(self, -1);
        if (!line)
            goto error;
        Py_ssize_t length = PyBytes_GET_SIZE(line);
        if (length == 0) {
            Py_DECREF(line);
            break;
        }
        int rc = PyList_Append(lines, line);
        Py_DECREF(line);
        if (rc < 0)
            goto error;
        total += length;
        if (hint >= 1 && total >= hint)
            break;
    }
    return lines;

error:
    Py_DECREF(lines);
    return nullptr;
}

PyObject* stream_fileno(PyObject* self, PyObject*)
{
    PyErr_SetString(PyExc_ValueError, "fileno method is not supported");
    return nullptr;
}

PyObject* stream_isatty(PyObject* self, PyObject*)
{
    if (is_closed(self))
        return nullptr;
    Py_RETURN_FALSE;
}

PyObject* stream_enter(PyObject* self, PyObject*)
{
    Py_INCREF(self);
    return self;
}

PyObject* stream_exit(PyObject* self, PyObject*)
{
    ObjectHost::get_instance()->dispose(handle(self));
    closed_flag(self) = 1;
    if (PyErr_Occurred())
        return nullptr;
    Py_RETURN_NONE;
}

PyMethodDef stream_methods[] = {
    {"close", stream_close, METH_NOARGS, nullptr},
    {"flush", stream_flush, METH_NOARGS, nullptr},
    {"readable", stream_capability<&PyHost_ph_Stream::can_read>, METH_NOARGS, nullptr},
    {"seekable", stream_capability<&PyHost_ph_Stream::can_seek>, METH_NOARGS, nullptr},
    {"writable", stream_capability<&PyHost_ph_Stream::can_write>, METH_NOARGS, nullptr},
    {"tell", stream_tell, METH_NOARGS, nullptr},
    {"seek", stream_seek, METH_VARARGS, nullptr},
    {"truncate", stream_truncate, METH_VARARGS, nullptr},
    {"write", stream_write, METH_O, nullptr},
    {"writelines", stream_writelines, METH_O, nullptr},
    {"readline", stream_readline, METH_VARARGS, nullptr},
    {"readlines", stream_readlines, METH_VARARGS, nullptr},
    {"readinto", stream_readinto, METH_O, nullptr},
    {"read", stream_read, METH_VARARGS, nullptr},
    {"readall", stream_readall, METH_NOARGS, nullptr},
    {"fileno", stream_fileno, METH_NOARGS, nullptr},
    {"isatty", stream_isatty, METH_NOARGS, nullptr},
    {"__enter__", stream_enter, METH_NOARGS, nullptr},
    {"__exit__", stream_exit, METH_VARARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyGetSetDef stream_getset[] = {
    {"closed", stream_closed_get, nullptr, nullptr, nullptr},
    {nullptr, nullptr, nullptr, nullptr, nullptr},
};

PyTypeObject make_stream_type()
{
    // The generic allocation zero-fills, so `closed` starts at 0.
    PyTypeObject type = fn_wrapper_type("_wrpgen._interop._StreamWrapper", sizeof(PyClrStreamObject),
                                        fn_interop_tp_new<PyInteropType::Stream>);
    type.tp_iter = stream_iter;
    type.tp_iternext = stream_iternext;
    type.tp_methods = stream_methods;
    type.tp_getset = stream_getset;
    return type;
}

}  // namespace

PyTypeObject wrpPye_tyds_FFFFFFFF_StreamWrapper = make_stream_type();

bool wrpPye_is_not_valid_stream(std::string& message)
{
    return fn_host_is_not_valid<PyHost_ph_Stream>(message);
}

PyObject* wrpPye_conv_clr_stream_to_py(const PyCollectionArg& arg)
{
    return fn_conv_clr_ifcimpl_to_py_ifcimpl_wps(arg, &wrpPye_tyds_FFFFFFFF_StreamWrapper);
}
