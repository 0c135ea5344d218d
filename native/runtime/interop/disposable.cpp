// _IDisposableWrapper: a managed IDisposable seen from Python as a context
// manager, and the conversion of Python arguments to IDisposable parameters.
#include "interop/disposable.h"

#include "hosting/object_host.h"
#include "interop/disposable_host.h"
#include "interop/interop_state.h"
#include "interop/wrapper_common.h"
#include "objects/clr_object.h"
#include "objects/host_state.h"
#include "objects/markattr.h"

namespace {

PyMethodDef disposable_methods[] = {
    {"__enter__", (PyCFunction)wrpPye_mtfn_disposable_enter, METH_NOARGS, nullptr},
    {"__exit__", (PyCFunction)wrpPye_mtfn_disposable_exit, METH_VARARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyTypeObject make_disposable_type()
{
    PyTypeObject type = fn_wrapper_type("_wrpgen._interop._IDisposableWrapper", sizeof(PyClrObject),
                                        fn_interop_tp_new<PyInteropType::IDisposable>);
    type.tp_methods = disposable_methods;
    return type;
}

}  // namespace

PyTypeObject wrpPye_tyds_FFFFFFFF_IDisposableWrapper = make_disposable_type();

bool wrpPye_is_not_valid_disposable(std::string& message)
{
    return fn_host_is_not_valid<PyHost_ph_Disposable>(message);
}

bool wrpPye_is_assignable_to_disposable(void* handle)
{
    return fn_host_accepts<PyHost_ph_Disposable>(handle);
}

PyObject* wrpPye_mtfn_disposable_enter(PyObject* self, PyObject* ignored)
{
    Py_INCREF(self);
    return self;
}

PyObject* wrpPye_mtfn_disposable_exit(PyObject* self, PyObject* args)
{
    ObjectHost::get_instance()->dispose(fn_clr_handle(self));
    if (PyErr_Occurred())
        return nullptr;
    // None: an exception raised in the with-block is never suppressed.
    Py_RETURN_NONE;
}

int wrpPye_conv_py_to_clr_disposable(PyObject* obj, void** out)
{
    if (obj == Py_None) {
        *out = nullptr;
        return 1;
    }
    PyTypeObject* wrapper = &wrpPye_tyds_FFFFFFFF_IDisposableWrapper;
    bool is_wrapper = fn_is_this_module_clr_object(obj);
    if (is_wrapper && (Py_TYPE(obj) == wrapper || fn_contains_additional_ifc_markattr(obj, wrapper))) {
        *out = fn_clr_handle(obj);
        return 1;
    }
    if (fn_is_host_marked_wrapper(obj)) {
        bool accepted = wrpPye_is_assignable_to_disposable(fn_clr_handle(obj));
        if (PyErr_Occurred())
            return 0;
        if (accepted) {
            *out = fn_clr_handle(obj);
            return 1;
        }
    }
    PyErr_Format(PyExc_TypeError, "can't build IDisposable value from '%s'", Py_TYPE(obj)->tp_name);
    return 0;
}
