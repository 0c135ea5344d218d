// _IListWrapper, _ArrListWrapper, _ArrayWrapper and _ColBaseWrapper: managed
// list-like objects with the Python list protocol. Every operation is one or
// a few calls of the proxy's entries; results of slicing, concatenation,
// repetition and copy() are new Python lists.
#include <type_traits>

#include "interop/collection_hosts.h"
#include "interop/collections.h"
#include "interop/subscript.h"
#include "interop/wrapper_common.h"
#include "marshal/scalars.h"
#include "marshal/variant.h"
#include "objects/clr_object.h"

namespace {

const PyHostState& ilist_state()
{
    static const PyHostState s =
        fn_interop_host_state({wrpPye_is_not_valid_ilist, wrpPye_is_not_valid_icol, wrpPye_is_not_valid_iter,
                               wrpPye_is_not_valid_iterator});
    return s;
}

const PyHostState& colbase_state()
{
    static const PyHostState s =
        fn_interop_host_state({wrpPye_is_not_valid_colbase, wrpPye_is_not_valid_ilist, wrpPye_is_not_valid_icol,
                               wrpPye_is_not_valid_iter, wrpPye_is_not_valid_iterator});
    return s;
}

const PyHostState& array_state()
{
    static const PyHostState s = fn_interop_host_state(
        {wrpPye_is_not_valid_array, wrpPye_is_not_valid_iter, wrpPye_is_not_valid_iterator});
    return s;
}

const PyHostState& arrlist_state()
{
    static const PyHostState s = fn_interop_host_state(
        {wrpPye_is_not_valid_arrlist, wrpPye_is_not_valid_iter, wrpPye_is_not_valid_iterator});
    return s;
}

PyObject* ilist_tp_new(PyTypeObject* type, PyObject*, PyObject*) { return fn_clr_object_checked_new(type, ilist_state()); }
PyObject* colbase_tp_new(PyTypeObject* type, PyObject*, PyObject*) { return fn_clr_object_checked_new(type, colbase_state()); }
PyObject* array_tp_new(PyTypeObject* type, PyObject*, PyObject*) { return fn_clr_object_checked_new(type, array_state()); }
PyObject* arrlist_tp_new(PyTypeObject* type, PyObject*, PyObject*) { return fn_clr_object_checked_new(type, arrlist_state()); }

PyObject* same_type_richcompare(PyObject* self, PyObject* other, int op)
{
    if (!PyObject_TypeCheck(other, Py_TYPE(self)))
        Py_RETURN_NOTIMPLEMENTED;
    return wrapClrObject_tp_richcompare(fn_clr_handle(self), fn_clr_handle(other), op);
}

int convert_variant(PyObject* obj, void* out)
{
    return fn_conv_py_variant_to_clr_variant(obj, static_cast<VariantArg*>(out));
}

PyObject* index_error()
{
    PyErr_SetString(PyExc_IndexError, "list index out of range");
    return nullptr;
}

template <typename Host>
struct ListOps {
    static constexpr bool kResizable = !std::is_same_v<Host, PyHost_ph_Array>;

    static const Host* host() { return Host::get_instance(); }
    static void* handle(PyObject* self) { return fn_clr_handle(self); }

    // The element count; -1 with an error set on failure. A negative count
    // without an error is passed on as it is.
    static Py_ssize_t length(PyObject* self)
    {
        int32_t count;
        if constexpr (std::is_same_v<Host, PyHost_ph_IList>)
            count = PyHost_ph_ICol::get_instance()->sq_length(handle(self));
        else
            count = host()->sq_length(handle(self));
        if (PyErr_Occurred())
            return -1;
        return count;
    }

    static PyObject* length_get(PyObject* self, void*)
    {
        Py_ssize_t n = length(self);
        return n == -1 && PyErr_Occurred() ? nullptr : PyLong_FromSsize_t(n);
    }

