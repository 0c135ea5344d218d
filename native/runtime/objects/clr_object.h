// The layout of every wrapped managed object and the slots all wrapper types share.
#pragma once

#include <Python.h>

// Python object header plus the handle of the managed instance it owns
// (null while not bound). No dict, no weak-reference list.
struct PyClrObject {
    PyObject_HEAD void* clr_handle;
};

// Releases the handle through the exchange host, then frees the object.
void wrapClrObject_tp_dealloc(PyObject* self);
// == / != on two handles: same pointer, else managed Equals; other operators NotImplemented.
PyObject* wrapClrObject_tp_richcompare(void* a, void* b, int op);
// tp_richcompare of the fixed and typed wrapper types: == / != as above when
// `other` is an instance of self's own type, NotImplemented otherwise.
PyObject* wrapClrObject_same_type_richcompare(PyObject* self, PyObject* other, int op);
// The managed 32-bit hash, sign-extended.
Py_hash_t wrapClrObject_hash(PyObject* self);
// repr (and str): the managed ToString(), or "<%s object at %p>".
PyObject* wrapClrObject_str(PyObject* self);
// tp_init of classes without a public constructor.
int wrapClrObject_tp_init_fault(PyObject* self, PyObject* args, PyObject* kwargs);

// True when obj is a wrapper of this module (its type deallocates with wrapClrObject_tp_dealloc).
bool fn_is_this_module_clr_object(PyObject* obj);

// True when obj's type is a host-marked wrapper type: a static type laid out
// as a wrapper (Python code cannot add names to one) that carries the host
// mark, of this module or of a sibling module (which deallocates with its own
// copy of the common slot). A Python class carrying the marker names, or an
// object of any other layout, is not one. Conversions that hand a wrapper of
// another class to the parameter's proxy ask this before reading its handle.
bool fn_is_host_marked_wrapper(PyObject* obj);
// True when obj holds a managed handle: a wrapper of this module, or a
// host-marked wrapper as above. Nothing else is read as a handle.
bool fn_is_clr_wrapper(PyObject* obj);

// Handle of a wrapper, without checks.
static inline void* fn_clr_handle(PyObject* obj)
{
    return ((PyClrObject*)obj)->clr_handle;
}
