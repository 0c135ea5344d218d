// The slots every wrapper type shares: release of the managed handle,
// equality, hash and text through the object host.
#include "objects/clr_object.h"

#include "hosting/exchange_host.h"
#include "hosting/object_host.h"
#include "objects/markattr.h"

void wrapClrObject_tp_dealloc(PyObject* self)
{
    auto* wrapper = reinterpret_cast<PyClrObject*>(self);
    if (void* handle = wrapper->clr_handle) {
        wrapper->clr_handle = nullptr;
        // Deallocation may run while an exception propagates: keep it intact,
        // and report a failure of the release itself as unraisable.
        PyObject *type, *value, *tb;
        PyErr_Fetch(&type, &value, &tb);
        ExchangeHost::get_instance()->free_instance(handle);
        if (PyErr_Occurred())
            PyErr_WriteUnraisable(self);
        PyErr_Restore(type, value, tb);
    }
    Py_TYPE(self)->tp_free(self);
}

PyObject* wrapClrObject_tp_richcompare(void* a, void* b, int op)
{
    if (op != Py_EQ && op != Py_NE)
        Py_RETURN_NOTIMPLEMENTED;
    bool equal = a == b;
    if (!equal) {
        equal = ObjectHost::get_instance()->equals(a, b);
        if (PyErr_Occurred())
            return nullptr;
    }
    return PyBool_FromLong((op == Py_EQ) == equal);
}

PyObject* wrapClrObject_same_type_richcompare(PyObject* self, PyObject* other, int op)
{
    if (!PyObject_TypeCheck(other, Py_TYPE(self)))
        Py_RETURN_NOTIMPLEMENTED;
    return wrapClrObject_tp_richcompare(fn_clr_handle(self), fn_clr_handle(other), op);
}

Py_hash_t wrapClrObject_hash(PyObject* self)
{
    int32_t hash = ObjectHost::get_instance()->get_hash_code(fn_clr_handle(self));
    if (PyErr_Occurred())
        return -1;
    // Sign-extended as is; a managed -1 is not remapped.
    return (Py_hash_t)hash;
}

PyObject* wrapClrObject_str(PyObject* self)
{
    void* text = nullptr;
    int32_t status = ObjectHost::get_instance()->to_string(fn_clr_handle(self), &text);
    if (status == -1)
        return nullptr;
    if (status == 1)
        return static_cast<PyObject*>(text);
    return PyUnicode_FromFormat("<%s object at %p>", Py_TYPE(self)->tp_name, self);
}

int wrapClrObject_tp_init_fault(PyObject* self, PyObject* args, PyObject* kwargs)
{
    PyErr_SetString(PyExc_TypeError, "type has no available constructor");
    return -1;
}

bool fn_is_this_module_clr_object(PyObject* obj)
{
    return Py_TYPE(obj)->tp_dealloc == wrapClrObject_tp_dealloc;
}

bool fn_is_host_marked_wrapper(PyObject* obj)
{
    PyTypeObject* type = Py_TYPE(obj);
    bool wrapper_layout = !(type->tp_flags & Py_TPFLAGS_HEAPTYPE) &&
                          type->tp_basicsize >= (Py_ssize_t)sizeof(PyClrObject) && type->tp_itemsize == 0 &&
                          type->tp_dictoffset == 0 && type->tp_weaklistoffset == 0;
    return wrapper_layout && fn_has_host_markattr(obj);
}

bool fn_is_clr_wrapper(PyObject* obj)
{
    return fn_is_this_module_clr_object(obj) || fn_is_host_marked_wrapper(obj);
}