    static PyObject* get_item(PyObject* self, Py_ssize_t index)
    {
        PyObject* item = nullptr;
        int32_t status = host()->sq_getitem(handle(self), fn_index_to_clr(index), &item);
        if (PyErr_Occurred()) {
            Py_XDECREF(item);
            return nullptr;
        }
        if (status == 2)
            return index_error();
        if (status != 0) {
            Py_XDECREF(item);
            PyErr_Format(PyExc_RuntimeError, "item read failed with status %d", (int)status);
            return nullptr;
        }
        if (!item)
            Py_RETURN_NONE;
        return item;
    }

    // New reference to element i through the unchecked reader.
    static PyObject* get_item_nocheck(PyObject* self, Py_ssize_t index)
    {
        PyObject* item = host()->sq_getitem_nocheck(handle(self), fn_index_to_clr(index));
        if (PyErr_Occurred()) {
            Py_XDECREF(item);
            return nullptr;
        }
        if (!item)
            PyErr_SetString(PyExc_RuntimeError, "the managed list gave no element");
        return item;
    }

    static PyObject* sq_item(PyObject* self, Py_ssize_t index) { return get_item(self, index); }

    static PyObject* subscript(PyObject* self, PyObject* key)
    {
        Py_ssize_t n = length(self);
        if (n == -1 && PyErr_Occurred())
            return nullptr;
        return fn_subscript_sizable(
            self, key, n, [](PyObject* o, Py_ssize_t i, const void*) { return get_item(o, i); },
            [](PyObject* o, Py_ssize_t i, const void*) { return get_item_nocheck(o, i); }, nullptr);
    }

    static int set_item(PyObject* self, Py_ssize_t index, PyObject* value)
    {
        void* h = handle(self);
        if (!value) {
            if constexpr (!kResizable) {
                PyErr_SetString(PyExc_ValueError, "elements removing not supported");
                return -1;
            } else {
                int32_t status = host()->remove_at(h, fn_index_to_clr(index));
                if (PyErr_Occurred())
                    return -1;
                if (status == 2) {
                    index_error();
                    return -1;
                }
                return 0;
            }
        }
        VariantArg arg{};
        if (!fn_conv_py_variant_to_clr_variant(value, &arg))
            return -1;
        int32_t status = host()->sq_setitem(h, fn_index_to_clr(index), &arg);
        if (PyErr_Occurred())
            return -1;
        if (status == 2) {
            index_error();
            return -1;
        }
        return 0;
    }

    static int sq_ass_item(PyObject* self, Py_ssize_t index, PyObject* value) { return set_item(self, index, value); }

    // Writes items of `source` (a fast sequence or a sized sequence) one by one.
    static int assign_items(PyObject* self, PyObject* source, bool fast, Py_ssize_t start, Py_ssize_t step,
                            Py_ssize_t slice_length)
    {
        void* h = handle(self);
        for (Py_ssize_t k = 0; k < slice_length; ++k) {
            PyObject* item = fast ? PySequence_Fast_GET_ITEM(source, k) : PySequence_GetItem(source, k);
            if (!item)
                return -1;
            if (fast)
                Py_INCREF(item);
            VariantArg arg{};
            int ok = fn_conv_py_variant_to_clr_variant(item, &arg);
            if (ok)
                host()->sq_setitem_nocheck(h, fn_index_to_clr(start + k * step), &arg);
            Py_DECREF(item);
            if (!ok || PyErr_Occurred())
                return -1;
        }
        return 0;
    }

