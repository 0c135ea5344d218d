// The list protocol shared by every indexable collection wrapper.
#include "interop/list_protocol.h"

#include "interop/wrapper_common.h"
#include "marshal/scalars.h"
#include "objects/clr_object.h"

namespace {

int size_refused(Py_ssize_t given, Py_ssize_t slice_length)
{
    PyErr_Format(PyExc_ValueError, "attempt to assign sequence of size %zd to extended slice of size %zd", given,
                 slice_length);
    return -1;
}

int key_refused(PyObject* key)
{
    PyErr_Format(PyExc_TypeError, "list indices must be integers or slices, not %.200s", Py_TYPE(key)->tp_name);
    return -1;
}

// The length as the protocol uses it; -1 with an error set. A negative count
// without an error is the family's to report and is passed on.
Py_ssize_t read_length(PyObject* self, const PyListAccess* access, const void* context, bool* failed)
{
    Py_ssize_t n = access->length(self, context);
    *failed = n == -1 && PyErr_Occurred();
    return n;
}

// Writes `slice_length` elements of `source` (borrowed items of a fast
// sequence, or items fetched from a sequence) at start, start + step, ...
// Stops at the first failure; what was written stays. 0 or -1.
int store_elements(PyObject* self, PyObject* source, bool fast, Py_ssize_t start, Py_ssize_t step,
                   Py_ssize_t slice_length, const PyListAccess* access, const void* context)
{
    for (Py_ssize_t k = 0; k < slice_length; ++k) {
        PyObject* item = fast ? PySequence_Fast_GET_ITEM(source, k) : PySequence_GetItem(source, k);
        if (!item)
            return -1;
        if (fast)
            Py_INCREF(item);  // the conversion may run Python code
        int rc = access->set_item_nocheck(self, start + k * step, item, context);
        Py_DECREF(item);
        if (rc < 0)
            return -1;
    }
    return 0;
}

int assign_slice(PyObject* self, Py_ssize_t length, Py_ssize_t start, Py_ssize_t step, Py_ssize_t slice_length,
                 PyObject* value, const PyListAccess* access, const void* context)
{
    PyTypeObject* type = Py_TYPE(value);
    if (type == &PyList_Type || type == &PyTuple_Type) {
        Py_ssize_t size = PySequence_Fast_GET_SIZE(value);
        if (size != slice_length)
            return size_refused(size, slice_length);
        return store_elements(self, value, true, start, step, slice_length, access, context);
    }
    PySequenceMethods* seq = type->tp_as_sequence;
    bool sized = access->slice_source == PyListSliceSource::SizedSequence;
    bool accepted = seq && (sized ? seq->sq_length != nullptr : seq->sq_item != nullptr);
    if (!accepted) {
        PyErr_SetString(PyExc_TypeError, "must assign iterable to extended slice");
        return -1;
    }
    bool managed = fn_is_clr_wrapper(value);
    if (managed && !sized) {
        int done = access->assign_from_managed(self, value, start, slice_length, step, length, context);
        if (done != 0)
            return done < 0 ? -1 : 0;
    }
    Py_ssize_t size = PySequence_Size(value);
    if (size < 0 && PyErr_Occurred())
        return -1;
    if (size != slice_length)
        return size_refused(size, slice_length);
    if (managed && sized) {
        int done = access->assign_from_managed(self, value, start, slice_length, step, length, context);
        if (done != 0)
            return done < 0 ? -1 : 0;
    }
    return store_elements(self, value, false, start, step, slice_length, access, context);
}

int delete_slice(PyObject* self, Py_ssize_t start, Py_ssize_t step, Py_ssize_t slice_length, const PyListAccess* access,
                 const void* context)
{
    if (!access->remove_slice)
        return fn_list_removal_refused();
    // Removal runs from the highest index down so that earlier removals never
    // shift later targets.
    if (step > 0) {
        start = start + (slice_length - 1) * step;
        step = -step;
    }
    if (start < 0)
        start = 0;  // an empty slice
    return access->remove_slice(self, start, slice_length, step, context);
}

}  // namespace

PyObject* fn_list_index_error()
{
    PyErr_SetString(PyExc_IndexError, "list index out of range");
    return nullptr;
}

int fn_list_removal_refused()
{
    PyErr_SetString(PyExc_ValueError, "elements removing not supported");
    return -1;
}

int fn_list_check_status(int32_t status, const char* operation)
{
    if (status == 0)
        return 0;
    if (status == 2) {
        fn_list_index_error();
        return -1;
    }
    if (!PyErr_Occurred())
        PyErr_Format(PyExc_RuntimeError, "%s failed with status %d", operation, (int)status);
    return -1;
}

PyObject* fn_list_subscript(PyObject* self, PyObject* key, const PyListAccess* access, const void* context)
{
    bool failed;
    Py_ssize_t length = read_length(self, access, context, &failed);
    if (failed)
        return nullptr;
    if (PyIndex_Check(key)) {
        Py_ssize_t index = PyNumber_AsSsize_t(key, PyExc_IndexError);
        if (index == -1 && PyErr_Occurred())
            return nullptr;
        if (index < 0)
            index += length;
        return access->get_item(self, index, context);
    }
    if (!PySlice_Check(key)) {
        key_refused(key);
        return nullptr;
    }
    Py_ssize_t start, stop, step;
    if (PySlice_Unpack(key, &start, &stop, &step) < 0)
        return nullptr;
    Py_ssize_t slice_length = PySlice_AdjustIndices(length, &start, &stop, step);
    if (slice_length <= 0)
        return PyList_New(0);
    PyObject* list = PyList_New(slice_length);  // released on failure
    if (!list)
        return nullptr;
    for (Py_ssize_t k = 0; k < slice_length; ++k) {
        PyObject* item = access->get_item_nocheck(self, start + k * step, context);
        if (!item)
            goto error;
        PyList_SET_ITEM(list, k, item);
    }
    return list;

error:
    Py_DECREF(list);
    return nullptr;
}

