// Byte buffers into managed code through the buffer protocol (no copy), and
// managed byte[] results back as bytearray.
#include <cstring>

#include "marshal/error_bridge.h"
#include "marshal/strings.h"

PyBytesArgBuilder::PyBytesArgBuilder()
{
    std::memset(&m_view, 0, sizeof(m_view));
    m_info.need_release = 0;
    m_info.length = -1;
    m_info.data = nullptr;
}

PyBytesArgBuilder::~PyBytesArgBuilder()
{
    if (m_info.need_release)
        PyBuffer_Release(&m_view);
}

namespace {

PyObject* raise_buffer_error(const char* message)
{
    // The exporter's own reason, when it gave one, stays attached as the cause.
    if (PyErr_Occurred())
        return PyShlErr_ChainFormat(PyExc_BufferError, "%s", message);
    PyErr_SetString(PyExc_BufferError, message);
    return nullptr;
}

}  // namespace

int fn_read_py_buffer_view(PyObject* obj, Py_buffer* view, PyBytesArg* out)
{
    // Strides are asked for so that a non-contiguous exporter hands out its
    // view and is refused here with a clear message.
    if (PyObject_GetBuffer(obj, view, PyBUF_STRIDES) < 0) {
        raise_buffer_error("can't get internal buffer");
        return 0;
    }
    if (!PyBuffer_IsContiguous(view, 'C')) {
        raise_buffer_error("buffer is not contiguous");
        goto error;
    }
    if (view->len >= (Py_ssize_t)0x80000000LL) {
        raise_buffer_error("buffer is too long");
        goto error;
    }
    out->need_release = 1;
    out->data = view->buf;
    out->length = (int32_t)view->len;
    return 1;

error:
    // A refused view is given back at once: the caller holds nothing.
    PyBuffer_Release(view);
    return 0;
}

int fn_read_py_buffer(PyObject* obj, Py_buffer* view, PyBytesArg* out)
{
    return fn_read_py_buffer_view(obj, view, out);
}

int fn_conv_py_bytes_to_clr_bytes_value(PyObject* obj, Py_buffer* view, PyBytesArg* out)
{
    if (obj == Py_None) {
        out->length = -1;
        out->data = nullptr;
        return 1;
    }
    if (!PyObject_CheckBuffer(obj)) {
        PyErr_Format(PyExc_TypeError, "can't build byte[] from '%s'", Py_TYPE(obj)->tp_name);
        return 0;
    }
    return fn_read_py_buffer_view(obj, view, out);
}

int fn_conv_py_bytes_to_clr_bytes(PyObject* obj, PyBytesArgBuilder* out)
{
    return fn_conv_py_bytes_to_clr_bytes_value(obj, out->get_view(), out->get_info());
}

PyObject* fn_conv_clr_bytes_to_py_bytes(const uint8_t* data, int32_t count)
{
    if (count < 0) {
        PyErr_Format(PyExc_ValueError, "negative byte count %d", (int)count);
        return nullptr;
    }
    return PyByteArray_FromStringAndSize(reinterpret_cast<const char*>(data), count);
}

int32_t fn_get_sizeof_py_byffer()
{
    return (int32_t)sizeof(Py_buffer);
}

void fn_create_py_byffer(Py_buffer* view)
{
    std::memset(view, 0, sizeof(Py_buffer));
}

void fn_release_py_buffer(Py_buffer* view)
{
    // PyBuffer_Release clears view->obj, so a second release does nothing.
    if (view)
        PyBuffer_Release(view);
}
