// The interop folder's process-wide state and the host states of its types.
#include "interop/interop_state.h"

#include "interop/collections.h"
#include "interop/disposable.h"
#include "interop/streams.h"
#include "interop/wrapper_common.h"

namespace {

// The proxies each type's state is made of: its own first, then those it
// depends on (a failure there is inherited). None for the buffer view.
PyHostState compute_host_state(PyInteropType type)
{
    switch (type) {
    case PyInteropType::IDisposable:
        return fn_interop_host_state({wrpPye_is_not_valid_disposable});
    case PyInteropType::Iter:
        return fn_interop_host_state({wrpPye_is_not_valid_iterator});
    case PyInteropType::Iterable:
        return fn_interop_host_state({wrpPye_is_not_valid_iter, wrpPye_is_not_valid_iterator});
    case PyInteropType::ICol:
        return fn_interop_host_state(
            {wrpPye_is_not_valid_icol, wrpPye_is_not_valid_iter, wrpPye_is_not_valid_iterator});
    case PyInteropType::IList:
        return fn_interop_host_state({wrpPye_is_not_valid_ilist, wrpPye_is_not_valid_icol, wrpPye_is_not_valid_iter,
                                      wrpPye_is_not_valid_iterator});
    case PyInteropType::RoColBase:
        return fn_interop_host_state({wrpPye_is_not_valid_rocolbase, wrpPye_is_not_valid_icol, wrpPye_is_not_valid_iter,
                                      wrpPye_is_not_valid_iterator});
    case PyInteropType::ColBase:
        return fn_interop_host_state({wrpPye_is_not_valid_colbase, wrpPye_is_not_valid_ilist, wrpPye_is_not_valid_icol,
                                      wrpPye_is_not_valid_iter, wrpPye_is_not_valid_iterator});
    case PyInteropType::Array:
        return fn_interop_host_state(
            {wrpPye_is_not_valid_array, wrpPye_is_not_valid_iter, wrpPye_is_not_valid_iterator});
    case PyInteropType::ArrList:
        return fn_interop_host_state(
            {wrpPye_is_not_valid_arrlist, wrpPye_is_not_valid_iter, wrpPye_is_not_valid_iterator});
    case PyInteropType::Stream:
        return fn_interop_host_state({wrpPye_is_not_valid_stream});
    case PyInteropType::ShlBufferView:
        break;
    }
    return PyHostState{};
}

}  // namespace

PyInteropState& fn_interop_state()
{
    static PyInteropState state{};
    return state;
}

const PyHostState& fn_interop_type_host_state(PyInteropType type)
{
    PyInteropState& state = fn_interop_state();
    int i = static_cast<int>(type);
    if (!state.host_state_ready[i]) {
        state.host_state[i] = compute_host_state(type);
        state.host_state_ready[i] = true;
    }
    return state.host_state[i];
}

PyObject* fn_interop_checked_new(PyTypeObject* type, PyInteropType which)
{
    return fn_clr_object_checked_new(type, fn_interop_type_host_state(which));
}