int fn_list_ass_item(PyObject* self, Py_ssize_t index, PyObject* value, const PyListAccess* access, const void* context)
{
    if (value)
        return access->set_item(self, index, value, context);
    if (!access->remove_at)
        return fn_list_removal_refused();
    return access->remove_at(self, index, context);
}

int fn_list_ass_subscript(PyObject* self, PyObject* key, PyObject* value, const PyListAccess* access,
                          const void* context)
{
    bool failed;
    Py_ssize_t length = read_length(self, access, context, &failed);
    if (failed)
        return -1;
    if (PyIndex_Check(key)) {
        Py_ssize_t index = PyNumber_AsSsize_t(key, PyExc_IndexError);
        if (index == -1 && PyErr_Occurred())
            return -1;
        if (index < 0)
            index += length;
        return fn_list_ass_item(self, index, value, access, context);
    }
    if (!PySlice_Check(key))
        return key_refused(key);
    Py_ssize_t start, stop, step;
    if (PySlice_Unpack(key, &start, &stop, &step) < 0)
        return -1;
    Py_ssize_t slice_length = PySlice_AdjustIndices(length, &start, &stop, step);
    if (!value)
        return delete_slice(self, start, step, slice_length, access, context);
    return assign_slice(self, length, start, step, slice_length, value, access, context);
}

PyObject* fn_list_items(PyObject* self, const PyListAccess* access, const void* context)
{
    bool failed;
    Py_ssize_t length = read_length(self, access, context, &failed);
    if (failed)
        return nullptr;
    if (length < 0)
        length = 0;
    PyObject* list = PyList_New(length);  // released on failure
    if (!list)
        return nullptr;
    for (Py_ssize_t i = 0; i < length; ++i) {
        PyObject* item = access->get_item_nocheck(self, i, context);
        if (!item)
            goto error;
        PyList_SET_ITEM(list, i, item);
    }
    return list;

error:
    Py_DECREF(list);
    return nullptr;
}

PyObject* fn_list_concat(PyObject* self, PyObject* other, const PyListAccess* access, const void* context)
{
    if (fn_classify_operand(other) == PyOperandKind::None) {
        PyErr_SetString(PyExc_ValueError, "argument must be iterable or sequence");
        return nullptr;
    }
    PyObject* result = fn_list_items(self, access, context);
    if (!result)
        return nullptr;
    if (fn_append_operand_items(result, other) < 0) {
        Py_DECREF(result);
        return nullptr;
    }
    return result;
}

PyObject* fn_list_repeat(PyObject* self, Py_ssize_t times, const PyListAccess* access, const void* context)
{
    PyObject* once = fn_list_items(self, access, context);
    if (!once)
        return nullptr;
    // A list repeated: one reference per place; MemoryError when the result
    // cannot have that many places.
    PyObject* result = PySequence_Repeat(once, times < 0 ? 0 : times);
    Py_DECREF(once);
    return result;
}

int fn_list_extend(PyObject* self, PyObject* other, const PyListAccess* access, const void* context)
{
    if (fn_is_clr_wrapper(other)) {
        int done = access->extend_from_managed(self, other, context);
        if (done != 0)
            return done < 0 ? -1 : 0;
    }
    return fn_for_each_operand_item(
        other, [&](PyObject* item) { return access->add(self, item, context); },
        [&](Py_ssize_t size) { return access->reserve ? access->reserve(self, size, context) : 0; });
}

int fn_list_pop_args(PyObject* args, int32_t* has_index, Py_ssize_t* index)
{
    Py_ssize_t given = PyTuple_GET_SIZE(args);
    if (fn_check_args_count_out_of_range(given, "pop", 0, 1))
        return 0;
    *has_index = given == 1 && PyTuple_GET_ITEM(args, 0) != Py_None;
    *index = -1;
    return fn_conv_py_optional_to_ssize_t(args, index);
}

PyObject* fn_list_pop_result(int32_t status, PyObject* item)
{
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

PyObject* fn_list_remove_result(bool removed)
{
    if (!removed) {
        PyErr_SetString(PyExc_ValueError, "list.remove(x): x not in list");
        return nullptr;
    }
    Py_RETURN_NONE;
}

int fn_list_index_args(PyObject* args, PyObject** value, int32_t* has_start, Py_ssize_t* start, int32_t* has_stop,
                       Py_ssize_t* stop)
{
    *start = 0;
    *stop = 0;
    if (!PyArg_ParseTuple(args, "O|nn:index", value, start, stop))
        return 0;
    Py_ssize_t given = PyTuple_GET_SIZE(args);
    *has_start = given >= 2;
    *has_stop = given >= 3;
    return 1;
}

PyObject* fn_list_index_result(int32_t position)
{
    if (position < 0) {
        PyErr_SetString(PyExc_ValueError, "value is not in list");
        return nullptr;
    }
    return PyLong_FromLong(position);
}

int fn_list_sort_args(PyObject* args, PyObject* kwargs, int32_t* reverse)
{
    static const char* keywords[] = {"key", "reverse", nullptr};
    PyObject* key = Py_None;
    int reversed = 0;
    if (!PyArg_ParseTupleAndKeywords(args, kwargs, "|Op:sort", const_cast<char**>(keywords), &key, &reversed))
        return 0;
    if (key != Py_None) {
        PyErr_SetString(PyExc_ValueError, "custom sorting key is not supported");
        return 0;
    }
    *reverse = reversed ? 1 : 0;
    return 1;
}
