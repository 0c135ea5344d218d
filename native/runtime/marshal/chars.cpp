// Managed Char: exactly one UTF-16 code unit.
#include <cstring>

#include "marshal/scalars.h"
#include "marshal/strings.h"

int fn_conv_py_string_to_clr_char(PyObject* obj, uint16_t* out)
{
    PyObject* encoded = fn_conv_py_string_to_utf16_bytes(obj);
    if (!encoded)
        return 0;
    // The byte-order mark plus one unit; an astral character needs two units.
    if (PyBytes_GET_SIZE(encoded) != 4) {
        Py_DECREF(encoded);
        PyErr_SetString(PyExc_TypeError, "string must contain one UTF-16 code unit");
        return 0;
    }
    uint16_t unit;
    std::memcpy(&unit, PyBytes_AS_STRING(encoded) + 2, sizeof(unit));
    Py_DECREF(encoded);
    *out = unit;
    return 1;
}

PyObject* fn_conv_clr_char_to_py_string(uint16_t unit)
{
    int byteorder = -1;  // little-endian
    return PyUnicode_DecodeUTF16(reinterpret_cast<const char*>(&unit), 2, nullptr, &byteorder);
}

PyObject* fn_write_py_char(uint16_t unit)
{
    return fn_conv_clr_char_to_py_string(unit);
}
