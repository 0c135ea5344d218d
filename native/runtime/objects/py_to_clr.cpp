// Python arguments to managed handles for class- and interface-typed parameters.
#include "objects/py_to_clr.h"

#include "objects/clr_object.h"
#include "objects/markattr.h"

namespace {

// A host-marked wrapper (possibly of a sibling module) whose managed object
// the parameter's proxy accepts. -1 when the proxy's check raised.
int accepted_by_proxy(PyObject* obj, bool (*is_assignable)(void* handle))
{
    if (!is_assignable || !fn_is_host_marked_wrapper(obj))
        return 0;
    void* handle = fn_clr_handle(obj);
    bool accepted = is_assignable(handle);
    if (PyErr_Occurred())
        return -1;
    return accepted ? 1 : 0;
}

int finish(PyObject* obj, void** out, bool matched, bool (*is_assignable)(void*), const char* short_name)
{
    if (matched) {
        *out = fn_clr_handle(obj);
        return 1;
    }
    int accepted = accepted_by_proxy(obj, is_assignable);
    if (accepted < 0)
        return 0;
    if (accepted) {
        *out = fn_clr_handle(obj);
        return 1;
    }
    PyErr_Format(PyExc_TypeError, "can't build %s value from '%s'", short_name, Py_TYPE(obj)->tp_name);
    return 0;
}

}  // namespace

int fn_conv_py_clsobj_to_clr_handle(PyObject* obj, void** out, PyTypeObject* cls, bool (*is_assignable)(void* handle),
                                    const char* short_name)
{
    if (obj == Py_None) {
        *out = nullptr;
        return 1;
    }
    bool matched = fn_is_this_module_clr_object(obj) && PyType_IsSubtype(Py_TYPE(obj), cls);
    return finish(obj, out, matched, is_assignable, short_name);
}

int fn_conv_py_ifcobj_to_clr_handle(PyObject* obj, void** out, PyTypeObject* ifc, bool (*is_assignable)(void* handle),
                                    const char* short_name)
{
    if (obj == Py_None) {
        *out = nullptr;
        return 1;
    }
    bool matched =
        fn_is_this_module_clr_object(obj) && (Py_TYPE(obj) == ifc || fn_contains_additional_ifc_markattr(obj, ifc));
    return finish(obj, out, matched, is_assignable, short_name);
}
