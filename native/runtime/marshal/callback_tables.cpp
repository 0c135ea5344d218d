// The static callback tables handed to managed code at start-up. Managed code
// indexes tables and slots by position, so order and sizes are fixed. Slots
// whose functions are not part of this runtime yet stay null; the managed
// side must not call them.
#include "marshal/callback_tables.h"

#include "marshal/object_api.h"
#include "marshal/scalars.h"
#include "marshal/strings.h"

namespace {

template <typename Fn>
void* slot(Fn* fn)
{
    return reinterpret_cast<void*>(fn);
}

void* m_py_read_callbacks[11] = {
    slot(&fn_read_py_string),
    slot(&fn_read_py_bool),
    slot(&fn_read_py_vers_long),
    slot(&fn_read_py_double),
    nullptr,  // fn_read_py_decimal
    nullptr,  // fn_read_py_decimal_tuple
    nullptr,  // fn_read_py_vers_datetime
    nullptr,  // fn_read_py_vers_date
    nullptr,  // fn_read_py_vers_time
    nullptr,  // fn_read_py_datetimedelta
    nullptr,  // fn_read_py_guid
};

void* m_py_write_callbacks[13] = {
    slot(&fn_write_py_tpo),
    slot(&fn_write_py_bool),
    slot(&fn_write_py_long),
    slot(&fn_write_py_ulong),
    slot(&fn_write_py_longlong),
    slot(&fn_write_py_ulonglong),
    slot(&fn_write_py_double),
    nullptr,  // fn_write_py_decimal
    nullptr,  // fn_write_py_date_time
    nullptr,  // fn_write_py_date_time_offset
    nullptr,  // fn_write_py_datetimedelta
    nullptr,  // fn_write_py_guid
    slot(&fn_write_py_char),
};

void* m_py_buffer_callbacks[4] = {
    slot(&fn_get_sizeof_py_byffer),
    slot(&fn_create_py_byffer),
    slot(&fn_read_py_buffer_view),
    slot(&fn_release_py_buffer),
};

void* m_py_obj_api_callbacks[4] = {
    slot(&fn_xinc_ref),
    slot(&fn_xdec_ref),
    slot(&fn_get_py_none),
    slot(&fn_try_write_py_tpo),
};

void* m_py_iter_callbacks[1] = {
    nullptr,  // fn_clbk_iter_next
};

void* m_py_ucol_callbacks[11] = {
    nullptr,  // fn_clbk_ucol_list_length
    nullptr,  // fn_clbk_ucol_list_longlength
    nullptr,  // fn_clbk_ucol_remove_at
    nullptr,  // fn_clbk_ucol_clear
    nullptr,  // fn_clbk_ucol_sequence_length
    nullptr,  // fn_clbk_ucol_sequence_longlength
    nullptr,  // fn_clbk_ucol_get_enumerator
    nullptr,  // fn_clbk_ucol_object_length
    nullptr,  // fn_clbk_ucol_create_fast_list
    nullptr,  // fn_clbk_ucol_create_fast_longlist
    slot(&fn_clbk_ucol_get_unicode_bytes),
};

void* m_py_olist_callbacks[11] = {};  // list views: not part of this runtime yet
void* m_py_oseq_callbacks[3] = {};    // sequence views
void* m_py_rawio_callbacks[12] = {};  // Python file objects as managed streams

void** m_all_py_wrapper_callbacks[9] = {
    m_py_read_callbacks,  m_py_write_callbacks, m_py_buffer_callbacks,
    m_py_obj_api_callbacks, m_py_iter_callbacks, m_py_ucol_callbacks,
    m_py_olist_callbacks, m_py_oseq_callbacks, m_py_rawio_callbacks,
};

}  // namespace

void*** get_all_py_wrapper_callbacks()
{
    return m_all_py_wrapper_callbacks;
}