    static int assign_slice(PyObject* self, Py_ssize_t start, Py_ssize_t step, Py_ssize_t slice_length,
                            PyObject* value)
    {
        PyTypeObject* type = Py_TYPE(value);
        if (type == &PyList_Type || type == &PyTuple_Type) {
            Py_ssize_t size = PySequence_Fast_GET_SIZE(value);
            if (size != slice_length) {
                PyErr_Format(PyExc_ValueError, "attempt to assign sequence of size %zd to extended slice of size %zd",
                             size, slice_length);
                return -1;
            }
            return assign_items(self, value, true, start, step, slice_length);
        }
        if (!type->tp_as_sequence || !type->tp_as_sequence->sq_length) {
            PyErr_SetString(PyExc_TypeError, "must assign iterable to extended slice");
            return -1;
        }
        Py_ssize_t size = PySequence_Size(value);
        if (size < 0 && PyErr_Occurred())
            return -1;
        if (size != slice_length) {
            PyErr_Format(PyExc_ValueError, "attempt to assign sequence of size %zd to extended slice of size %zd",
                         size, slice_length);
            return -1;
        }
        if (fn_is_managed_wrapper(value)) {
            int32_t handled = host()->mp_set_items(handle(self), fn_clr_handle(value), fn_index_to_clr(start),
                                                   fn_index_to_clr(slice_length), fn_index_to_clr(step));
            if (PyErr_Occurred())
                return -1;
            if (handled == 1)
                return 0;
        }
        return assign_items(self, value, false, start, step, slice_length);
    }

    static int ass_subscript(PyObject* self, PyObject* key, PyObject* value)
    {
        if (PyIndex_Check(key)) {
            Py_ssize_t index = PyNumber_AsSsize_t(key, PyExc_IndexError);
            if (index == -1 && PyErr_Occurred())
                return -1;
            if (index < 0) {
                Py_ssize_t n = length(self);
                if (n == -1 && PyErr_Occurred())
                    return -1;
                index += n;
            }
            return set_item(self, index, value);
        }
        if (!PySlice_Check(key)) {
            PyErr_Format(PyExc_TypeError, "list indices must be integers or slices, not %.200s",
                         Py_TYPE(key)->tp_name);
            return -1;
        }
        if (!kResizable && !value) {
            PyErr_SetString(PyExc_ValueError, "elements removing not supported");
            return -1;
        }
        Py_ssize_t start, stop, step;
        if (PySlice_Unpack(key, &start, &stop, &step) < 0)
            return -1;
        Py_ssize_t n = length(self);
        if (n == -1 && PyErr_Occurred())
            return -1;
        Py_ssize_t slice_length = PySlice_AdjustIndices(n, &start, &stop, step);
        if (value)
            return assign_slice(self, start, step, slice_length, value);
        if constexpr (kResizable) {
            // Removal runs from the highest index down so that earlier removals
            // never shift later targets.
            if (step > 0) {
                start = start + (slice_length - 1) * step;
                step = -step;
            }
            if (start < 0)
                start = 0;
            host()->mp_remove_items(handle(self), fn_index_to_clr(start), fn_index_to_clr(slice_length),
                                    fn_index_to_clr(step));
            return PyErr_Occurred() ? -1 : 0;
        }
        return -1;
    }

    // The wrapper's items (new list), read once each with the unchecked reader.
    static PyObject* items(PyObject* self)
    {
        Py_ssize_t n = length(self);
        if (n == -1 && PyErr_Occurred())
            return nullptr;
        if (n < 0)
            n = 0;
        return fn_items_list(
            self, n, [](PyObject* o, Py_ssize_t i, const void*) { return get_item_nocheck(o, i); }, nullptr);
    }

    static PyObject* concat(PyObject* self, PyObject* other)
    {
        PyObject* result = items(self);
        if (!result)
            return nullptr;
        if (fn_append_operand_items(result, other) < 0) {
            Py_DECREF(result);
            return nullptr;
        }
        return result;
    }

