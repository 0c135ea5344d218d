// <root>._wrpgen with its _interop and _generic submodules.
#include <string>

#include "module/import_errors.h"
#include "module/module_entry.h"
#include "module/module_state.h"
#include "module/submodules.h"

namespace {

// Adds `child` to `parent` under `attr` and to sys.modules; takes over the
// caller's reference to `child` in every case.
bool attach(PyObject* parent, const char* attr, PyObject* child)
{
    const char* child_name = PyModule_GetName(child);
    if (!child_name || !fn_register_submodule(child_name, child)) {
        Py_DECREF(child);
        PyShlErr_ModuleImportError(child_name ? child_name : attr, 1);
        return false;
    }
    if (PyModule_AddObject(parent, attr, child) < 0) {
        Py_DECREF(child);
        PyShlErr_ModuleImportError(child_name, 1);
        return false;
    }
    return true;
}

}  // namespace

bool wrpPye_mlit_FFFFFFFF_common_wrappers(PyObject* root)
{
    const char* root_name = PyModule_GetName(root);
    if (!root_name)
        return false;

    ModuleState& state = module_state();
    state.wrpgen_name = std::string(root_name) + "._wrpgen";
    state.wrpgen_def.m_name = state.wrpgen_name.c_str();
    PyObject* wrpgen = PyModule_Create2(&state.wrpgen_def, 1013);
    if (!wrpgen) {
        PyShlErr_ModuleImportError(state.wrpgen_name.c_str(), 0);
        return false;
    }
    // Keep a reference of our own while the children are attached.
    Py_INCREF(wrpgen);
    bool ok = attach(root, "_wrpgen", wrpgen);
    if (ok) {
        PyObject* interop = wrpPye_mlit_FFFFFFFF_interop_wrappers(root_name);
        ok = interop && attach(wrpgen, "_interop", interop);
    }
    if (ok) {
        PyObject* generic = wrpPygn_mlit_FFFFFFFF_generic_wrappers(root_name);
        ok = generic && attach(wrpgen, "_generic", generic);
    }
    Py_DECREF(wrpgen);
    return ok;
}
