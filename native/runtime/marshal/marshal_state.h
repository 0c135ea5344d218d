// The process-wide state of the marshalling layer, in one place.
//
// What is not in this structure, and why: CPython's <datetime.h> gives every
// unit that includes it its own static PyDateTimeAPI, which its check and
// construction macros read. datetime.cpp, timespan.cpp and variant.cpp each
// fill their copy from the datetime capsule before they use it; the capsule
// owns the table.
#pragma once

struct MarshalState {
    // The static callback tables through which managed code reads and builds
    // Python values and uses Python containers and files, one array per table
    // in the slot order managed code indexes them by; and the table of those
    // tables, in table order. Filled at load time (callback_tables.cpp), never
    // written afterwards; handed to managed code once per import through
    // get_all_py_wrapper_callbacks().
    void* m_py_read_callbacks[11];
    void* m_py_write_callbacks[13];
    void* m_py_buffer_callbacks[4];
    void* m_py_obj_api_callbacks[4];
    void* m_py_iter_callbacks[1];
    void* m_py_ucol_callbacks[11];
    void* m_py_olist_callbacks[11];
    void* m_py_oseq_callbacks[3];
    void* m_py_rawio_callbacks[12];
    void** m_all_py_wrapper_callbacks[9];
};

// The one MarshalState of the process (lives until exit).
MarshalState& marshal_state();
