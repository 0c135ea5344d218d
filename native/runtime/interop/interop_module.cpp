// Builds <root>._wrpgen._interop: each fixed wrapper type is readied,
// host-marked and added, in a fixed order.
#include "interop/interop_module.h"

#include <string>

#include "interop/disposable.h"
#include "module/import_errors.h"
#include "module/module_entry.h"
#include "objects/markattr.h"

namespace {

struct InteropType {
    const char* attr;
    PyTypeObject* type;
    std::string full_name;
};

InteropType interop_types[] = {
    {"_IDisposableWrapper", &wrpPye_tyds_FFFFFFFF_IDisposableWrapper, std::string()},
};

PyModuleDef interop_def = {PyModuleDef_HEAD_INIT, nullptr, nullptr, -1, nullptr, nullptr, nullptr, nullptr, nullptr};
std::string interop_name;

}  // namespace

void wrpPye_prepare_interop_types(const char* root_name)
{
    for (InteropType& entry : interop_types) {
        if (entry.type->tp_flags & Py_TPFLAGS_READY)
            continue;
        entry.full_name = std::string(root_name) + "._wrpgen._interop." + entry.attr;
        entry.type->tp_name = entry.full_name.c_str();
    }
}

PyObject* wrpPye_mlit_FFFFFFFF_interop_wrappers(const char* root_name)
{
    wrpPye_prepare_interop_types(root_name);
    interop_name = std::string(root_name) + "._wrpgen._interop";
    interop_def.m_name = interop_name.c_str();
    PyObject* module = PyModule_Create2(&interop_def, 1013);
    if (!module) {
        PyShlErr_ModuleImportError(interop_name.c_str(), 0);
        return nullptr;
    }
    for (InteropType& entry : interop_types) {
        PyTypeObject* type = entry.type;
        if (PyType_Ready(type) < 0) {
            PyShlErr_TypeReadyError(type->tp_name, interop_name.c_str());
            goto error;
        }
        if (!fn_set_host_markattr(type)) {
            PyShlErr_TypeImportError(type->tp_name, 3);
            goto error;
        }
        Py_INCREF(type);
        if (PyModule_AddObject(module, entry.attr, reinterpret_cast<PyObject*>(type)) < 0) {
            Py_DECREF(type);
            PyShlErr_TypeImportError(type->tp_name, 4);
            goto error;
        }
    }
    return module;

error:
    Py_DECREF(module);
    return nullptr;
}
