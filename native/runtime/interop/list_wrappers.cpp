// _IListWrapper, _ArrListWrapper, _ArrayWrapper and _ColBaseWrapper: managed
// list-like objects with the Python list protocol. Every operation is one or
// a few calls of the proxy's entries; results of slicing, concatenation,
// repetition and copy() are new Python lists.
#include <type_traits>

#include "interop/collection_hosts.h"
#include "interop/collections.h"
#include "interop/interop_state.h"
#include "interop/list_protocol.h"
#include "interop/wrapper_common.h"
#include "marshal/scalars.h"
#include "marshal/variant.h"
#include "objects/clr_object.h"

namespace {

int convert_variant(PyObject* obj, void* out)
{
    return fn_conv_py_variant_to_clr_variant(obj, static_cast<VariantArg*>(out));
}

// The untyped families: elements cross as VariantArgs one way and as finished
// Python objects the other way; the list protocol itself is list_protocol's.
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

    // ---- element access, as the list protocol reaches it ----

    static Py_ssize_t access_length(PyObject* self, const void*) { return length(self); }

    static PyObject* get_item(PyObject* self, Py_ssize_t index, const void*)
    {
        PyObject* item = nullptr;
        int32_t status = host()->sq_getitem(handle(self), fn_index_to_clr(index), &item);
        if (PyErr_Occurred() || fn_list_check_status(status, "item read") < 0) {
            Py_XDECREF(item);
            return nullptr;
        }
        if (!item)
            Py_RETURN_NONE;
        return item;
    }

    static PyObject* get_item_nocheck(PyObject* self, Py_ssize_t index, const void*)
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

    static int set_item(PyObject* self, Py_ssize_t index, PyObject* value, const void*)
    {
        VariantArg arg{};
        if (!fn_conv_py_variant_to_clr_variant(value, &arg))
            return -1;
        int32_t status = host()->sq_setitem(handle(self), fn_index_to_clr(index), &arg);
        if (PyErr_Occurred())
            return -1;
        return fn_list_check_status(status, "item write");
    }

    static int set_item_nocheck(PyObject* self, Py_ssize_t index, PyObject* value, const void*)
    {
        VariantArg arg{};
        if (!fn_conv_py_variant_to_clr_variant(value, &arg))
            return -1;
        host()->sq_setitem_nocheck(handle(self), fn_index_to_clr(index), &arg);
        return PyErr_Occurred() ? -1 : 0;
    }

    static int remove_at(PyObject* self, Py_ssize_t index, const void*)
    {
        int32_t status = host()->remove_at(handle(self), fn_index_to_clr(index));
        if (PyErr_Occurred())
            return -1;
        return fn_list_check_status(status, "item removal");
    }

    static int remove_slice(PyObject* self, Py_ssize_t start, Py_ssize_t slice_length, Py_ssize_t step, const void*)
    {
        host()->mp_remove_items(handle(self), fn_index_to_clr(start), fn_index_to_clr(slice_length),
                                fn_index_to_clr(step));
        return PyErr_Occurred() ? -1 : 0;
    }

    static int assign_from_managed(PyObject* self, PyObject* source, Py_ssize_t start, Py_ssize_t slice_length,
                                   Py_ssize_t step, Py_ssize_t, const void*)
    {
        int32_t handled = host()->mp_set_items(handle(self), fn_clr_handle(source), fn_index_to_clr(start),
                                               fn_index_to_clr(slice_length), fn_index_to_clr(step));
        if (PyErr_Occurred())
            return -1;
        return handled == 1;
    }

    static int add(PyObject* self, PyObject* value, const void*)
    {
        VariantArg arg{};
        if (!fn_conv_py_variant_to_clr_variant(value, &arg))
            return -1;
        host()->add(handle(self), &arg);
        return PyErr_Occurred() ? -1 : 0;
    }

    // Only the array list has EnsureCapacity.
    static int reserve(PyObject* self, Py_ssize_t count, const void*)
    {
        if (!host()->has_ensure_capacity())
            return 0;
        host()->ensure_capacity(handle(self), fn_index_to_clr(count));
        return PyErr_Occurred() ? -1 : 0;
    }

    static int extend_from_managed(PyObject* self, PyObject* other, const void*)
    {
        int32_t handled = host()->sq_inplace_concat(handle(self), fn_clr_handle(other));
        if (PyErr_Occurred())
            return -1;
        return handled == 1;
    }

    static inline const PyListAccess access = {
        access_length,
        get_item,
        get_item_nocheck,
        set_item,
        set_item_nocheck,
        kResizable ? remove_at : nullptr,
        kResizable ? remove_slice : nullptr,
        assign_from_managed,
        PyListSliceSource::SizedSequence,
        kResizable ? add : nullptr,
        kResizable ? reserve : nullptr,
        kResizable ? extend_from_managed : nullptr,
    };

