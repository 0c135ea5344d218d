#include "marshal/module_type_instance.h"

#include "module/import_errors.h"

int fn_is_instance_of_module_type(PyObject* obj, const char* module, PyObject* name)
{
    PyObject* type = fn_import_type_from_module(module, name);
    if (!type)
        return -1;
    int result = PyObject_IsInstance(obj, type);
    Py_DECREF(type);
    return result;
}
