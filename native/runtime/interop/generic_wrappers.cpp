// The slots and methods shared by every typed wrapper of <root>._wrpgen._generic.
// They behave as the untyped interop wrappers do, except that elements cross
// with the element type's own converters: items come back with their most
// derived type and a value of the wrong type fails with the converter's error.
#include "interop/generic_wrappers.h"

#include "interop/collections.h"
#include "interop/subscript.h"
#include "interop/wrapper_common.h"
#include "objects/clr_object.h"
#include "objects/clr_to_py.h"
#include "objects/host_state.h"
#include "objects/markattr.h"

namespace {

PyGnType* gn_type(PyObject* self) { return reinterpret_cast<PyGnType*>(Py_TYPE(self)); }
const PyGnEntries& entries(PyObject* self) { return gn_type(self)->binding()->entries; }
const PyGnElement& element(PyObject* self) { return gn_type(self)->element; }
void* handle(PyObject* self) { return fn_clr_handle(self); }

PyObject* index_error()
{
    PyErr_SetString(PyExc_IndexError, "list index out of range");
    return nullptr;
}

int removal_refused()
{
    PyErr_SetString(PyExc_ValueError, "elements removing not supported");
    return -1;
}

int size_refused(Py_ssize_t given, Py_ssize_t slice_length)
{
    PyErr_Format(PyExc_ValueError, "attempt to assign sequence of size %zd to extended slice of size %zd", given,
                 slice_length);
    return -1;
}

PyObject* gn_tp_new(PyTypeObject* type, PyObject*, PyObject*)
{
    const PyGnBinding* b = reinterpret_cast<PyGnType*>(type)->binding();
    PyHostState state;
    state.not_valid = b->not_valid;
    state.message = b->message;
    return fn_clr_object_checked_new(type, state);
}

PyObject* same_type_richcompare(PyObject* self, PyObject* other, int op)
{
    if (Py_TYPE(other) != Py_TYPE(self))
        Py_RETURN_NOTIMPLEMENTED;
    return wrapClrObject_tp_richcompare(handle(self), handle(other), op);
}

// ---- element access ---------------------------------------------------------

// An element written by managed code as a new reference; null with an error set.
PyObject* element_to_py(PyObject* self, const PyObjectOutArg& out) { return element(self).to_py(out); }

Py_ssize_t length(PyObject* self)
{
    int32_t count = entries(self).sq_length(handle(self));
    if (PyErr_Occurred())
        return -1;
    return count < 0 ? 0 : count;
}

PyObject* length_get(PyObject* self, void*)
{
    Py_ssize_t n = length(self);
    return n < 0 ? nullptr : PyLong_FromSsize_t(n);
}

PyObject* item_checked(PyObject* self, Py_ssize_t index)
{
    PyObjectOutArg out{nullptr, 0};
    int32_t status = entries(self).sq_getitem(handle(self), fn_index_to_clr(index), &out);
    if (PyErr_Occurred())
        return nullptr;
    if (status == 2)
        return index_error();
    if (status != 0) {
        PyErr_Format(PyExc_RuntimeError, "item read failed with status %d", (int)status);
        return nullptr;
    }
    return element_to_py(self, out);
}

PyObject* item_nocheck(PyObject* self, Py_ssize_t index)
{
    PyObjectOutArg out{nullptr, 0};
    entries(self).sq_getitem_nocheck(handle(self), fn_index_to_clr(index), &out);
    if (PyErr_Occurred())
        return nullptr;
    return element_to_py(self, out);
}

PyObject* sq_item(PyObject* self, Py_ssize_t index) { return item_checked(self, index); }

// Converts one value for the element entries; false with the converter's error.
bool to_clr(PyObject* self, PyObject* value, PyGnStorage& storage)
{
    storage = PyGnStorage{};
    return element(self).to_clr(value, storage.bytes) != 0;
}

int store_nocheck(PyObject* self, Py_ssize_t index, PyObject* value)
{
    PyGnStorage storage;
    if (!to_clr(self, value, storage))
        return -1;
    entries(self).sq_setitem_nocheck(handle(self), fn_index_to_clr(index), storage.bytes);
    return PyErr_Occurred() ? -1 : 0;
}

// Every element, in order, as a new list.
PyObject* all_items(PyObject* self)
{
    Py_ssize_t n = length(self);
    if (n < 0)
        return nullptr;
    return fn_items_list(self, n, [](PyObject* o, Py_ssize_t i, const void*) { return item_nocheck(o, i); }, nullptr);
}

PyObject* subscript(PyObject* self, PyObject* key)
{
    Py_ssize_t n = length(self);
    if (n < 0)
        return nullptr;
    return fn_subscript_sizable(
        self, key, n, [](PyObject* o, Py_ssize_t i, const void*) { return item_checked(o, i); },
        [](PyObject* o, Py_ssize_t i, const void*) { return item_nocheck(o, i); }, nullptr);
}

int set_item(PyObject* self, Py_ssize_t index, PyObject* value)
{
    const PyGnEntries& e = entries(self);
    if (!value) {
        if (!e.remove_at)
            return removal_refused();
        int32_t status = e.remove_at(handle(self), fn_index_to_clr(index));
        if (PyErr_Occurred())
            return -1;
        return status == 2 ? (index_error(), -1) : 0;
    }
    PyGnStorage storage;
    if (!to_clr(self, value, storage))
        return -1;
    int32_t status = e.sq_setitem(handle(self), fn_index_to_clr(index), storage.bytes);
    if (PyErr_Occurred())
        return -1;
    if (status == 2)
        return index_error(), -1;
    if (status != 0) {
        PyErr_Format(PyExc_RuntimeError, "item write failed with status %d", (int)status);
        return -1;
    }
    return 0;
}

int sq_ass_item(PyObject* self, Py_ssize_t index, PyObject* value) { return set_item(self, index, value); }

// Slice assignment: exactly slice_length elements, never growing or shrinking.
int assign_slice(PyObject* self, Py_ssize_t start, Py_ssize_t step, Py_ssize_t slice_length, PyObject* value)
{
    if (PyList_CheckExact(value) || PyTuple_CheckExact(value)) {
        Py_ssize_t size = PySequence_Fast_GET_SIZE(value);
        if (size != slice_length)
            return size_refused(size, slice_length);
        for (Py_ssize_t k = 0; k < slice_length; ++k)
            if (store_nocheck(self, start + k * step, PySequence_Fast_GET_ITEM(value, k)) < 0)
                return -1;
        return 0;
    }
    PyTypeObject* type = Py_TYPE(value);
    if (!type->tp_as_sequence || !type->tp_as_sequence->sq_length) {
        PyErr_SetString(PyExc_TypeError, "must assign iterable to extended slice");
        return -1;
    }
    Py_ssize_t size = PySequence_Size(value);
    if (size < 0)
        return -1;
    if (size != slice_length)
        return size_refused(size, slice_length);
    if (fn_is_managed_wrapper(value)) {
        // Offer the whole copy to managed code first.
        int32_t handled = entries(self).mp_set_items(handle(self), handle(value), fn_index_to_clr(start),
                                                      fn_index_to_clr(slice_length), fn_index_to_clr(step));
        if (PyErr_Occurred())
            return -1;
        if (handled == 1)
            return 0;
    }
    for (Py_ssize_t k = 0; k < slice_length; ++k) {
        PyObject* item = PySequence_GetItem(value, k);
        if (!item)
            return -1;
        int rc = store_nocheck(self, start + k * step, item);
        Py_DECREF(item);
        if (rc < 0)
            return -1;
    }
    return 0;
}

int ass_subscript(PyObject* self, PyObject* key, PyObject* value)
{
    Py_ssize_t n = length(self);
    if (n < 0)
        return -1;
    if (PyIndex_Check(key)) {
        Py_ssize_t index = PyNumber_AsSsize_t(key, PyExc_IndexError);
        if (index == -1 && PyErr_Occurred())
            return -1;
        if (index < 0)
            index += n;
        return set_item(self, index, value);
    }
    if (PySlice_Check(key)) {
        Py_ssize_t start, stop, step;
        if (PySlice_Unpack(key, &start, &stop, &step) < 0)
            return -1;
        Py_ssize_t slice_length = PySlice_AdjustIndices(n, &start, &stop, step);
        if (value)
            return assign_slice(self, start, step, slice_length, value);
        const PyGnEntries& e = entries(self);
        if (!e.mp_remove_items)
            return removal_refused();
        if (step > 0) {
            // Remove from the highest index down, so earlier removals never shift later targets.
            start = start + (slice_length - 1) * step;
            step = -step;
        }
        if (start < 0)
            start = 0;
        e.mp_remove_items(handle(self), fn_index_to_clr(start), fn_index_to_clr(slice_length), fn_index_to_clr(step));
        return PyErr_Occurred() ? -1 : 0;
    }
    PyErr_Format(PyExc_TypeError, "list indices must be integers or slices, not %.200s", Py_TYPE(key)->tp_name);
    return -1;
}

// A value the element converter refuses cannot be an element, as for a Python list.
int contains(PyObject* self, PyObject* value)
{
    PyGnStorage storage;
    if (!to_clr(self, value, storage)) {
        if (!PyErr_ExceptionMatches(PyExc_TypeError))
            return -1;
        PyErr_Clear();
        return 0;
    }
    int32_t found = entries(self).sq_contains(handle(self), storage.bytes);
    if (PyErr_Occurred())
        return -1;
    return found != 0;
}

PyObject* contains_method(PyObject* self, PyObject* value)
{
    int found = contains(self, value);
    return found < 0 ? nullptr : PyBool_FromLong(found);
}

PyObject* concat(PyObject* self, PyObject* other)
{
    if (fn_classify_operand(other) == PyOperandKind::None) {
        PyErr_SetString(PyExc_ValueError, "argument must be iterable or sequence");
        return nullptr;
    }
    PyObject* result = all_items(self);
    if (!result)
        return nullptr;
    if (fn_append_operand_items(result, other) < 0) {
        Py_DECREF(result);
        return nullptr;
    }
    return result;
}

PyObject* repeat(PyObject* self, Py_ssize_t times)
{
    PyObject* items = all_items(self);  // read once each, also for a count of 0
    if (!items)
        return nullptr;
    PyObject* result = PySequence_Repeat(items, times < 0 ? 0 : times);
    Py_DECREF(items);
    return result;
}

PyObject* copy(PyObject* self, PyObject*) { return repeat(self, 1); }

int add_one(PyObject* self, PyObject* value)
{
    PyGnStorage storage;
    if (!to_clr(self, value, storage))
        return -1;
    entries(self).add(handle(self), storage.bytes);
    return PyErr_Occurred() ? -1 : 0;
}

PyObject* append(PyObject* self, PyObject* value)
{
    if (add_one(self, value) < 0)
        return nullptr;
    Py_RETURN_NONE;
}

int extend_with(PyObject* self, PyObject* other)
{
    if (fn_is_managed_wrapper(other)) {
        int32_t handled = entries(self).sq_inplace_concat(handle(self), handle(other));
        if (PyErr_Occurred())
            return -1;
        if (handled == 1)
            return 0;
    }
    return fn_for_each_operand_item(
        other, [self](PyObject* item) { return add_one(self, item); }, [](Py_ssize_t) { return 0; });
}

PyObject* extend(PyObject* self, PyObject* other)
{
    if (extend_with(self, other) < 0)
        return nullptr;
    Py_RETURN_NONE;
}

PyObject* inplace_concat(PyObject* self, PyObject* other)
{
    if (extend_with(self, other) < 0)
        return nullptr;
    Py_INCREF(self);
    return self;
}

PyObject* inplace_repeat(PyObject* self, Py_ssize_t times)
{
    entries(self).sq_inplace_repeat(handle(self), fn_index_to_clr(times));
    if (PyErr_Occurred())
        return nullptr;
    Py_INCREF(self);
    return self;
}

PyObject* insert(PyObject* self, PyObject* args)
{
    Py_ssize_t index;
    PyObject* value;
    if (!PyArg_ParseTuple(args, "nO:insert", &index, &value))
        return nullptr;
    PyGnStorage storage;
    if (!to_clr(self, value, storage))
        return nullptr;
    entries(self).insert(handle(self), fn_index_to_clr(index), storage.bytes);
    if (PyErr_Occurred())
        return nullptr;
    Py_RETURN_NONE;
}

PyObject* remove(PyObject* self, PyObject* value)
{
    PyGnStorage storage;
    if (!to_clr(self, value, storage))
        return nullptr;
    uint8_t removed = entries(self).remove(handle(self), storage.bytes);
    if (PyErr_Occurred())
        return nullptr;
    if (!removed) {
        PyErr_SetString(PyExc_ValueError, "list.remove(x): x not in list");
        return nullptr;
    }
    Py_RETURN_NONE;
}

PyObject* pop(PyObject* self, PyObject* args)
{
    PyObject* arg = Py_None;
    if (!PyArg_UnpackTuple(args, "pop", 0, 1, &arg))
        return nullptr;
    int32_t has_index = 0;
    Py_ssize_t index = 0;
    if (arg != Py_None) {
        if (!PyIndex_Check(arg)) {
            PyErr_Format(PyExc_TypeError, "argument should be integer or None, not '%.200s'", Py_TYPE(arg)->tp_name);
            return nullptr;
        }
        index = PyNumber_AsSsize_t(arg, PyExc_IndexError);
        if (index == -1 && PyErr_Occurred())
            return nullptr;
        has_index = 1;
    }
    PyObjectOutArg out{nullptr, 0};
    int32_t status = entries(self).pop(handle(self), has_index, fn_index_to_clr(index), &out);
    if (PyErr_Occurred())
        return nullptr;
    if (status == 1) {
        PyErr_SetString(PyExc_IndexError, "pop from empty list");
        return nullptr;
    }
    if (status == 2) {
        PyErr_SetString(PyExc_IndexError, "pop index out of range");
        return nullptr;
    }
    return element_to_py(self, out);
}

PyObject* clear(PyObject* self, PyObject*)
{
    entries(self).clear(handle(self));
    if (PyErr_Occurred())
        return nullptr;
    Py_RETURN_NONE;
}

PyObject* reverse(PyObject* self, PyObject*)
{
    entries(self).reverse(handle(self));
    if (PyErr_Occurred())
        return nullptr;
    Py_RETURN_NONE;
}

PyObject* sort(PyObject* self, PyObject* args, PyObject* kwargs)
{
    static const char* keywords[] = {"key", "reverse", nullptr};
    PyObject* key = Py_None;
    int reversed = 0;
    if (!PyArg_ParseTupleAndKeywords(args, kwargs, "|Op:sort", const_cast<char**>(keywords), &key, &reversed))
        return nullptr;
    if (key != Py_None) {
        PyErr_SetString(PyExc_ValueError, "custom sorting key is not supported");
        return nullptr;
    }
    entries(self).sort(handle(self), reversed);
    if (PyErr_Occurred())
        return nullptr;
    Py_RETURN_NONE;
}

PyObject* index(PyObject* self, PyObject* args)
{
    PyObject* value;
    Py_ssize_t start = 0, stop = 0;
    if (!PyArg_ParseTuple(args, "O|nn:index", &value, &start, &stop))
        return nullptr;
    PyGnStorage storage;
    if (!to_clr(self, value, storage))
        return nullptr;
    Py_ssize_t given = PyTuple_GET_SIZE(args);
    int32_t position = entries(self).index_by(handle(self), given >= 2, fn_index_to_clr(start), given >= 3,
                                              fn_index_to_clr(stop), storage.bytes);
    if (PyErr_Occurred())
        return nullptr;
    if (position < 0) {
        PyErr_SetString(PyExc_ValueError, "value is not in list");
        return nullptr;
    }
    return PyLong_FromLong(position);
}

PyObject* count(PyObject* self, PyObject* value)
{
    PyGnStorage storage;
    if (!to_clr(self, value, storage))
        return nullptr;
    int32_t n = entries(self).count_of(handle(self), storage.bytes);
    if (PyErr_Occurred())
        return nullptr;
    return PyLong_FromLong(n);
}

PyObject* own_iter(PyObject* self)
{
    return wrpPye_gn_tp_iter(self, gn_type(self)->binding(), gn_type(self)->iter_type);
}

PyObject* iterator_self(PyObject* self)
{
    Py_INCREF(self);
    return self;
}

PyObject* iterator_next(PyObject* self)
{
    PyObjectOutArg out{nullptr, 0};
    int32_t status = entries(self).move_next(handle(self), &out);
    if (PyErr_Occurred())
        return nullptr;
    if (status == 0)
        return element_to_py(self, out);
    if (status == 1) {
        PyErr_SetNone(PyExc_StopIteration);
        return nullptr;
    }
    PyErr_Format(PyExc_RuntimeError, "enumeration failed with status %d", (int)status);
    return nullptr;
}

// ---- type templates -----------------------------------------------------------

PyMethodDef list_methods[] = {
    {"append", append, METH_O, nullptr},
    {"insert", insert, METH_VARARGS, nullptr},
    {"extend", extend, METH_O, nullptr},
    {"remove", remove, METH_O, nullptr},
    {"pop", pop, METH_VARARGS, nullptr},
    {"clear", clear, METH_NOARGS, nullptr},
    {"index", index, METH_VARARGS, nullptr},
    {"count", count, METH_O, nullptr},
    {"contains", contains_method, METH_O, nullptr},
    {"sort", (PyCFunction)(void (*)(void))sort, METH_VARARGS | METH_KEYWORDS, nullptr},
    {"reverse", reverse, METH_NOARGS, nullptr},
    {"copy", copy, METH_NOARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyMethodDef array_methods[] = {
    {"index", index, METH_VARARGS, nullptr},
    {"count", count, METH_O, nullptr},
    {"sort", (PyCFunction)(void (*)(void))sort, METH_VARARGS | METH_KEYWORDS, nullptr},
    {"reverse", reverse, METH_NOARGS, nullptr},
    {"copy", copy, METH_NOARGS, nullptr},
    {"contains", contains_method, METH_O, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyGetSetDef length_getset[] = {
    {"length", length_get, nullptr, nullptr, nullptr},
    {nullptr, nullptr, nullptr, nullptr, nullptr},
};

PySequenceMethods list_sequence = {
    length, concat, repeat, sq_item, nullptr, sq_ass_item, nullptr, contains, inplace_concat, inplace_repeat,
};
PySequenceMethods array_sequence = {
    length, concat, repeat, sq_item, nullptr, sq_ass_item, nullptr, contains, nullptr, nullptr,
};
PyMappingMethods list_mapping = {length, subscript, ass_subscript};

void fill_type(PyGnType* t, const char* name)
{
    PyTypeObject& type = t->type;
    type = PyTypeObject{};
    Py_SET_REFCNT(reinterpret_cast<PyObject*>(&type), 1);
    type.tp_name = name;
    type.tp_basicsize = sizeof(PyClrObject);
    type.tp_flags = Py_TPFLAGS_DEFAULT;
    type.tp_dealloc = wrapClrObject_tp_dealloc;
    type.tp_hash = wrapClrObject_hash;
    type.tp_richcompare = same_type_richcompare;
    type.tp_init = wrapClrObject_tp_init_fault;
    type.tp_alloc = PyType_GenericAlloc;
    type.tp_new = gn_tp_new;
    switch (t->kind) {
    case PyGnKind::List:
        type.tp_as_sequence = &list_sequence;
        type.tp_as_mapping = &list_mapping;
        type.tp_methods = list_methods;
        type.tp_getset = length_getset;
        type.tp_iter = own_iter;
        break;
    case PyGnKind::Array:
        // No in-place slots: a += x and a *= n rebind the name to a new list.
        type.tp_as_sequence = &array_sequence;
        type.tp_as_mapping = &list_mapping;
        type.tp_methods = array_methods;
        type.tp_getset = length_getset;
        type.tp_iter = own_iter;
        break;
    case PyGnKind::Iterable:
        type.tp_iter = own_iter;
        break;
    case PyGnKind::Iterator:
        type.tp_iter = iterator_self;
        type.tp_iternext = iterator_next;
        break;
    }
}

bool has_length(PyTypeObject* type)
{
    return (type->tp_as_sequence && type->tp_as_sequence->sq_length) ||
           (type->tp_as_mapping && type->tp_as_mapping->mp_length);
}

}  // namespace

int wrpPye_gn_ready(PyGnType* t, const char* qualified_name)
{
    fill_type(t, qualified_name);
    return PyType_Ready(&t->type);
}

PyObject* wrpPye_gn_result_to_py(const PyCollectionArg& arg, PyGnType* least_derived)
{
    return wrpPye_conv_clr_collection_to_py(arg, &least_derived->type);
}

PyObject* wrpPye_gn_tp_iter(PyObject* self, const PyGnBinding* enumerable, PyTypeObject* iter_type)
{
    if (enumerable->not_valid) {
        PyHostState state;
        state.not_valid = true;
        state.message = enumerable->message;
        return fn_raise_host_state_error(state);
    }
    PyObjectOutArg out{nullptr, 0};
    int32_t status = enumerable->entries.get_enumerator(fn_clr_handle(self), &out);
    if (PyErr_Occurred())
        return nullptr;  // a raising entry wrote no handle
    if (status < 0 || !out.handle) {
        PyErr_SetString(PyExc_ValueError, "the collection was modified during the operation");
        return nullptr;
    }
    return fn_conv_clr_ifcimpl_to_py_ifcimpl(out, iter_type);
}

int wrpPye_gn_conv_py_to_clr(PyObject* obj, VariantArg* out, PyGnType* t, const char* what)
{
    out->type = 0;
    out->value = nullptr;
    if (obj == Py_None)
        return 1;
    PyTypeObject* type = Py_TYPE(obj);
    if (type == &t->type || (fn_is_this_module_clr_object(obj) && fn_contains_additional_ifc_markattr(obj, &t->type))) {
        out->value = fn_clr_handle(obj);
        return 1;
    }
    if (fn_has_host_markattr(obj)) {
        const PyGnBinding* b = t->binding();
        bool accepted = !b->not_valid && b->entries.is_assignable_to(fn_clr_handle(obj)) != 0;
        if (PyErr_Occurred())
            return 0;
        if (accepted) {
            out->value = fn_clr_handle(obj);
            return 1;
        }
    } else {
        int32_t kind = 0;
        if (t->kind == PyGnKind::Iterable) {
            if (type->tp_iter)
                kind = 1;
        } else if (t->kind == PyGnKind::Iterator) {
            if (PyIter_Check(obj))
                kind = 1;
        } else if (PyList_Check(obj)) {
            kind = 1;
        } else if (PySequence_Check(obj) && has_length(type)) {
            kind = 2;
        }
        if (kind) {
            out->type = kind;
            out->value = obj;
            return 1;
        }
    }
    PyErr_Format(PyExc_TypeError, "can't build %s value from '%s'", what, type->tp_name);
    return 0;
}

int32_t wrpPye_gn_clbk_list_get_item(PyObject* list, int32_t index, void* storage, const PyGnElement* element)
{
    PyObject* item = PyList_GetItem(list, index);  // borrowed
    if (!item)
        return PyErr_ExceptionMatches(PyExc_IndexError) ? -2 : -1;
    return element->to_clr(item, storage) ? 0 : -1;
}

int32_t wrpPye_gn_clbk_seq_get_item(PyObject* seq, int32_t index, void* storage, PyObject** keep,
                                    const PyGnElement* element)
{
    *keep = nullptr;
    PyObject* item = PySequence_GetItem(seq, index);  // new reference
    if (!item)
        return PyErr_ExceptionMatches(PyExc_IndexError) ? -2 : -1;
    if (!element->to_clr(item, storage)) {
        Py_DECREF(item);
        return -1;
    }
    *keep = item;
    return 0;
}

int32_t wrpPye_gn_clbk_iter_next(PyObject* iterator, void* storage, PyObject** keep, const PyGnElement* element)
{
    *keep = nullptr;
    PyObject* item = PyIter_Next(iterator);  // new reference
    if (!item)
        return PyErr_Occurred() ? 2 : 1;
    if (!element->to_clr(item, storage)) {
        Py_DECREF(item);
        return 2;
    }
    *keep = item;
    return 0;
}

PyObject* wrpPye_gn_take_object(const PyObjectOutArg& out)
{
    if (!out.handle)
        Py_RETURN_NONE;
    return static_cast<PyObject*>(out.handle);
}
