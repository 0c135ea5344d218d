// Native host of the managed stream proxy Orvane.WrpGen.Interop.SiApiStream,
// and the instance layout of _StreamWrapper.
#pragma once

#include <Python.h>
#include <cstdint>

#include "interop/interop_host.h"
#include "objects/clr_object.h"

// A wrapped managed stream: the common wrapper layout plus the wrapper's own
// closed flag (set only by close() and __exit__).
struct PyClrStreamObject {
    PyClrObject base;
    int32_t closed;
};

class PyHost_ph_Stream : public PyInteropHostBase {
public:
    static constexpr const char* kManagedType = "Orvane.WrpGen.Interop.SiApiStream";
    static PyHost_ph_Stream* get_instance();

    bool can_read(void* h) const { return can_read_(h) != 0; }
    bool can_seek(void* h) const { return can_seek_(h) != 0; }
    bool can_write(void* h) const { return can_write_(h) != 0; }
    int64_t length(void* h) const { return length_(h); }
    int64_t position(void* h) const { return position_(h); }
    void close(void* h) const { close_(h); }
    void flush(void* h) const { flush_(h); }
    // Bytes read, 0 at the end of the stream.
    int32_t read(void* h, void* buffer, int32_t count) const { return read_(h, buffer, count); }
    int64_t seek(void* h, int64_t offset, int32_t whence) const { return seek_(h, offset, whence); }
    // flag 1: no size given (truncate at the current position).
    int64_t set_length(void* h, int32_t flag, int64_t length) const { return set_length_(h, flag, length); }
    // Writes all `count` bytes.
    void write(void* h, const void* buffer, int32_t count) const { write_(h, buffer, count); }
    bool is_assignable_to(void* h) const { return is_assignable_to_(h) != 0; }

private:
    PyHost_ph_Stream();
    uint8_t (*can_read_)(void*) = nullptr;
    uint8_t (*can_seek_)(void*) = nullptr;
    uint8_t (*can_write_)(void*) = nullptr;
    int64_t (*length_)(void*) = nullptr;
    int64_t (*position_)(void*) = nullptr;
    void (*close_)(void*) = nullptr;
    void (*flush_)(void*) = nullptr;
    int32_t (*read_)(void*, void*, int32_t) = nullptr;
    int64_t (*seek_)(void*, int64_t, int32_t) = nullptr;
    int64_t (*set_length_)(void*, int32_t, int64_t) = nullptr;
    int32_t (*write_)(void*, const void*, int32_t) = nullptr;
    uint8_t (*is_assignable_to_)(void*) = nullptr;
};
