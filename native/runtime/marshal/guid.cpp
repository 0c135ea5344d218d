// Python uuid.UUID <-> managed Guid through UUID.bytes_le.
#include "marshal/guid.h"

#include <cstring>

#include "marshal/module_type_instance.h"
#include "module/identifiers.h"
#include "module/import_errors.h"

int fn_conv_py_uuid_to_clr_guid_value(PyObject* uuid, ClrGuid* out)
{
    PyObject* bytes = PyObject_GetAttr(uuid, PyWrpIdUuid_BytesLe);
    if (!bytes)
        return 0;
    int result = 0;
    if (!PyBytes_Check(bytes) || PyBytes_GET_SIZE(bytes) != (Py_ssize_t)sizeof(out->bytes)) {
        PyErr_SetString(PyExc_ValueError, "UUID.bytes_le must be 16 bytes");
    } else {
        std::memcpy(out->bytes, PyBytes_AS_STRING(bytes), sizeof(out->bytes));
        result = 1;
    }
    Py_DECREF(bytes);
    return result;
}

int fn_conv_py_uuid_to_clr_guid(PyObject* obj, ClrGuid* out)
{
    int is = fn_is_instance_of_module_type(obj, "uuid", PyWrpIdTypeName_Uuid);
    if (is < 0)
        return 0;
    if (!is) {
        PyErr_Format(PyExc_TypeError, "can't build Guid from '%s'", Py_TYPE(obj)->tp_name);
        return 0;
    }
    return fn_conv_py_uuid_to_clr_guid_value(obj, out);
}

int fn_read_py_guid(PyObject* uuid, ClrGuid* out)
{
    return fn_conv_py_uuid_to_clr_guid_value(uuid, out);
}

PyObject* fn_conv_clr_guid_to_py_uuid(const ClrGuid* value)
{
    PyObject* cls = nullptr;
    PyObject* args = nullptr;
    PyObject* kwargs = nullptr;
    PyObject* bytes = nullptr;
    PyObject* result = nullptr;

    cls = fn_import_type_from_module("uuid", PyWrpIdTypeName_Uuid);
    if (!cls)
        goto error;
    args = PyTuple_New(0);
    kwargs = PyDict_New();
    bytes = PyBytes_FromStringAndSize(reinterpret_cast<const char*>(value->bytes), sizeof(value->bytes));
    if (!args || !kwargs || !bytes || PyDict_SetItem(kwargs, PyWrpIdUuid_BytesLe, bytes) < 0)
        goto error;
    result = PyObject_Call(cls, args, kwargs);

error:
    Py_XDECREF(bytes);
    Py_XDECREF(kwargs);
    Py_XDECREF(args);
    Py_XDECREF(cls);
    return result;
}

PyObject* fn_write_py_guid(const ClrGuid* value)
{
    return fn_conv_clr_guid_to_py_uuid(value);
}
