// The callbacks through which managed views operate on Python lists,
// sequences and iterators.
#include "interop/containers.h"

#include <limits>

#include "interop/collections.h"
#include "marshal/variant.h"
#include "module/identifiers.h"
#include "objects/clr_to_py.h"

namespace {

// -2 when the pending error is an IndexError, else -1.
int32_t error_status()
{
    return PyErr_ExceptionMatches(PyExc_IndexError) ? -2 : -1;
}

// A Python size as int32 for managed code; sizes beyond Int32 are reported
// instead of being cut.
int32_t size_to_int32(Py_ssize_t size)
{
    if (size < 0)
        return -1;
    if (size > std::numeric_limits<int32_t>::max()) {
        PyErr_Format(PyExc_OverflowError, "%s too big to convert to '%s'", "size", "Int32");
        return -1;
    }
    return (int32_t)size;
}

// oseq get_item hands managed code a borrowed element that the sequence may
// have made on demand (a range, a computing __getitem__), so somebody must
// hold it until managed code has read the variant, which it does right after
// the call. The calling thread's state dictionary holds it, under one key:
// the next get_item on the thread replaces it, and Python releases it with the
// thread state (thread end, interpreter finalisation). 0, or -1 with an error.
int hold_sequence_item(PyObject* item)
{
    PyObject* dict = PyThreadState_GetDict();  // borrowed
    if (!dict) {
        PyErr_SetString(PyExc_RuntimeError, "no thread state to hold a sequence item");
        return -1;
    }
    return PyDict_SetItem(dict, PyWrpIdThread_SequenceItem, item);
}

PyObject** create_fast_list(Py_ssize_t count, PyObject** out)
{
    *out = nullptr;
    if (count < 0) {
        PyErr_Format(PyExc_ValueError, "negative list size %zd", count);
        return nullptr;
    }
    PyObject* list = PyList_New(count);
    if (!list)
        return nullptr;
    *out = list;
    return reinterpret_cast<PyListObject*>(list)->ob_item;
}

// 1 when item == seq[k] for some k, 0 when not, -1 on error; the length is
// re-read before every element so a shrinking sequence ends the scan early.
int32_t scan_sequence(PyObject* seq, PyObject* item, bool reread_length, Py_ssize_t* position)
{
    Py_ssize_t length = PySequence_Size(seq);
    if (length < 0)
        return -1;
    for (Py_ssize_t k = 0; k < length; ++k) {
        PyObject* element = PySequence_GetItem(seq, k);
        if (!element) {
            if (!PyErr_Occurred())
                PyErr_SetString(PyExc_IndexError, "item is null");
            return -1;
        }
        int equal = PyObject_RichCompareBool(element, item, Py_EQ);
        Py_DECREF(element);
        if (equal < 0)
            return -1;
        if (equal) {
            *position = k;
            return 1;
        }
        if (reread_length) {
            length = PySequence_Size(seq);
            if (length < 0)
                return -1;
        }
    }
    return 0;
}

}  // namespace

// ---- ucol ----------------------------------------------------------------

int32_t fn_clbk_ucol_list_length(PyObject* list)
{
    return size_to_int32(PyList_Size(list));
}

int64_t fn_clbk_ucol_list_longlength(PyObject* list)
{
    return PyList_Size(list);
}

int32_t fn_clbk_ucol_remove_at(PyObject* obj, int32_t index)
{
    PyObject* py_index = PyLong_FromLong(index);
    if (!py_index)
        return -1;
    PyObject* removed = PyObject_CallMethodObjArgs(obj, PyWrpIdList_Pop, py_index, nullptr);
    Py_DECREF(py_index);
    if (!removed)
        return error_status();
    Py_DECREF(removed);
    return 0;
}

int32_t fn_clbk_ucol_clear(PyObject* obj)
{
    PyObject* result = PyObject_CallMethodObjArgs(obj, PyWrpIdList_Clear, nullptr);
    if (!result)
        return -1;
    Py_DECREF(result);
    return 0;
}

int32_t fn_clbk_ucol_sequence_length(PyObject* seq)
{
    return size_to_int32(PySequence_Size(seq));
}

int64_t fn_clbk_ucol_sequence_longlength(PyObject* seq)
{
    return PySequence_Size(seq);
}

PyObject* fn_clbk_ucol_get_enumerator(PyObject* obj)
{
    PyTypeObject* type = Py_TYPE(obj);
    if (!type->tp_iter && !PySequence_Check(obj)) {
        PyErr_Format(PyExc_TypeError, "No iterator in '%s'", type->tp_name);
        return nullptr;
    }
    // PyObject_GetIter refuses an __iter__ whose result has no real __next__.
    return PyObject_GetIter(obj);
}

int32_t fn_clbk_ucol_object_length(PyObject* obj)
{
    return size_to_int32(PyObject_Size(obj));
}

PyObject** fn_clbk_ucol_create_fast_list(int32_t count, PyObject** out)
{
    return create_fast_list(count, out);
}

PyObject** fn_clbk_ucol_create_fast_longlist(int64_t count, PyObject** out)
{
    if (count > PY_SSIZE_T_MAX) {
        *out = nullptr;
        PyErr_NoMemory();
        return nullptr;
    }
    return create_fast_list((Py_ssize_t)count, out);
}

// ---- olist ---------------------------------------------------------------