    static PyObject* repeat(PyObject* self, Py_ssize_t times)
    {
        if (times < 0)
            times = 0;
        PyObject* once = items(self);
        if (!once)
            return nullptr;
        Py_ssize_t n = PyList_GET_SIZE(once);
        if (times && n > PY_SSIZE_T_MAX / times) {
            Py_DECREF(once);
            return PyErr_NoMemory();
        }
        PyObject* result = PyList_New(n * times);
        if (!result) {
            Py_DECREF(once);
            return nullptr;
        }
        for (Py_ssize_t i = 0; i < n; ++i) {
            PyObject* item = PyList_GET_ITEM(once, i);
            for (Py_ssize_t k = 0; k < times; ++k) {
                Py_INCREF(item);
                PyList_SET_ITEM(result, i + k * n, item);
            }
        }
        Py_DECREF(once);
        return result;
    }

    static PyObject* copy(PyObject* self, PyObject*) { return repeat(self, 1); }

    static int add_item(PyObject* self, PyObject* item)
    {
        VariantArg arg{};
        if (!fn_conv_py_variant_to_clr_variant(item, &arg))
            return -1;
        host()->add(handle(self), &arg);
        return PyErr_Occurred() ? -1 : 0;
    }

    static int extend_with(PyObject* self, PyObject* other)
    {
        if (fn_is_managed_wrapper(other)) {
            int32_t handled = host()->sq_inplace_concat(handle(self), fn_clr_handle(other));
            if (PyErr_Occurred())
                return -1;
            if (handled == 1)
                return 0;
        }
        return fn_for_each_operand_item(
            other, [self](PyObject* item) { return add_item(self, item); },
            [self](Py_ssize_t size) {
                if (!host()->has_ensure_capacity())
                    return 0;
                host()->ensure_capacity(handle(self), fn_index_to_clr(size));
                return PyErr_Occurred() ? -1 : 0;
            });
    }

    static PyObject* extend(PyObject* self, PyObject* other)
    {
        if (extend_with(self, other) < 0)
            return nullptr;
        Py_RETURN_NONE;
    }

    static PyObject* inplace_concat(PyObject* self, PyObject* other)
    {
        if (extend_with(self, other) < 0)
            return nullptr;
        Py_INCREF(self);
        return self;
    }

    static PyObject* inplace_repeat(PyObject* self, Py_ssize_t times)
    {
        host()->sq_inplace_repeat(handle(self), fn_index_to_clr(times));
        if (PyErr_Occurred())
            return nullptr;
        Py_INCREF(self);
        return self;
    }

    static PyObject* append(PyObject* self, PyObject* value)
    {
        if (add_item(self, value) < 0)
            return nullptr;
        Py_RETURN_NONE;
    }

    static PyObject* insert(PyObject* self, PyObject* args)
    {
        Py_ssize_t index;
        VariantArg arg{};
        if (!PyArg_ParseTuple(args, "nO&:insert", &index, convert_variant, &arg))
            return nullptr;
        host()->insert(handle(self), fn_index_to_clr(index), &arg);
        if (PyErr_Occurred())
            return nullptr;
        Py_RETURN_NONE;
    }

    static PyObject* remove(PyObject* self, PyObject* value)
    {
        VariantArg arg{};
        if (!fn_conv_py_variant_to_clr_variant(value, &arg))
            return nullptr;
        bool removed = host()->remove(handle(self), &arg);
        if (PyErr_Occurred())
            return nullptr;
        if (!removed) {
            PyErr_SetString(PyExc_ValueError, "list.remove(x): x not in list");
            return nullptr;
        }
        Py_RETURN_NONE;
    }

    static PyObject* pop(PyObject* self, PyObject* args)
    {
        if (fn_check_args_count_out_of_range(PyTuple_GET_SIZE(args), "pop", 0, 1))
            return nullptr;
        Py_ssize_t index = -1;
        int32_t has_index = PyTuple_GET_SIZE(args) == 1 && PyTuple_GET_ITEM(args, 0) != Py_None;
        if (!fn_conv_py_optional_to_ssize_t(args, &index))
            return nullptr;
        PyObject* item = nullptr;
        int32_t status = host()->pop(handle(self), has_index, fn_index_to_clr(index), &item);
        if (PyErr_Occurred()) {
            Py_XDECREF(item);
            return nullptr;
        }
        switch (status) {
        case 0:
            if (!item)
                Py_RETURN_NONE;
            return item;
        case 1:
            PyErr_SetString(PyExc_IndexError, "pop from empty list");
            break;
        case 2:
            PyErr_SetString(PyExc_IndexError, "pop index out of range");
            break;
        default:
            PyErr_Format(PyExc_RuntimeError, "pop failed with status %d", (int)status);
            break;
        }
        Py_XDECREF(item);
        return nullptr;
    }

