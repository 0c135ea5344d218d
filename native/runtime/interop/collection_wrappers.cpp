// _IColWrapper, _RoColBaseWrapper, _IterableWrapper and _IterWrapper; the
// enumeration shared by every collection wrapper; the argument and result
// conversions of the collection kinds.
#include <limits>

#include "interop/collection_hosts.h"
#include "interop/collections.h"
#include "interop/interop_state.h"
#include "interop/wrapper_common.h"
#include "marshal/variant.h"
#include "objects/clr_object.h"
#include "objects/clr_to_py.h"
#include "objects/markattr.h"

namespace {

// ---- _IterWrapper ----------------------------------------------------------

PyObject* iterator_self(PyObject* self)
{
    Py_INCREF(self);
    return self;
}

PyObject* iterator_next(PyObject* self)
{
    PyObject* item = nullptr;
    int32_t status = PyHost_ph_Iter::get_instance()->move_next(fn_clr_handle(self), &item);
    if (PyErr_Occurred()) {
        Py_XDECREF(item);
        return nullptr;
    }
    if (status == 0)
        return item ? item : (Py_INCREF(Py_None), Py_None);
    Py_XDECREF(item);
    if (status == 1) {
        PyErr_SetNone(PyExc_StopIteration);
        return nullptr;
    }
    PyErr_Format(PyExc_RuntimeError, "enumeration failed with status %d", (int)status);
    return nullptr;
}

// ---- _IColWrapper / _RoColBaseWrapper ----------------------------------------

Py_ssize_t icol_length(PyObject* self)
{
    int32_t count = PyHost_ph_ICol::get_instance()->sq_length(fn_clr_handle(self));
    if (count < 0 && PyErr_Occurred())
        return -1;
    return count;
}

PyObject* icol_length_get(PyObject* self, void*)
{
    Py_ssize_t n = icol_length(self);
    return n < 0 && PyErr_Occurred() ? nullptr : PyLong_FromSsize_t(n);
}

int icol_contains(PyObject* self, PyObject* value)
{
    VariantArg arg{};
    if (!fn_conv_py_variant_to_clr_variant(value, &arg))
        return -1;
    int32_t found = PyHost_ph_ICol::get_instance()->sq_contains(fn_clr_handle(self), &arg);
    if (PyErr_Occurred())
        return -1;
    return found != 0;
}

PyObject* icol_contains_method(PyObject* self, PyObject* value)
{
    int found = icol_contains(self, value);
    return found < 0 ? nullptr : PyBool_FromLong(found);
}

PyObject* icol_count(PyObject* self, PyObject* value)
{
    VariantArg arg{};
    if (!fn_conv_py_variant_to_clr_variant(value, &arg))
        return nullptr;
    int32_t count = PyHost_ph_ICol::get_instance()->count_of(fn_clr_handle(self), &arg);
    if (PyErr_Occurred())
        return nullptr;
    return PyLong_FromLong(count);
}

// The wrapper's own enumeration (wrpPye_collection_tp_iter reports a
// declined GetEnumerator as "the collection was modified during the operation").
PyObject* own_iterator(PyObject* self)
{
    return wrpPye_collection_tp_iter(self);
}

PyObject* icol_concat(PyObject* self, PyObject* other)
{
    if (fn_classify_operand(other) == PyOperandKind::None) {
        PyErr_SetString(PyExc_ValueError, "argument must be iterable or sequence");
        return nullptr;
    }
    Py_ssize_t n = icol_length(self);
    if (n < 0 && PyErr_Occurred())
        return nullptr;
    if (n < 0)
        n = 0;
    PyObject* result = PyList_New(0);
    if (!result)
        return nullptr;
    PyObject* iterator = own_iterator(self);
    if (!iterator)
        goto error;
    {
        Py_ssize_t taken = 0;
        PyObject* item = nullptr;
        while (taken < n && (item = PyIter_Next(iterator))) {
            int rc = PyList_Append(result, item);
            Py_DECREF(item);
            if (rc < 0)
                break;
            ++taken;
        }
        if (PyErr_Occurred()) {
            Py_DECREF(iterator);
            goto error;
        }
        // Fewer items than the count promised, or one more than it.
        PyObject* extra = taken == n ? PyIter_Next(iterator) : nullptr;
        Py_DECREF(iterator);
        if (PyErr_Occurred())
            goto error;
        if (taken != n || extra) {
            Py_XDECREF(extra);
            PyErr_SetString(PyExc_ValueError, "argument must be iterable or sequence");
            goto error;
        }
    }
    if (fn_append_operand_items(result, other) < 0)
        goto error;
    return result;

error:
    Py_DECREF(result);
    return nullptr;
}

PyObject* icol_repeat(PyObject* self, Py_ssize_t times)
{
    if (times < 0)
        times = 0;
    Py_ssize_t n = icol_length(self);
    if (n < 0 && PyErr_Occurred())
        return nullptr;
    if (n < 0)
        n = 0;
    if (times && n > PY_SSIZE_T_MAX / times)
        return PyErr_NoMemory();
    PyObject* iterator = own_iterator(self);
    if (!iterator)
        return nullptr;
    PyObject* result = PyList_New(n * times);
    if (!result) {
        Py_DECREF(iterator);
        return nullptr;
    }
    PyObject** slots = reinterpret_cast<PyListObject*>(result)->ob_item;
    Py_ssize_t i = 0;
    PyObject* item;
    while ((item = PyIter_Next(iterator))) {
        if (i >= n) {
            Py_DECREF(item);
            PyErr_SetString(PyExc_ValueError, "argument must be iterable or sequence");
            break;
        }
        for (Py_ssize_t k = 0; k < times; ++k) {
            Py_INCREF(item);
            slots[i + k * n] = item;
        }
        Py_DECREF(item);
        ++i;
    }
    Py_DECREF(iterator);
    // Slots an enumeration shorter than the count did not reach hold None, so
    // the list stays safe to use.
    for (Py_ssize_t k = 0; k < n * times; ++k) {
        if (!slots[k]) {
            Py_INCREF(Py_None);
            slots[k] = Py_None;
        }
    }
    if (PyErr_Occurred()) {
        Py_DECREF(result);
        return nullptr;
    }
    return result;
}

PyObject* icol_copy(PyObject* self, PyObject*)
{
    return icol_repeat(self, 1);
}

PyMethodDef icol_methods[] = {
    {"count", (PyCFunction)icol_count, METH_O, nullptr},
    {"copy", (PyCFunction)icol_copy, METH_NOARGS, nullptr},
    {"contains", (PyCFunction)icol_contains_method, METH_O, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyGetSetDef icol_getset[] = {
    {"length", icol_length_get, nullptr, nullptr, nullptr},
    {nullptr, nullptr, nullptr, nullptr, nullptr},
};

PySequenceMethods icol_as_sequence = {
    icol_length,    // sq_length
    icol_concat,    // sq_concat
    icol_repeat,    // sq_repeat
    nullptr,        // sq_item
    nullptr,        // was_sq_slice
    nullptr,        // sq_ass_item
    nullptr,        // was_sq_ass_slice
    icol_contains,  // sq_contains
    nullptr,        // sq_inplace_concat
    nullptr,        // sq_inplace_repeat
};

PyTypeObject make_icol_type(const char* name, newfunc tp_new)
{
    PyTypeObject type = fn_wrapper_type(name, sizeof(PyClrObject), tp_new);
    type.tp_as_sequence = &icol_as_sequence;
    type.tp_iter = wrpPye_collection_tp_iter;
    type.tp_methods = icol_methods;
    type.tp_getset = icol_getset;
    return type;
}

PyTypeObject make_iterable_type()
{
    PyTypeObject type = fn_wrapper_type("_wrpgen._interop._IterableWrapper", sizeof(PyClrObject),
                                        fn_interop_tp_new<PyInteropType::Iterable>);
    type.tp_iter = wrpPye_collection_tp_iter;
    return type;
}

PyTypeObject make_iterator_type()
{
    PyTypeObject type =
        fn_wrapper_type("_wrpgen._interop._IterWrapper", sizeof(PyClrObject), fn_interop_tp_new<PyInteropType::Iter>);
    type.tp_iter = iterator_self;
    type.tp_iternext = iterator_next;
    return type;
}

// ---- argument conversions -------------------------------------------------

enum class Fallback { ListOrSequence, Collection, Iterable, Iterator };

bool has_length(PyTypeObject* type)
{
    return (type->tp_as_sequence && type->tp_as_sequence->sq_length) ||
           (type->tp_as_mapping && type->tp_as_mapping->mp_length);
}

// Steps shared by every collection kind: None, the wrapper (exactly, through
// its additional interfaces, or as a subtype), a host-marked object the proxy
// accepts, then the plain Python objects of the kind.
int convert(PyObject* obj, VariantArg* out, PyTypeObject* wrapper, bool subtypes, bool (*assignable)(void*),
            Fallback fallback, const char* kind_name)
{
    out->type = 0;
    out->value = nullptr;
    if (obj == Py_None)
        return 1;
    PyTypeObject* type = Py_TYPE(obj);
    if (fn_is_this_module_clr_object(obj)) {
        bool matched = subtypes ? PyType_IsSubtype(type, wrapper)
                                : (type == wrapper || fn_contains_additional_ifc_markattr(obj, wrapper));
        if (matched) {
            out->value = fn_clr_handle(obj);
            return 1;
        }
    }
    if (fn_is_host_marked_wrapper(obj)) {
        bool accepted = assignable(fn_clr_handle(obj));
        if (PyErr_Occurred())
            return 0;
        if (accepted) {
            out->value = fn_clr_handle(obj);
            return 1;
        }
    } else {
        int32_t kind = 0;
        switch (fallback) {
        case Fallback::ListOrSequence:
            if (PyList_Check(obj))
                kind = 1;
            else if (PySequence_Check(obj) && type->tp_as_sequence->sq_length)
                kind = 2;  // indexable and sized: a set or a dict is neither a list nor a sequence
            break;
        case Fallback::Collection:
            if (has_length(type) && type->tp_iter)
                kind = 1;
            break;
        case Fallback::Iterable:
            if (type->tp_iter)
                kind = 1;
            break;
        case Fallback::Iterator:
            if (PyIter_Check(obj))
                kind = 1;
            break;
        }
        if (kind) {
            out->type = kind;
            out->value = obj;
            return 1;
        }
    }
    PyErr_Format(PyExc_TypeError, "can't build %s value from '%s'", kind_name, type->tp_name);
    return 0;
}

}  // namespace

PyTypeObject wrpPye_tyds_FFFFFFFF_IterWrapper = make_iterator_type();
PyTypeObject wrpPye_tyds_FFFFFFFF_IterableWrapper = make_iterable_type();
PyTypeObject wrpPye_tyds_FFFFFFFF_IColWrapper =
    make_icol_type("_wrpgen._interop._IColWrapper", fn_interop_tp_new<PyInteropType::ICol>);
PyTypeObject wrpPye_tyds_FFFFFFFF_RoColBaseWrapper =
    make_icol_type("_wrpgen._interop._RoColBaseWrapper", fn_interop_tp_new<PyInteropType::RoColBase>);

PyObject* wrpPye_collection_tp_iter(PyObject* self)
{
    PyObjectOutArg out{nullptr, 0};
    int32_t status = PyHost_ph_Iterable::get_instance()->get_enumerator(fn_clr_handle(self), &out);
    return fn_enumerator_to_py(status, out, &wrpPye_tyds_FFFFFFFF_IterWrapper);
}

PyObject* fn_enumerator_to_py(int32_t status, const PyObjectOutArg& out, PyTypeObject* iter_type)
{
    if (PyErr_Occurred())
        return nullptr;  // a raising entry wrote no handle
    if (status < 0 || !out.handle) {
        // The managed side declined without raising.
        PyErr_SetString(PyExc_ValueError, "the collection was modified during the operation");
        return nullptr;
    }
    return fn_conv_clr_ifcimpl_to_py_ifcimpl(out, iter_type);
}

int wrpPye_conv_py_to_clr_ilist(PyObject* obj, VariantArg* out)
{
    return convert(obj, out, &wrpPye_tyds_FFFFFFFF_IListWrapper, false, fn_host_accepts<PyHost_ph_IList>,
                   Fallback::ListOrSequence, "List");
}

int wrpPye_conv_py_to_clr_icol(PyObject* obj, VariantArg* out)
{
    return convert(obj, out, &wrpPye_tyds_FFFFFFFF_IColWrapper, false, fn_host_accepts<PyHost_ph_ICol>,
                   Fallback::Collection, "List");
}

int wrpPye_conv_py_to_clr_array(PyObject* obj, VariantArg* out)
{
    return convert(obj, out, &wrpPye_tyds_FFFFFFFF_ArrayWrapper, true, fn_host_accepts<PyHost_ph_Array>,
                   Fallback::ListOrSequence, "Array");
}

int wrpPye_conv_py_to_clr_arrlist(PyObject* obj, VariantArg* out)
{
    return convert(obj, out, &wrpPye_tyds_FFFFFFFF_ArrListWrapper, true, fn_host_accepts<PyHost_ph_ArrList>,
                   Fallback::ListOrSequence, "ArrayList");
}

int wrpPye_conv_py_to_clr_colbase(PyObject* obj, VariantArg* out)
{
    return convert(obj, out, &wrpPye_tyds_FFFFFFFF_ColBaseWrapper, true, fn_host_accepts<PyHost_ph_ColBase>,
                   Fallback::ListOrSequence, "CollectionBase");
}

int wrpPye_conv_py_to_clr_rocolbase(PyObject* obj, VariantArg* out)
{
    return convert(obj, out, &wrpPye_tyds_FFFFFFFF_RoColBaseWrapper, true, fn_host_accepts<PyHost_ph_RoColBase>,
                   Fallback::ListOrSequence, "ReadOnlyCollectionBase");
}

int wrpPye_conv_py_to_clr_iter(PyObject* obj, VariantArg* out)
{
    return convert(obj, out, &wrpPye_tyds_FFFFFFFF_IterableWrapper, false, fn_host_accepts<PyHost_ph_Iterable>,
                   Fallback::Iterable, "IEnumerable");
}

int wrpPye_conv_py_to_clr_iterator(PyObject* obj, VariantArg* out)
{
    return convert(obj, out, &wrpPye_tyds_FFFFFFFF_IterWrapper, false, fn_host_accepts<PyHost_ph_Iter>,
                   Fallback::Iterator, "IEnumerator");
}

bool wrpPye_is_not_valid_icol(std::string& message)
{
    return fn_host_is_not_valid<PyHost_ph_ICol>(message);
}
bool wrpPye_is_not_valid_ilist(std::string& message)
{
    return fn_host_is_not_valid<PyHost_ph_IList>(message);
}
bool wrpPye_is_not_valid_array(std::string& message)
{
    return fn_host_is_not_valid<PyHost_ph_Array>(message);
}
bool wrpPye_is_not_valid_arrlist(std::string& message)
{
    return fn_host_is_not_valid<PyHost_ph_ArrList>(message);
}
bool wrpPye_is_not_valid_colbase(std::string& message)
{
    return fn_host_is_not_valid<PyHost_ph_ColBase>(message);
}
bool wrpPye_is_not_valid_rocolbase(std::string& message)
{
    return fn_host_is_not_valid<PyHost_ph_RoColBase>(message);
}
bool wrpPye_is_not_valid_iter(std::string& message)
{
    return fn_host_is_not_valid<PyHost_ph_Iterable>(message);
}
bool wrpPye_is_not_valid_iterator(std::string& message)
{
    return fn_host_is_not_valid<PyHost_ph_Iter>(message);
}

PyObject* wrpPye_conv_clr_collection_to_py(const PyCollectionArg& arg, PyTypeObject* least_derived)
{
    return fn_conv_clr_ifcimpl_to_py_ifcimpl_wps(arg, least_derived);
}

PyObject* wrpPye_conv_clr_ilist_to_py(const PyCollectionArg& arg)
{
    return wrpPye_conv_clr_collection_to_py(arg, &wrpPye_tyds_FFFFFFFF_IListWrapper);
}
PyObject* wrpPye_conv_clr_icol_to_py(const PyCollectionArg& arg)
{
    return wrpPye_conv_clr_collection_to_py(arg, &wrpPye_tyds_FFFFFFFF_IColWrapper);
}
PyObject* wrpPye_conv_clr_array_to_py(const PyCollectionArg& arg)
{
    return wrpPye_conv_clr_collection_to_py(arg, &wrpPye_tyds_FFFFFFFF_ArrayWrapper);
}
PyObject* wrpPye_conv_clr_arrlist_to_py(const PyCollectionArg& arg)
{
    return wrpPye_conv_clr_collection_to_py(arg, &wrpPye_tyds_FFFFFFFF_ArrListWrapper);
}
PyObject* wrpPye_conv_clr_colbase_to_py(const PyCollectionArg& arg)
{
    return wrpPye_conv_clr_collection_to_py(arg, &wrpPye_tyds_FFFFFFFF_ColBaseWrapper);
}
PyObject* wrpPye_conv_clr_rocolbase_to_py(const PyCollectionArg& arg)
{
    return wrpPye_conv_clr_collection_to_py(arg, &wrpPye_tyds_FFFFFFFF_RoColBaseWrapper);
}
PyObject* wrpPye_conv_clr_iter_to_py(const PyCollectionArg& arg)
{
    return wrpPye_conv_clr_collection_to_py(arg, &wrpPye_tyds_FFFFFFFF_IterableWrapper);
}
PyObject* wrpPye_conv_clr_iterator_to_py(const PyCollectionArg& arg)
{
    return wrpPye_conv_clr_collection_to_py(arg, &wrpPye_tyds_FFFFFFFF_IterWrapper);
}
