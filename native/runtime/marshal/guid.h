// Python uuid.UUID <-> managed Guid. The Guid crosses as its 16 bytes in
// managed memory order, which is exactly UUID.bytes_le.
#pragma once

#include <Python.h>
#include <cstdint>

struct ClrGuid {
    uint8_t bytes[16];
};
static_assert(sizeof(ClrGuid) == 16, "managed Guid is 16 bytes");

// uuid.UUID instance, else TypeError "can't build Guid from '%s'".
int fn_conv_py_uuid_to_clr_guid(PyObject* obj, ClrGuid* out);
// A value known to be a UUID; also the read table slot (variant tag 13).
int fn_conv_py_uuid_to_clr_guid_value(PyObject* uuid, ClrGuid* out);
int fn_read_py_guid(PyObject* uuid, ClrGuid* out);

// uuid.UUID(bytes_le=...): a new reference, or null with the error.
PyObject* fn_conv_clr_guid_to_py_uuid(const ClrGuid* value);
// Write table slot.
PyObject* fn_write_py_guid(const ClrGuid* value);
