#include "marshal/object_api.h"

#include "hosting/exchange_host.h"
#include "objects/clr_to_py.h"

void fn_xinc_ref(PyObject* obj)
{
    Py_XINCREF(obj);
}

void fn_xdec_ref(PyObject* obj)
{
    Py_XDECREF(obj);
}

PyObject* fn_get_py_none()
{
    Py_RETURN_NONE;
}

PyObject* fn_write_py_tpo(void* handle, intptr_t type_key)
{
    PyObject* result = nullptr;
    int status = fn_try_write_py_tpo(handle, type_key, &result);
    if (status == 0 && !PyErr_Occurred())
        PyErr_SetString(PyExc_TypeError, "unknown wrapper type");
    return status == 1 ? result : nullptr;
}

int fn_try_write_py_tpo(void* handle, intptr_t type_key, PyObject** out)
{
    if (!handle) {
        Py_INCREF(Py_None);
        *out = Py_None;
        return 1;
    }
    PyTypeObject* type = get_py_type_object_by_obj(handle, type_key);
    if (!type) {
        // Freed whether the type is unknown or naming it raised.
        ExchangeHost::get_instance()->free_instance(handle);
        return PyErr_Occurred() ? -1 : 0;
    }
    PyObject* obj = fn_py_clr_type_generic_new(handle, type);
    if (!obj)
        return -1;
    *out = obj;
    return 1;
}
