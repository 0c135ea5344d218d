// Construction of generated wrappers is refused while their class, or a type
// the class depends on, could not bind its managed entries.
#include "objects/host_state.h"

#include "marshal/error_bridge.h"
#include "objects/clr_object.h"

PyObject* fn_raise_host_state_error(const PyHostState& state)
{
    PyErr_SetString(PyExc_TypeError, state.message.c_str());
    if (state.inherited)
        PyShlErr_ChainFormat(PyExc_TypeError, "one or more refereced type is not initialized");
    return nullptr;
}

PyObject* fn_clr_object_checked_new(PyTypeObject* type, const PyHostState& state)
{
    if (state.not_valid)
        return fn_raise_host_state_error(state);
    PyObject* obj = PyType_GenericNew(type, nullptr, nullptr);
    if (obj)
        reinterpret_cast<PyClrObject*>(obj)->clr_handle = nullptr;
    return obj;
}