    // ---- slots ----

    static PyObject* sq_item(PyObject* self, Py_ssize_t index) { return get_item(self, index, nullptr); }
    static PyObject* subscript(PyObject* self, PyObject* key) { return fn_list_subscript(self, key, &access, nullptr); }
    static int sq_ass_item(PyObject* self, Py_ssize_t index, PyObject* value)
    {
        return fn_list_ass_item(self, index, value, &access, nullptr);
    }
    static int ass_subscript(PyObject* self, PyObject* key, PyObject* value)
    {
        return fn_list_ass_subscript(self, key, value, &access, nullptr);
    }
    static PyObject* concat(PyObject* self, PyObject* other) { return fn_list_concat(self, other, &access, nullptr); }
    static PyObject* repeat(PyObject* self, Py_ssize_t times) { return fn_list_repeat(self, times, &access, nullptr); }
    static PyObject* copy(PyObject* self, PyObject*) { return fn_list_repeat(self, 1, &access, nullptr); }

    static PyObject* extend(PyObject* self, PyObject* other)
    {
        if (fn_list_extend(self, other, &access, nullptr) < 0)
            return nullptr;
        Py_RETURN_NONE;
    }

    static PyObject* inplace_concat(PyObject* self, PyObject* other)
    {
        if (fn_list_extend(self, other, &access, nullptr) < 0)
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

    // ---- methods ----

    static PyObject* append(PyObject* self, PyObject* value)
    {
        if (add(self, value, nullptr) < 0)
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
        return fn_list_remove_result(removed);
    }

    static PyObject* pop(PyObject* self, PyObject* args)
    {
        int32_t has_index;
        Py_ssize_t index;
        if (!fn_list_pop_args(args, &has_index, &index))
            return nullptr;
        PyObject* item = nullptr;
        int32_t status = host()->pop(handle(self), has_index, fn_index_to_clr(index), &item);
        if (PyErr_Occurred()) {
            Py_XDECREF(item);
            return nullptr;
        }
        return fn_list_pop_result(status, item);
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
        PyObject* value;
        int32_t has_start, has_stop;
        Py_ssize_t start, stop;
        if (!fn_list_index_args(args, &value, &has_start, &start, &has_stop, &stop))
            return nullptr;
        VariantArg arg{};
        if (!fn_conv_py_variant_to_clr_variant(value, &arg))
            return nullptr;
        int32_t position =
            host()->index_by(handle(self), has_start, fn_index_to_clr(start), has_stop, fn_index_to_clr(stop), &arg);
        if (PyErr_Occurred())
            return nullptr;
        return fn_list_index_result(position);
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
        int32_t reversed;
        if (!fn_list_sort_args(args, kwargs, &reversed))
            return nullptr;
        host()->sort(handle(self), reversed);
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

#define WRP_METHOD(name, fn, flags)                                                                                    \
    {                                                                                                                  \
        name, (PyCFunction)(void (*)(void))(fn), flags, nullptr                                                        \
    }

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
    PyTypeObject type = fn_wrapper_type(name, sizeof(PyClrObject), tp_new);
    type.tp_as_sequence = &Ops::as_sequence;
    type.tp_as_mapping = &Ops::as_mapping;
    type.tp_iter = wrpPye_collection_tp_iter;
    type.tp_methods = methods;
    type.tp_getset = Ops::getset;
    return type;
}

}  // namespace

PyTypeObject wrpPye_tyds_FFFFFFFF_IListWrapper = make_list_type<IListOps>(
    "_wrpgen._interop._IListWrapper", fn_interop_tp_new<PyInteropType::IList>, resizable_methods<IListOps>);
PyTypeObject wrpPye_tyds_FFFFFFFF_ColBaseWrapper = make_list_type<IListOps>(
    "_wrpgen._interop._ColBaseWrapper", fn_interop_tp_new<PyInteropType::ColBase>, resizable_methods<IListOps>);
PyTypeObject wrpPye_tyds_FFFFFFFF_ArrayWrapper =
    make_list_type<ArrayOps>("_wrpgen._interop._ArrayWrapper", fn_interop_tp_new<PyInteropType::Array>, array_methods);
PyTypeObject wrpPye_tyds_FFFFFFFF_ArrListWrapper = make_list_type<ArrListOps>(
    "_wrpgen._interop._ArrListWrapper", fn_interop_tp_new<PyInteropType::ArrList>, resizable_methods<ArrListOps>);
