// Untyped (object) arguments: the Python value is classified once into a
// VariantArg tag, and managed code reads it back through the read table.
#include "marshal/variant.h"

#include <datetime.h>

#include "marshal/module_type_instance.h"
#include "module/identifiers.h"
#include "module/import_errors.h"
#include "objects/clr_object.h"

namespace {

enum VariantTag : int32_t {
    kNone = 0,
    kHandle = 1,
    kString = 2,
    kBuffer = 3,
    kBool = 4,
    kLong = 5,
    kDouble = 6,
    kDecimal = 7,
    kDecimalTuple = 8,
    kDateTime = 9,
    kDate = 10,
    kTime = 11,
    kTimeDelta = 12,
    kGuid = 13,
    kList = 14,
    kTuple = 15,
};

// Tags 8, 7 and 13, tested in that order; 0 when none applies, -1 on error.
int classify_library_type(PyObject* obj)
{
    struct Candidate {
        const char* module;
        PyObject* name;
        int32_t tag;
    };
    const Candidate candidates[] = {
        {"decimal", PyWrpIdTypeName_DecimalTuple, kDecimalTuple},
        {"decimal", PyWrpIdTypeName_Decimal, kDecimal},
        {"uuid", PyWrpIdTypeName_Uuid, kGuid},
    };
    for (const Candidate& candidate : candidates) {
        int found = fn_is_instance_of_module_type(obj, candidate.module, candidate.name);
        if (found < 0)
            return -1;
        if (found)
            return candidate.tag;
    }
    return 0;
}

// Tags 12, 9, 10 and 11; 0 when none applies, -1 on error.
int classify_datetime(PyObject* obj)
{
    // Imported on every call: the capsule lookup is a dictionary hit once
    // datetime is loaded.
    auto* api = static_cast<PyDateTime_CAPI*>(PyCapsule_Import(PyDateTime_CAPSULE_NAME, 0));
    if (!api)
        return -1;
    PyDateTimeAPI = api;  // this unit's copy of the header's table
    if (PyObject_TypeCheck(obj, api->DeltaType))
        return kTimeDelta;
    if (PyObject_TypeCheck(obj, api->DateTimeType))
        return kDateTime;
    if (PyObject_TypeCheck(obj, api->DateType))
        return kDate;
    if (PyObject_TypeCheck(obj, api->TimeType))
        return kTime;
    return 0;
}

bool is_buffer_candidate(PyObject* obj)
{
    PyTypeObject* type = Py_TYPE(obj);
    bool family = PyBytes_Check(obj) || PyByteArray_Check(obj) || type == &PyMemoryView_Type;
    return family && PyObject_CheckBuffer(obj);
}

}  // namespace

int fn_conv_py_variant_to_clr_variant(PyObject* obj, VariantArg* out)
{
    out->value = obj;
    PyTypeObject* type = Py_TYPE(obj);
    if (obj == Py_None) {
        out->type = kNone;
        return 1;
    }
    if (type == &PyBool_Type) {
        out->type = kBool;
        return 1;
    }
    if (PyLong_Check(obj)) {
        out->type = kLong;
        return 1;
    }
    if (PyFloat_Check(obj)) {
        out->type = kDouble;
        return 1;
    }
    int tag = classify_library_type(obj);
    if (tag == 0)
        tag = classify_datetime(obj);
    if (tag < 0)
        return 0;
    if (tag > 0) {
        out->type = tag;
        return 1;
    }
    if (PyUnicode_Check(obj)) {
        out->type = kString;
        return 1;
    }
    if (is_buffer_candidate(obj)) {
        out->type = kBuffer;
        return 1;
    }
    if (type == &PyList_Type) {
        out->type = kList;
        return 1;
    }
    if (type == &PyTuple_Type) {
        out->type = kTuple;
        return 1;
    }
    if (fn_is_clr_wrapper(obj) && fn_clr_handle(obj)) {
        out->type = kHandle;
        out->value = fn_clr_handle(obj);
        return 1;
    }
    PyErr_SetString(PyExc_TypeError, "unknown variant type");
    return 0;
}