int32_t fn_clbk_olist_get_item(PyObject* list, int32_t index, VariantArg* out)
{
    PyObject* item = PyList_GetItem(list, index);  // borrowed; no negative indexing
    if (!item)
        return error_status();
    return fn_conv_py_variant_to_clr_variant(item, out) ? 0 : -1;
}

int32_t fn_clbk_olist_set_item(PyObject* list, int32_t index, PyObject* item)
{
    // PyList_SetItem takes the reference on success and on failure alike.
    if (PyList_SetItem(list, index, item) < 0)
        return error_status();
    return 0;
}

int32_t fn_clbk_olist_add(PyObject* list, PyObject* item)
{
    int rc = PyList_Append(list, item);
    Py_XDECREF(item);
    if (rc < 0)
        return -1;
    return size_to_int32(PyList_Size(list));
}

int32_t fn_clbk_olist_insert(PyObject* list, int32_t index, PyObject* item)
{
    int rc = PyList_Insert(list, index, item);
    Py_XDECREF(item);
    return rc < 0 ? -1 : 0;
}

int32_t fn_clbk_olist_remove(PyObject* list, PyObject* item)
{
    PyObject* result = PyObject_CallMethodObjArgs(list, PyWrpIdList_Remove, item ? item : Py_None, nullptr);
    Py_XDECREF(item);
    if (!result)
        return -1;
    Py_DECREF(result);
    return 0;
}

int32_t fn_clbk_olist_contains(PyObject* list, PyObject* item)
{
    PyObject* result = PyObject_CallMethodObjArgs(list, PyWrpIdList_Index, item ? item : Py_None, nullptr);
    Py_XDECREF(item);
    if (!result) {
        if (!PyErr_ExceptionMatches(PyExc_ValueError))
            return -1;
        PyErr_Clear();
        return 0;
    }
    Py_DECREF(result);
    return 1;
}

int32_t fn_clbk_olist_index_of(PyObject* list, PyObject* item)
{
    PyObject* result = PyObject_CallMethodObjArgs(list, PyWrpIdList_Index, item ? item : Py_None, nullptr);
    Py_XDECREF(item);
    if (!result) {
        if (!PyErr_ExceptionMatches(PyExc_ValueError))
            return -2;
        PyErr_Clear();
        return -1;
    }
    long long position = PyLong_AsLongLong(result);
    Py_DECREF(result);
    if (position == -1 && PyErr_Occurred())
        return -2;
    if (position < std::numeric_limits<int32_t>::min()) {
        PyErr_Format(PyExc_IndexError, "%s too small to convert to '%s'", "index", "Int32");
        return -2;
    }
    if (position > std::numeric_limits<int32_t>::max()) {
        PyErr_Format(PyExc_IndexError, "%s too big to convert to '%s'", "index", "Int32");
        return -2;
    }
    return (int32_t)position;
}

int32_t fn_clbk_olist_set_fast_item(PyObject** items, int32_t index, PyObject* item)
{
    items[index] = item;
    return index;
}

PyObject* fn_clbk_olist_write_clr_ilist(void* handle)
{
    return fn_py_clr_type_generic_new(handle, &wrpPye_tyds_FFFFFFFF_IListWrapper);
}

PyObject* fn_clbk_olist_write_clr_arrlist(void* handle)
{
    return fn_py_clr_type_generic_new(handle, &wrpPye_tyds_FFFFFFFF_ArrListWrapper);
}

PyObject* fn_clbk_olist_write_clr_array(void* handle)
{
    return fn_py_clr_type_generic_new(handle, &wrpPye_tyds_FFFFFFFF_ArrayWrapper);
}

// ---- oseq ----------------------------------------------------------------

int32_t fn_clbk_oseq_get_item(PyObject* seq, int32_t index, VariantArg* out)
{
    int32_t status = -1;
    PyObject* item = PySequence_GetItem(seq, index);  // new; negative indices count from the end
    if (!item)
        return error_status();
    if (hold_sequence_item(item) < 0)
        goto done;
    status = fn_conv_py_variant_to_clr_variant(item, out) ? 0 : -1;
done:
    Py_DECREF(item);  // the thread state's dictionary keeps it alive
    return status;
}

int32_t fn_clbk_oseq_contains(PyObject* seq, PyObject* item)
{
    Py_ssize_t position = -1;
    int32_t found = scan_sequence(seq, item ? item : Py_None, true, &position);
    Py_XDECREF(item);
    return found;
}

int32_t fn_clbk_oseq_index_of(PyObject* seq, PyObject* item)
{
    Py_ssize_t position = -1;
    int32_t found = scan_sequence(seq, item ? item : Py_None, false, &position);
    Py_XDECREF(item);
    if (found < 0)
        return -2;
    if (found == 0)
        return -1;
    if (position > std::numeric_limits<int32_t>::max()) {
        PyErr_Format(PyExc_IndexError, "%s too big to convert to '%s'", "index", "Int32");
        return -2;
    }
    return (int32_t)position;
}

// ---- iterator ------------------------------------------------------------

int32_t fn_clbk_iter_next(PyObject* iterator, PyObject** item, VariantArg* out)
{
    *item = nullptr;
    PyObject* next = PyIter_Next(iterator);
    if (!next)
        return PyErr_Occurred() ? 2 : 1;
    if (!fn_conv_py_variant_to_clr_variant(next, out)) {
        Py_DECREF(next);
        return 2;
    }
    *item = next;
    return 0;
}
