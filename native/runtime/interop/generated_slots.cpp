// Sequence and mapping slots of generated collection classes: the list
// protocol over each type's own element entries and converters.
#include "interop/generated_slots.h"

#include <cstdint>

#include "interop/list_protocol.h"
#include "objects/clr_object.h"

namespace {

const PyShlCollectionSlots* slots_of(const void* context)
{
    return static_cast<const PyShlCollectionSlots*>(context);
}

// An index beyond 32 bits cannot name an element: out of range, never truncated.
bool out_of_clr_range(Py_ssize_t index)
{
    if (index >= INT32_MIN && index <= INT32_MAX)
        return false;
    fn_list_index_error();
    return true;
}

// ---- element access, as the list protocol reaches it ----

Py_ssize_t length(PyObject* self, const void* context)
{
    return wrpPye_bltp_coll_sq_length(self, slots_of(context));
}

PyObject* get_item(PyObject* self, Py_ssize_t index, const void* context)
{
    return wrpPye_bltp_coll_sq_item(self, index, slots_of(context));
}

// The element at an index already in range; a new reference or null.
PyObject* get_item_nocheck(PyObject* self, Py_ssize_t index, const void* context)
{
    const PyShlCollectionSlots* slots = slots_of(context);
    PyObjectOutArg out{nullptr, 0};
    slots->item_nocheck(fn_clr_handle(self), (int32_t)index, &out);
    if (PyErr_Occurred())
        return nullptr;  // a raising entry wrote no handle
    return slots->to_py(out);
}

int set_item(PyObject* self, Py_ssize_t index, PyObject* value, const void* context)
{
    const PyShlCollectionSlots* slots = slots_of(context);
    if (out_of_clr_range(index))
        return -1;
    void* element = nullptr;
    if (!slots->to_clr(value, &element))
        return -1;
    int32_t status = slots->ssitem(fn_clr_handle(self), (int32_t)index, element);
    if (PyErr_Occurred())
        return -1;
    return fn_list_check_status(status, "item write");
}

int set_item_nocheck(PyObject* self, Py_ssize_t index, PyObject* value, const void* context)
{
    const PyShlCollectionSlots* slots = slots_of(context);
    void* element = nullptr;
    if (!slots->to_clr(value, &element))
        return -1;
    slots->ssitem_nocheck(fn_clr_handle(self), (int32_t)index, element);
    return PyErr_Occurred() ? -1 : 0;
}

// One managed call copies the whole slice from the other collection.
int assign_from_managed(PyObject* self, PyObject* source, Py_ssize_t start, Py_ssize_t slice_length, Py_ssize_t step,
                        Py_ssize_t length, const void* context)
{
    slots_of(context)->ssubscript_sizable(fn_clr_handle(self), fn_clr_handle(source), (int32_t)start,
                                          (int32_t)slice_length, (int32_t)step, (int32_t)length);
    return PyErr_Occurred() ? -1 : 1;
}

// A collection class never grows or shrinks through the protocol.
const PyListAccess collection_access = {
    length,
    get_item,
    get_item_nocheck,
    set_item,
    set_item_nocheck,
    nullptr,
    nullptr,
    assign_from_managed,
    PyListSliceSource::IndexableSequence,
    nullptr,
    nullptr,
    nullptr,
};

}  // namespace

Py_ssize_t wrpPye_bltp_coll_sq_length(PyObject* self, const PyShlCollectionSlots* slots)
{
    int32_t count = slots->length(fn_clr_handle(self));
    if (PyErr_Occurred())
        return -1;
    return count < 0 ? 0 : count;
}

PyObject* wrpPye_bltp_coll_sq_item(PyObject* self, Py_ssize_t index, const PyShlCollectionSlots* slots)
{
    if (out_of_clr_range(index))
        return nullptr;
    PyObjectOutArg out{nullptr, 0};
    int32_t status = slots->item(fn_clr_handle(self), (int32_t)index, &out);
    if (PyErr_Occurred() || fn_list_check_status(status, "item read") < 0)
        return nullptr;
    return slots->to_py(out);
}

PyObject* wrpPye_bltp_coll_mp_subscript(PyObject* self, PyObject* key, const PyShlCollectionSlots* slots)
{
    return fn_list_subscript(self, key, &collection_access, slots);
}

int wrpPye_bltp_coll_sq_ass_item(PyObject* self, Py_ssize_t index, PyObject* value, const PyShlCollectionSlots* slots)
{
    return fn_list_ass_item(self, index, value, &collection_access, slots);
}

int wrpPye_bltp_coll_mp_ass_subscript(PyObject* self, PyObject* key, PyObject* value, const PyShlCollectionSlots* slots)
{
    return fn_list_ass_subscript(self, key, value, &collection_access, slots);
}

int wrpPye_bltp_coll_sq_contains(PyObject* self, PyObject* value, const PyShlCollectionSlots* slots)
{
    void* element = nullptr;
    if (!slots->to_clr(value, &element))
        return -1;  // the element converter's TypeError
    int32_t found = slots->contains(fn_clr_handle(self), element);
    if (PyErr_Occurred())
        return -1;
    return found > 0;
}

PyObject* wrpPye_bltp_coll_sq_concat(PyObject* self, PyObject* other, const PyShlCollectionSlots* slots)
{
    return fn_list_concat(self, other, &collection_access, slots);
}

PyObject* wrpPye_bltp_coll_sq_repeat(PyObject* self, Py_ssize_t times, const PyShlCollectionSlots* slots)
{
    return fn_list_repeat(self, times, &collection_access, slots);
}
