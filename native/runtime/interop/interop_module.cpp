// Builds <root>._wrpgen._interop: each fixed type is readied, each wrapper
// type host-marked, and all are added, in a fixed order.
#include "interop/interop_module.h"

#include <string>
#include <vector>

#include "interop/collections.h"
#include "interop/disposable.h"
#include "interop/interop_state.h"
#include "interop/streams.h"
#include "module/identifiers.h"
#include "module/import_errors.h"
#include "module/module_entry.h"
#include "objects/markattr.h"

namespace {

struct InteropType {
    const char* attr;
    PyTypeObject* type;
    // A wrapper type, whose instances hold a managed handle, carries the host
    // mark; a type of another layout must not, or conversions would read its
    // instances as handles.
    bool wrapper;
    // Set both as additional and as implicit interfaces.
    std::vector<PyTypeObject*> interfaces;
};

// Readied, marked and added in this order (that of PyInteropType).
const std::vector<InteropType>& interop_types()
{
    static const std::vector<InteropType> types = {
        {"_IDisposableWrapper", &wrpPye_tyds_FFFFFFFF_IDisposableWrapper, true, {}},
        {"_IterWrapper", &wrpPye_tyds_FFFFFFFF_IterWrapper, true, {}},
        {"_IterableWrapper", &wrpPye_tyds_FFFFFFFF_IterableWrapper, true, {}},
        {"_IColWrapper", &wrpPye_tyds_FFFFFFFF_IColWrapper, true, {&wrpPye_tyds_FFFFFFFF_IterableWrapper}},
        {"_IListWrapper",
         &wrpPye_tyds_FFFFFFFF_IListWrapper,
         true,
         {&wrpPye_tyds_FFFFFFFF_IterableWrapper, &wrpPye_tyds_FFFFFFFF_IColWrapper}},
        {"_RoColBaseWrapper",
         &wrpPye_tyds_FFFFFFFF_RoColBaseWrapper,
         true,
         {&wrpPye_tyds_FFFFFFFF_IterableWrapper, &wrpPye_tyds_FFFFFFFF_IColWrapper}},
        {"_ColBaseWrapper",
         &wrpPye_tyds_FFFFFFFF_ColBaseWrapper,
         true,
         {&wrpPye_tyds_FFFFFFFF_IterableWrapper, &wrpPye_tyds_FFFFFFFF_IColWrapper,
          &wrpPye_tyds_FFFFFFFF_IListWrapper}},
        {"_ArrayWrapper",
         &wrpPye_tyds_FFFFFFFF_ArrayWrapper,
         true,
         {&wrpPye_tyds_FFFFFFFF_IterableWrapper, &wrpPye_tyds_FFFFFFFF_IColWrapper,
          &wrpPye_tyds_FFFFFFFF_IListWrapper}},
        {"_ArrListWrapper",
         &wrpPye_tyds_FFFFFFFF_ArrListWrapper,
         true,
         {&wrpPye_tyds_FFFFFFFF_IterableWrapper, &wrpPye_tyds_FFFFFFFF_IColWrapper,
          &wrpPye_tyds_FFFFFFFF_IListWrapper}},
        {"_ShlBufferView", &wrpPye_tyds_FFFFFFFF_ShlBufferView, false, {}},
        {"_StreamWrapper", &wrpPye_tyds_FFFFFFFF_StreamWrapper, true, {&wrpPye_tyds_FFFFFFFF_IDisposableWrapper}},
    };
    static_assert(kPyInteropTypeCount == 11, "one entry per PyInteropType");
    return types;
}

// Both interface marks of one type, from however many interfaces the entry
// lists; false with an error set.
bool set_interface_marks(const InteropType& entry)
{
    const std::vector<PyTypeObject*>& ifcs = entry.interfaces;
    if (ifcs.empty())
        return true;
    return fn_set_any_ifcs_markattr_from(entry.type, PyWrpIdMarkattr_AdditionalInterfaces, ifcs.data(), ifcs.size()) &&
           fn_set_any_ifcs_markattr_from(entry.type, PyWrpIdMarkattr_ImplicitInterfaces, ifcs.data(), ifcs.size());
}

}  // namespace

void wrpPye_prepare_interop_types(const char* root_name)
{
    const std::vector<InteropType>& types = interop_types();
    std::string* names = fn_interop_state().type_names;
    for (size_t i = 0; i < types.size(); ++i) {
        const InteropType& entry = types[i];
        if (entry.type->tp_flags & Py_TPFLAGS_READY)
            continue;
        names[i] = std::string(root_name) + "._wrpgen._interop." + entry.attr;
        entry.type->tp_name = names[i].c_str();
    }
}

PyObject* wrpPye_mlit_FFFFFFFF_interop_wrappers(const char* root_name)
{
    wrpPye_prepare_interop_types(root_name);
    PyInteropState& state = fn_interop_state();
    const std::string& interop_name = state.module_name = std::string(root_name) + "._wrpgen._interop";
    state.module_def = {
        PyModuleDef_HEAD_INIT, interop_name.c_str(), nullptr, -1, nullptr, nullptr, nullptr, nullptr, nullptr};
    PyObject* module = PyModule_Create2(&state.module_def, 1013);
    if (!module) {
        PyShlErr_ModuleImportError(interop_name.c_str(), 0);
        return nullptr;
    }
    for (const InteropType& entry : interop_types()) {
        PyTypeObject* type = entry.type;
        if (PyType_Ready(type) < 0) {
            PyShlErr_TypeReadyError(type->tp_name, interop_name.c_str());
            goto error;
        }
        if (entry.wrapper && (!fn_set_host_markattr(type) || !set_interface_marks(entry))) {
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
