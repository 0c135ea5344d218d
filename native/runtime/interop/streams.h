// Managed streams seen from Python (_StreamWrapper), Python file objects seen
// from managed code (the raw-I/O table over _ShlBufferView), and the
// conversion of Python arguments to Stream parameters.
#pragma once

#include <Python.h>
#include <cstdint>
#include <string>

#include "interop/stream_host.h"
#include "marshal/records.h"

extern PyTypeObject wrpPye_tyds_FFFFFFFF_StreamWrapper;
extern PyTypeObject wrpPye_tyds_FFFFFFFF_ShlBufferView;

// A Stream parameter, output record as for collections (VariantArg):
// kind 0 a managed handle (null for None), kind 1 a Python binary file object
// (io.RawIOBase, io.BufferedIOBase or orvane.pyio.BufferStream) for managed
// code to stream over. Otherwise TypeError "can't build Stream from '<type>'".
int wrpPye_conv_py_to_clr_stream(PyObject* obj, VariantArg* out);
bool wrpPye_is_not_valid_stream(std::string& message);

// A Stream result: kind 1 gives the Python file object back, otherwise a
// _StreamWrapper (or a more derived registered type). Null handle: None.
PyObject* wrpPye_conv_clr_stream_to_py(const PyCollectionArg& arg);

// A buffer object over caller-owned memory. Nothing stops Python code from
// keeping it (or a memoryview of it), so the caller must keep the memory alive
// as long as the object may live; the raw-I/O callbacks below do not use it
// for managed memory for that reason.
PyObject* fn_create_shlbuffer_view(void* data, Py_ssize_t length, int32_t readonly);

// Raw-I/O table, slots 1-12 (the file object first, borrowed). write and
// read hand the file a _ShlBufferView over a copy that the view owns, so a
// file object that keeps the view (or a memoryview of it) never reaches the
// caller's memory after the call. A count that write()/readinto() returns
// outside [0, requested], or that is no integer, is an OSError (-1; -2 from
// readbyte); None counts as 0 bytes.
int32_t fn_clbk_rawio_write(PyObject* file, const void* data, int32_t count);
int32_t fn_clbk_rawio_write_byte(PyObject* file, int32_t value);
int32_t fn_clbk_rawio_read(PyObject* file, void* data, int32_t count);
int32_t fn_clbk_rawio_readbyte(PyObject* file);
int64_t fn_clbk_rawio_seek(PyObject* file, int64_t offset, int32_t whence);
int32_t fn_clbk_rawio_flush(PyObject* file);
void fn_clbk_rawio_close(PyObject* file);
int32_t fn_clbk_rawio_readable(PyObject* file);
int32_t fn_clbk_rawio_writable(PyObject* file);
int32_t fn_clbk_rawio_seekable(PyObject* file);
int64_t fn_clbk_rawio_tell(PyObject* file);
int64_t fn_clbk_rawio_length(PyObject* file);
