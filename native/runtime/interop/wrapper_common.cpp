#include "interop/wrapper_common.h"

#include "objects/clr_object.h"

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

PyTypeObject fn_wrapper_type(const char* name, Py_ssize_t basicsize, newfunc tp_new)
{
    PyTypeObject type{};
    Py_SET_REFCNT(reinterpret_cast<PyObject*>(&type), 1);
    type.tp_name = name;
    type.tp_basicsize = basicsize;
    type.tp_flags = Py_TPFLAGS_DEFAULT;
    type.tp_dealloc = wrapClrObject_tp_dealloc;
    type.tp_hash = wrapClrObject_hash;
    type.tp_richcompare = wrapClrObject_same_type_richcompare;
    type.tp_init = wrapClrObject_tp_init_fault;
    type.tp_alloc = PyType_GenericAlloc;
    type.tp_new = tp_new;
    return type;
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
        operand, [list](PyObject* item) { return PyList_Append(list, item); }, [](Py_ssize_t) { return 0; });
}
