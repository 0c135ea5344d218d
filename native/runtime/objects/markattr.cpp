// Marker attributes in a wrapper type's own dictionary. Queries never raise:
// an error inside them is cleared and reads as "no".
#include "objects/markattr.h"

#include <cstdarg>

#include "module/identifiers.h"

namespace {

bool set_type_attr(PyTypeObject* type, PyObject* key, PyObject* value)
{
    if (!type->tp_dict) {
        PyErr_Format(PyExc_SystemError, "type '%s' is not ready", type->tp_name);
        return false;
    }
    if (PyDict_SetItem(type->tp_dict, key, value) < 0)
        return false;
    // The attribute cache of a static type must learn about the change.
    PyType_Modified(type);
    return true;
}

// Borrowed value of key in type's own dictionary, or null (errors cleared).
PyObject* get_type_attr(PyTypeObject* type, PyObject* key)
{
    if (!type->tp_dict || !key)
        return nullptr;
    PyObject* value = PyDict_GetItemWithError(type->tp_dict, key);
    if (!value && PyErr_Occurred())
        PyErr_Clear();
    return value;
}

}  // namespace

bool fn_set_host_markattr(PyTypeObject* type)
{
    return set_type_attr(type, PyWrpIdMarkattr_OrvaneClrHost, Py_None);
}

bool fn_has_host_markattr(PyObject* obj)
{
    return get_type_attr(Py_TYPE(obj), PyWrpIdMarkattr_OrvaneClrHost) != nullptr;
}

bool fn_set_external_ancestor_markattr(PyTypeObject* type, PyTypeObject* ancestor)
{
    return set_type_attr(type, PyWrpIdMarkattr_ExternalAncestor, reinterpret_cast<PyObject*>(ancestor));
}

bool fn_has_external_ancestor_markattr(PyObject* obj, PyTypeObject* ancestor)
{
    PyObject* value = get_type_attr(Py_TYPE(obj), PyWrpIdMarkattr_ExternalAncestor);
    return value && value == reinterpret_cast<PyObject*>(ancestor);
}

namespace {

// Stores `set` under key, releasing it on every path.
bool store_set(PyTypeObject* type, PyObject* key, PyObject* set)
{
    bool stored = set_type_attr(type, key, set);
    Py_DECREF(set);
    return stored;
}

}  // namespace

bool fn_set_any_ifcs_markattr(PyTypeObject* type, PyObject* key, int count, va_list list)
{
    PyObject* set = PySet_New(nullptr);
    if (!set)
        return false;
    for (int i = 0; i < count; ++i) {
        PyObject* item = reinterpret_cast<PyObject*>(va_arg(list, PyTypeObject*));
        if (PySet_Add(set, item) < 0) {
            Py_DECREF(set);
            return false;
        }
    }
    return store_set(type, key, set);
}

bool fn_set_any_ifcs_markattr_from(PyTypeObject* type, PyObject* key, PyTypeObject* const* ifcs, size_t count)
{
    PyObject* set = PySet_New(nullptr);
    if (!set)
        return false;
    for (size_t i = 0; i < count; ++i) {
        if (PySet_Add(set, reinterpret_cast<PyObject*>(ifcs[i])) < 0) {
            Py_DECREF(set);
            return false;
        }
    }
    return store_set(type, key, set);
}

bool fn_set_additional_ifcs_markattr(PyTypeObject* type, int count, ...)
{
    va_list list;
    va_start(list, count);
    bool result = fn_set_any_ifcs_markattr(type, PyWrpIdMarkattr_AdditionalInterfaces, count, list);
    va_end(list);
    return result;
}

bool fn_set_implicit_ifcs_markattr(PyTypeObject* type, int count, ...)
{
    va_list list;
    va_start(list, count);
    bool result = fn_set_any_ifcs_markattr(type, PyWrpIdMarkattr_ImplicitInterfaces, count, list);
    va_end(list);
    return result;
}

bool fn_contains_any_ifc_markattr(PyTypeObject* type, PyObject* key, PyTypeObject* ifc_type)
{
    PyObject* value = get_type_attr(type, key);
    if (!value || !PySet_Check(value))
        return false;
    int found = PySet_Contains(value, reinterpret_cast<PyObject*>(ifc_type));
    if (found < 0) {
        PyErr_Clear();
        return false;
    }
    return found == 1;
}

bool fn_contains_additional_ifc_markattr(PyObject* obj, PyTypeObject* ifc_type)
{
    return fn_contains_any_ifc_markattr(Py_TYPE(obj), PyWrpIdMarkattr_AdditionalInterfaces, ifc_type);
}

bool fn_contains_implicit_ifc_markattr(PyTypeObject* type, PyTypeObject* ifc_type)
{
    return fn_contains_any_ifc_markattr(type, PyWrpIdMarkattr_ImplicitInterfaces, ifc_type);
}
