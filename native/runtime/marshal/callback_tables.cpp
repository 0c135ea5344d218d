// The static callback tables handed to managed code at start-up. Managed code
// indexes tables and slots by position, so order and sizes are fixed. Slots
// whose functions are not part of this runtime yet stay null; the managed
// side must not call them.
#include "marshal/callback_tables.h"

#include "interop/containers.h"
#include "interop/streams.h"

#include "marshal/datetime.h"
#include "marshal/decimal.h"
#include "marshal/guid.h"
#include "marshal/marshal_state.h"
#include "marshal/object_api.h"
#include "marshal/scalars.h"
#include "marshal/strings.h"
#include "marshal/timespan.h"

namespace {

template <typename Fn>
void* slot(Fn* fn)
{
    return reinterpret_cast<void*>(fn);
}

MarshalState g_marshal_state = {
    // m_py_read_callbacks
    {
        slot(&fn_read_py_string),
        slot(&fn_read_py_bool),
        slot(&fn_read_py_vers_long),
        slot(&fn_read_py_double),
        slot(&fn_read_py_decimal),
        slot(&fn_read_py_decimal_tuple),
        slot(&fn_read_py_vers_datetime),
        slot(&fn_read_py_vers_date),
        slot(&fn_read_py_vers_time),
        slot(&fn_read_py_datetimedelta),
        slot(&fn_read_py_guid),
    },

    // m_py_write_callbacks
    {
        slot(&fn_write_py_tpo),
        slot(&fn_write_py_bool),
        slot(&fn_write_py_long),
        slot(&fn_write_py_ulong),
        slot(&fn_write_py_longlong),
        slot(&fn_write_py_ulonglong),
        slot(&fn_write_py_double),
        slot(&fn_write_py_decimal),
        slot(&fn_write_py_date_time),
        slot(&fn_write_py_date_time_offset),
        slot(&fn_write_py_datetimedelta),
        slot(&fn_write_py_guid),
        slot(&fn_write_py_char),
    },

    // m_py_buffer_callbacks
    {
        slot(&fn_get_sizeof_py_byffer),
        slot(&fn_create_py_byffer),
        slot(&fn_read_py_buffer_view),
        slot(&fn_release_py_buffer),
    },

    // m_py_obj_api_callbacks
    {
        slot(&fn_xinc_ref),
        slot(&fn_xdec_ref),
        slot(&fn_get_py_none),
        slot(&fn_try_write_py_tpo),
    },

    // m_py_iter_callbacks
    {
        slot(&fn_clbk_iter_next),
    },

    // m_py_ucol_callbacks
    {
        slot(&fn_clbk_ucol_list_length),
        slot(&fn_clbk_ucol_list_longlength),
        slot(&fn_clbk_ucol_remove_at),
        slot(&fn_clbk_ucol_clear),
        slot(&fn_clbk_ucol_sequence_length),
        slot(&fn_clbk_ucol_sequence_longlength),
        slot(&fn_clbk_ucol_get_enumerator),
        slot(&fn_clbk_ucol_object_length),
        slot(&fn_clbk_ucol_create_fast_list),
        slot(&fn_clbk_ucol_create_fast_longlist),
        slot(&fn_clbk_ucol_get_unicode_bytes),
    },

    // m_py_olist_callbacks
    {
        slot(&fn_clbk_olist_get_item),
        slot(&fn_clbk_olist_set_item),
        slot(&fn_clbk_olist_add),
        slot(&fn_clbk_olist_insert),
        slot(&fn_clbk_olist_remove),
        slot(&fn_clbk_olist_contains),
        slot(&fn_clbk_olist_index_of),
        slot(&fn_clbk_olist_set_fast_item),
        slot(&fn_clbk_olist_write_clr_ilist),
        slot(&fn_clbk_olist_write_clr_arrlist),
        slot(&fn_clbk_olist_write_clr_array),
    },

    // m_py_oseq_callbacks
    {
        slot(&fn_clbk_oseq_get_item),
        slot(&fn_clbk_oseq_contains),
        slot(&fn_clbk_oseq_index_of),
    },

    // m_py_rawio_callbacks
    {
        slot(&fn_clbk_rawio_write),
        slot(&fn_clbk_rawio_write_byte),
        slot(&fn_clbk_rawio_read),
        slot(&fn_clbk_rawio_readbyte),
        slot(&fn_clbk_rawio_seek),
        slot(&fn_clbk_rawio_flush),
        slot(&fn_clbk_rawio_close),
        slot(&fn_clbk_rawio_readable),
        slot(&fn_clbk_rawio_writable),
        slot(&fn_clbk_rawio_seekable),
        slot(&fn_clbk_rawio_tell),
        slot(&fn_clbk_rawio_length),
    },

    // m_all_py_wrapper_callbacks
    {
        g_marshal_state.m_py_read_callbacks,
        g_marshal_state.m_py_write_callbacks,
        g_marshal_state.m_py_buffer_callbacks,
        g_marshal_state.m_py_obj_api_callbacks,
        g_marshal_state.m_py_iter_callbacks,
        g_marshal_state.m_py_ucol_callbacks,
        g_marshal_state.m_py_olist_callbacks,
        g_marshal_state.m_py_oseq_callbacks,
        g_marshal_state.m_py_rawio_callbacks,
    },
};

}  // namespace

MarshalState& marshal_state()
{
    return g_marshal_state;
}

void*** get_all_py_wrapper_callbacks()
{
    return g_marshal_state.m_all_py_wrapper_callbacks;
}
