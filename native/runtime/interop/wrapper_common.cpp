#include "interop/wrapper_common.h"

#include "objects/clr_object.h"
#include "objects/markattr.h"

PyHostState fn_interop_host_state(std::initializer_list<PyInteropValidityCheck> checks)
{
    PyHostState state;
    bool own = true;
    for (PyInteropValidityCheck check : checks) {
        std::string message;
        if (check(message)) {
            state.not_valid = true;
            state.inherited = !own;
            state.message = message;
            break;
        }
        own = false;
    }
    return state;
}

PyOperandKind fn_classify_operand(PyObject* operand)
{
    PyTypeObject* type = Py_TYPE(operand);
    if (type == &PyList_Type || type == &PyTuple_Type)
        return PyOperandKind::ListOrTuple;
    if (type->tp_as_sequence && type->tp_as_sequence->sq_length)
        return PyOperandKind::SizedSequence;
    if (type->tp_iter || PySequence_Check(operand))
        return PyOperandKind::Iterable;
    return PyOperandKind::None;
}

int fn_append_operand_items(PyObject* list, PyObject* operand)
{
    return fn_for_each_operand_item(
        operand, [list](PyObject* item) { return PyList_Append(list, item); },
        [](Py_ssize_t) { return 0; });
}

bool fn_is_managed_wrapper(PyObject* obj)
{
    return fn_is_this_module_clr_object(obj) || fn_has_host_markattr(obj);
}
