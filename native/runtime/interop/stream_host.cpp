#include "interop/stream_host.h"

PyHost_ph_Stream* PyHost_ph_Stream::get_instance()
{
    static PyHost_ph_Stream host;
    return &host;
}

PyHost_ph_Stream::PyHost_ph_Stream() : PyInteropHostBase(kManagedType)
{
    bind("CanRead", can_read_) && bind("CanSeek", can_seek_) && bind("CanWrite", can_write_) &&
        bind("Length", length_) && bind("Position", position_) && bind("Close", close_) && bind("Flush", flush_) &&
        bind("Read", read_) && bind("Seek", seek_) && bind("SetLength", set_length_) && bind("Write", write_) &&
        bind("IsAssignableTo", is_assignable_to_);
}
