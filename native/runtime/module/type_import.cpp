// Attributes of standard modules fetched by interned name (enum.IntEnum,
// decimal.Decimal, io.RawIOBase and the like).
#include "module/import_errors.h"

#include "marshal/error_bridge.h"

PyObject* fn_import_type_from_module(const char* module, PyObject* attr_name)
{
    PyObject* mod = PyImport_ImportModule(module);
    if (!mod) {
        PyShlErr_ChainFormat(PyExc_ImportError, "cannot import '%s' module", module);
        return nullptr;
    }
    PyObject* attr = PyObject_GetAttr(mod, attr_name);
    Py_DECREF(mod);
    if (!attr) {
        const char* name = PyUnicode_Check(attr_name) ? PyUnicode_AsUTF8(attr_name) : nullptr;
        if (!name) {
            name = "?";
        }
        PyShlErr_ChainFormat(PyExc_ImportError, "can't import '%s' type from '%s' module", name, module);
        return nullptr;
    }
    return attr;
}
