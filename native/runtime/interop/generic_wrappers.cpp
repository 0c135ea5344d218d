// The slots and methods shared by every typed wrapper of <root>._wrpgen._generic.
// They behave as the untyped interop wrappers do, except that elements cross
// with the element type's own converters: items come back with their most
// derived type and a value of the wrong type fails with the converter's error.
#include "interop/generic_wrappers.h"

#include "interop/collections.h"
#include "interop/list_protocol.h"
#include "interop/wrapper_common.h"
#include "objects/clr_object.h"
#include "objects/clr_to_py.h"
#include "objects/host_state.h"
#include "objects/markattr.h"

namespace {

PyGnType* gn_type(PyObject* self)
{
    return reinterpret_cast<PyGnType*>(Py_TYPE(self));
}
const PyGnEntries& entries(PyObject* self)
{
    return gn_type(self)->binding()->entries;
}
const PyGnElement& element(PyObject* self)
{
    return gn_type(self)->element;
}
void* handle(PyObject* self)
{
    return fn_clr_handle(self);
}

// The host state of a typed binding (its failures are never inherited).
PyHostState binding_state(const PyGnBinding* binding)
{
    PyHostState state;
    state.not_valid = binding->not_valid;
    state.message = binding->message;
    return state;
}

PyObject* gn_tp_new(PyTypeObject* type, PyObject*, PyObject*)
{
    return fn_clr_object_checked_new(type, binding_state(reinterpret_cast<PyGnType*>(type)->binding()));
}

// ---- element access, as the list protocol reaches it --------------------------

// An element written by managed code as a new reference; null with an error set.
PyObject* element_to_py(PyObject* self, const PyObjectOutArg& out)
{
    return element(self).to_py(out);
}

// Converts one value for the element entries; false with the converter's error.
bool to_clr(PyObject* self, PyObject* value, PyGnStorage& storage)
{
    storage = PyGnStorage{};
    return element(self).to_clr(value, storage.bytes) != 0;
}

Py_ssize_t length(PyObject* self)
{
    int32_t count = entries(self).sq_length(handle(self));
    if (PyErr_Occurred())
        return -1;
    return count < 0 ? 0 : count;
}

Py_ssize_t access_length(PyObject* self, const void*)
{
    return length(self);
}

PyObject* get_item(PyObject* self, Py_ssize_t index, const void*)
{
    PyObjectOutArg out{nullptr, 0};
    int32_t status = entries(self).sq_getitem(handle(self), fn_index_to_clr(index), &out);
    if (PyErr_Occurred() || fn_list_check_status(status, "item read") < 0)
        return nullptr;
    return element_to_py(self, out);
}

PyObject* get_item_nocheck(PyObject* self, Py_ssize_t index, const void*)
{
    PyObjectOutArg out{nullptr, 0};
    entries(self).sq_getitem_nocheck(handle(self), fn_index_to_clr(index), &out);
    if (PyErr_Occurred())
        return nullptr;
    return element_to_py(self, out);
}

int set_item(PyObject* self, Py_ssize_t index, PyObject* value, const void*)
{
    PyGnStorage storage;
    if (!to_clr(self, value, storage))
        return -1;
    int32_t status = entries(self).sq_setitem(handle(self), fn_index_to_clr(index), storage.bytes);
    if (PyErr_Occurred())
        return -1;
    return fn_list_check_status(status, "item write");
}

int set_item_nocheck(PyObject* self, Py_ssize_t index, PyObject* value, const void*)
{
    PyGnStorage storage;
    if (!to_clr(self, value, storage))
        return -1;
    entries(self).sq_setitem_nocheck(handle(self), fn_index_to_clr(index), storage.bytes);
    return PyErr_Occurred() ? -1 : 0;
}

int remove_at(PyObject* self, Py_ssize_t index, const void*)
{
    int32_t status = entries(self).remove_at(handle(self), fn_index_to_clr(index));
    if (PyErr_Occurred())
        return -1;
    return fn_list_check_status(status, "item removal");
}

int remove_slice(PyObject* self, Py_ssize_t start, Py_ssize_t slice_length, Py_ssize_t step, const void*)
{
    entries(self).mp_remove_items(handle(self), fn_index_to_clr(start), fn_index_to_clr(slice_length),
                                  fn_index_to_clr(step));
    return PyErr_Occurred() ? -1 : 0;
}

int assign_from_managed(PyObject* self, PyObject* source, Py_ssize_t start, Py_ssize_t slice_length, Py_ssize_t step,
                        Py_ssize_t, const void*)
{
    int32_t handled = entries(self).mp_set_items(handle(self), handle(source), fn_index_to_clr(start),
                                                 fn_index_to_clr(slice_length), fn_index_to_clr(step));
    if (PyErr_Occurred())
        return -1;
    return handled == 1;
}

int add(PyObject* self, PyObject* value, const void*)
{
    PyGnStorage storage;
    if (!to_clr(self, value, storage))
        return -1;
    entries(self).add(handle(self), storage.bytes);
    return PyErr_Occurred() ? -1 : 0;
}

int extend_from_managed(PyObject* self, PyObject* other, const void*)
{
    int32_t handled = entries(self).sq_inplace_concat(handle(self), handle(other));
    if (PyErr_Occurred())
        return -1;
    return handled == 1;
}

const PyListAccess list_access = {
    access_length,
    get_item,
    get_item_nocheck,
    set_item,
    set_item_nocheck,
    remove_at,
    remove_slice,
    assign_from_managed,
    PyListSliceSource::SizedSequence,
    add,
    nullptr,
    extend_from_managed,
};

// A fixed-size array: no removal and no growth.
const PyListAccess array_access = {
    access_length,
    get_item,
    get_item_nocheck,
    set_item,
    set_item_nocheck,
    nullptr,
    nullptr,
    assign_from_managed,
    PyListSliceSource::SizedSequence,
    nullptr,
    nullptr,
    nullptr,
};

const PyListAccess* access_of(PyObject* self)
{
    return gn_type(self)->kind == PyGnKind::List ? &list_access : &array_access;
}

// ---- slots ----------------------------------------------------------------------

PyObject* length_get(PyObject* self, void*)
{
    Py_ssize_t n = length(self);
    return n < 0 ? nullptr : PyLong_FromSsize_t(n);
}

PyObject* sq_item(PyObject* self, Py_ssize_t index)
{
    return get_item(self, index, nullptr);
}
PyObject* subscript(PyObject* self, PyObject* key)
{
    return fn_list_subscript(self, key, access_of(self), nullptr);
}
int sq_ass_item(PyObject* self, Py_ssize_t index, PyObject* value)
{
    return fn_list_ass_item(self, index, value, access_of(self), nullptr);
}
int ass_subscript(PyObject* self, PyObject* key, PyObject* value)
{
    return fn_list_ass_subscript(self, key, value, access_of(self), nullptr);
}
PyObject* concat(PyObject* self, PyObject* other)
{
    return fn_list_concat(self, other, access_of(self), nullptr);
}
PyObject* repeat(PyObject* self, Py_ssize_t times)
{
    return fn_list_repeat(self, times, access_of(self), nullptr);
}
PyObject* copy(PyObject* self, PyObject*)
{
    return fn_list_repeat(self, 1, access_of(self), nullptr);
}

// A value the element converter refuses fails with the converter's TypeError.
int contains(PyObject* self, PyObject* value)
{
    PyGnStorage storage;
    if (!to_clr(self, value, storage))
        return -1;
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

PyObject* extend(PyObject* self, PyObject* other)
{
    if (fn_list_extend(self, other, &list_access, nullptr) < 0)
        return nullptr;
    Py_RETURN_NONE;
}

PyObject* inplace_concat(PyObject* self, PyObject* other)
{
    if (fn_list_extend(self, other, &list_access, nullptr) < 0)
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

// ---- methods ----------------------------------------------------------------------

PyObject* append(PyObject* self, PyObject* value)
{
    if (add(self, value, nullptr) < 0)
        return nullptr;
    Py_RETURN_NONE;
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
    return fn_list_remove_result(removed != 0);
}

PyObject* pop(PyObject* self, PyObject* args)
{
    int32_t has_index;
    Py_ssize_t index;
    if (!fn_list_pop_args(args, &has_index, &index))
        return nullptr;
    PyObjectOutArg out{nullptr, 0};
    int32_t status = entries(self).pop(handle(self), has_index, fn_index_to_clr(index), &out);
    if (PyErr_Occurred())
        return nullptr;
    if (status != 0)
        return fn_list_pop_result(status, nullptr);
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
    int32_t reversed;
    if (!fn_list_sort_args(args, kwargs, &reversed))
        return nullptr;
    entries(self).sort(handle(self), reversed);
    if (PyErr_Occurred())
        return nullptr;
    Py_RETURN_NONE;
}

PyObject* index(PyObject* self, PyObject* args)
{
    PyObject* value;
    int32_t has_start, has_stop;
    Py_ssize_t start, stop;
    if (!fn_list_index_args(args, &value, &has_start, &start, &has_stop, &stop))
        return nullptr;
    PyGnStorage storage;
    if (!to_clr(self, value, storage))
        return nullptr;
    int32_t position = entries(self).index_by(handle(self), has_start, fn_index_to_clr(start), has_stop,
                                              fn_index_to_clr(stop), storage.bytes);
    if (PyErr_Occurred())
        return nullptr;
    return fn_list_index_result(position);
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
    type = fn_wrapper_type(name, sizeof(PyClrObject), gn_tp_new);
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
    if (enumerable->not_valid)
        return fn_raise_host_state_error(binding_state(enumerable));
    PyObjectOutArg out{nullptr, 0};
    int32_t status = enumerable->entries.get_enumerator(fn_clr_handle(self), &out);
    return fn_enumerator_to_py(status, out, iter_type);
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
    if (fn_is_host_marked_wrapper(obj)) {
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
