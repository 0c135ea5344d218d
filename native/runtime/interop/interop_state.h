// The process-wide state of the interop wrappers (<root>._wrpgen._interop),
// kept in one structure.
//
// Not in it, on purpose: the native hosts of the managed proxies, each the
// singleton of its own class behind get_instance() and bound on first use;
// the fixed wrapper type objects, which are globals the generated layer names
// (wrpPye_tyds_FFFFFFFF_*); and the per-thread element reference of the
// sequence callbacks (containers.cpp).
#pragma once

#include <Python.h>
#include <string>

#include "objects/host_state.h"

// The fixed wrapper types, in the order the module adds them.
enum class PyInteropType {
    IDisposable,
    Iter,
    Iterable,
    ICol,
    IList,
    RoColBase,
    ColBase,
    Array,
    ArrList,
    ShlBufferView,
    Stream,
};
constexpr int kPyInteropTypeCount = 11;

struct PyInteropState {
    // The aggregate host state of each fixed wrapper type (its own proxy,
    // then the proxies it depends on); computed the first time an instance of
    // the type is made, with the interpreter lock held, and kept for the process.
    bool host_state_ready[kPyInteropTypeCount];
    PyHostState host_state[kPyInteropTypeCount];
    // The module object's definition and name, and each type's qualified
    // name "<root>._wrpgen._interop.<attr>" (the type objects point into these).
    PyModuleDef module_def;
    std::string module_name;
    std::string type_names[kPyInteropTypeCount];
};

// The one instance, created on first use.
PyInteropState& fn_interop_state();

// The aggregate host state of a fixed wrapper type.
const PyHostState& fn_interop_type_host_state(PyInteropType type);

// tp_new of the fixed wrapper types: refuses construction while the type's
// host state is invalid, else a wrapper with a null handle (the generic
// allocation zero-fills the rest).
PyObject* fn_interop_checked_new(PyTypeObject* type, PyInteropType which);

template <PyInteropType Which>
PyObject* fn_interop_tp_new(PyTypeObject* type, PyObject*, PyObject*)
{
    return fn_interop_checked_new(type, Which);
}