    static PyObject* clear(PyObject* self, PyObject*)
    {
        host()->clear(handle(self));
        if (PyErr_Occurred())
            return nullptr;
        Py_RETURN_NONE;
    }

    static PyObject* reverse(PyObject* self, PyObject*)
    {
        host()->reverse(handle(self));
        if (PyErr_Occurred())
            return nullptr;
        Py_RETURN_NONE;
    }

    static PyObject* index(PyObject* self, PyObject* args)
    {
        VariantArg arg{};
        Py_ssize_t start = 0, stop = 0;
        if (!PyArg_ParseTuple(args, "O&|nn:index", convert_variant, &arg, &start, &stop))
            return nullptr;
        Py_ssize_t given = PyTuple_GET_SIZE(args);
        int32_t position = host()->index_by(handle(self), given >= 2, fn_index_to_clr(start), given >= 3,
                                            fn_index_to_clr(stop), &arg);
        if (PyErr_Occurred())
            return nullptr;
        if (position < 0) {
            PyErr_SetString(PyExc_ValueError, "value is not in list");
            return nullptr;
        }
        return PyLong_FromLong(position);
    }

    static PyObject* count(PyObject* self, PyObject* value)
    {
        VariantArg arg{};
        if (!fn_conv_py_variant_to_clr_variant(value, &arg))
            return nullptr;
        int32_t n = host()->count_of(handle(self), &arg);
        if (PyErr_Occurred())
            return nullptr;
        return PyLong_FromLong(n);
    }

    static int contains(PyObject* self, PyObject* value)
    {
        VariantArg arg{};
        if (!fn_conv_py_variant_to_clr_variant(value, &arg))
            return -1;
        int32_t found = host()->sq_contains(handle(self), &arg);
        if (PyErr_Occurred())
            return -1;
        return found != 0;
    }

    static PyObject* contains_method(PyObject* self, PyObject* value)
    {
        int found = contains(self, value);
        return found < 0 ? nullptr : PyBool_FromLong(found);
    }

    static PyObject* sort(PyObject* self, PyObject* args, PyObject* kwargs)
    {
        static const char* keywords[] = {"key", "reverse", nullptr};
        PyObject* key = Py_None;
        int reverse = 0;
        if (!PyArg_ParseTupleAndKeywords(args, kwargs, "|Op:sort", const_cast<char**>(keywords), &key, &reverse))
            return nullptr;
        if (key != Py_None) {
            PyErr_SetString(PyExc_ValueError, "custom sorting key is not supported");
            return nullptr;
        }
        host()->sort(handle(self), reverse ? 1 : 0);
        if (PyErr_Occurred())
            return nullptr;
        Py_RETURN_NONE;
    }

    static inline PySequenceMethods as_sequence = {
        length,
        concat,
        repeat,
        sq_item,
        nullptr,
        sq_ass_item,
        nullptr,
        contains,
        kResizable ? inplace_concat : nullptr,
        kResizable ? inplace_repeat : nullptr,
    };

    static inline PyMappingMethods as_mapping = {length, subscript, ass_subscript};

