// Protocol checks and __qualname__ look-up on arbitrary objects.
#include "marshal/object_inspection.h"

#include "module/identifiers.h"

bool PyShlObject_HasLength(PyObject* obj)
{
    PyTypeObject* type = Py_TYPE(obj);
    return (type->tp_as_sequence && type->tp_as_sequence->sq_length) ||
           (type->tp_as_mapping && type->tp_as_mapping->mp_length);
}

bool PyShlObject_HasIter(PyObject* obj)
{
    return Py_TYPE(obj)->tp_iter != nullptr || PySequence_Check(obj);
}

bool fn_get_obj_qualname(PyObject* obj, PyObject** out)
{
    *out = nullptr;
    PyObject* name = PyObject_GetAttr(obj, PyWrpIdType_Qualname);
    if (!name) {
        PyErr_Clear();
        return false;
    }
    if (!PyUnicode_Check(name)) {
        Py_DECREF(name);
        return false;
    }
    *out = name;
    return true;
}