    static inline PyGetSetDef getset[] = {
        {"length", length_get, nullptr, nullptr, nullptr},
        {nullptr, nullptr, nullptr, nullptr, nullptr},
    };
};

#define WRP_METHOD(name, fn, flags) {name, (PyCFunction)(void (*)(void))(fn), flags, nullptr}

using IListOps = ListOps<PyHost_ph_IList>;
using ArrListOps = ListOps<PyHost_ph_ArrList>;
using ArrayOps = ListOps<PyHost_ph_Array>;

// The methods of a resizable list; a fixed-size array has only the read-only ones below.
template <typename Ops>
PyMethodDef resizable_methods[] = {
    WRP_METHOD("append", Ops::append, METH_O),
    WRP_METHOD("insert", Ops::insert, METH_VARARGS),
    WRP_METHOD("extend", Ops::extend, METH_O),
    WRP_METHOD("remove", Ops::remove, METH_O),
    WRP_METHOD("pop", Ops::pop, METH_VARARGS),
    WRP_METHOD("clear", Ops::clear, METH_NOARGS),
    WRP_METHOD("index", Ops::index, METH_VARARGS),
    WRP_METHOD("count", Ops::count, METH_O),
    WRP_METHOD("contains", Ops::contains_method, METH_O),
    WRP_METHOD("sort", Ops::sort, METH_VARARGS | METH_KEYWORDS),
    WRP_METHOD("reverse", Ops::reverse, METH_NOARGS),
    WRP_METHOD("copy", Ops::copy, METH_NOARGS),
    {nullptr, nullptr, 0, nullptr},
};

PyMethodDef array_methods[] = {
    WRP_METHOD("index", ArrayOps::index, METH_VARARGS),
    WRP_METHOD("count", ArrayOps::count, METH_O),
    WRP_METHOD("sort", ArrayOps::sort, METH_VARARGS | METH_KEYWORDS),
    WRP_METHOD("reverse", ArrayOps::reverse, METH_NOARGS),
    WRP_METHOD("copy", ArrayOps::copy, METH_NOARGS),
    WRP_METHOD("contains", ArrayOps::contains_method, METH_O),
    {nullptr, nullptr, 0, nullptr},
};

template <typename Ops>
PyTypeObject make_list_type(const char* name, newfunc tp_new, PyMethodDef* methods)
{
    PyTypeObject type{};
    Py_SET_REFCNT(reinterpret_cast<PyObject*>(&type), 1);
    // Renamed "<root>._wrpgen._interop.<name>" when the module is built.
    type.tp_name = name;
    type.tp_basicsize = sizeof(PyClrObject);
    type.tp_flags = Py_TPFLAGS_DEFAULT;
    type.tp_dealloc = wrapClrObject_tp_dealloc;
    type.tp_hash = wrapClrObject_hash;
    type.tp_richcompare = same_type_richcompare;
    type.tp_as_sequence = &Ops::as_sequence;
    type.tp_as_mapping = &Ops::as_mapping;
    type.tp_iter = wrpPye_collection_tp_iter;
    type.tp_methods = methods;
    type.tp_getset = Ops::getset;
    type.tp_init = wrapClrObject_tp_init_fault;
    type.tp_alloc = PyType_GenericAlloc;
    type.tp_new = tp_new;
    return type;
}

}  // namespace

PyTypeObject wrpPye_tyds_FFFFFFFF_IListWrapper =
    make_list_type<IListOps>("_wrpgen._interop._IListWrapper", ilist_tp_new, resizable_methods<IListOps>);
PyTypeObject wrpPye_tyds_FFFFFFFF_ColBaseWrapper =
    make_list_type<IListOps>("_wrpgen._interop._ColBaseWrapper", colbase_tp_new, resizable_methods<IListOps>);
PyTypeObject wrpPye_tyds_FFFFFFFF_ArrayWrapper =
    make_list_type<ArrayOps>("_wrpgen._interop._ArrayWrapper", array_tp_new, array_methods);
PyTypeObject wrpPye_tyds_FFFFFFFF_ArrListWrapper =
    make_list_type<ArrListOps>("_wrpgen._interop._ArrListWrapper", arrlist_tp_new, resizable_methods<ArrListOps>);
