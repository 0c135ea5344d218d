#include "exchange_host.h"

#include <cstdlib>

#include "host_environment.h"
#include "proxy_binding.h"

ExchangeHost* ExchangeHost::get_instance()
{
    static ExchangeHost host;
    return &host;
}

bool ExchangeHost::set_method_ptr(const HostEnvironment& host, const char* method, void** slot)
{
    return fn_bind_host_method(host, get_assembly_name(), kManagedType, method, slot, error_);
}

template <typename Fn>
bool ExchangeHost::bind(const HostEnvironment& host, const char* method, Fn& slot)
{
    void* entry = nullptr;
    if (!set_method_ptr(host, method, &entry))
        return false;
    slot = reinterpret_cast<Fn>(entry);
    return true;
}

bool ExchangeHost::initialize(const char* assembly)
{
    assembly_ = assembly ? assembly : "";
    has_assembly_ = assembly != nullptr;
    error_.clear();
    const HostEnvironment& host = HostEnvironment::instance(nullptr, false, nullptr, nullptr, nullptr, nullptr);
    // The unraisable-string setter is bound before the string setter although
    // its slot follows it.
    return bind(host, "GetTypeName", get_type_name_) && bind(host, "SetExceptionCallback", set_exception_callback_) &&
           bind(host, "SetCatchAndClearErrorCallback", set_catch_and_clear_error_callback_) &&
           bind(host, "SetU16StrBuilderCallback", set_u16_str_builder_callback_) &&
           bind(host, "SetPyUnraisableStrBuilderCallback", set_py_unraisable_str_builder_callback_) &&
           bind(host, "SetPyStrBuilderCallback", set_py_str_builder_callback_) &&
           bind(host, "SetPyBytesBuilderCallback", set_py_bytes_builder_callback_) &&
           bind(host, "SetPyStaticCallbacks", set_py_static_callbacks_) &&
           bind(host, "SetPyGenericCallbacks", set_py_generic_callbacks_) &&
           bind(host, "FreePendingArgs", free_pending_args_) && bind(host, "FreeInstance", free_instance_);
}

std::u16string ExchangeHost::get_type_name(void* handle) const
{
    char16_t* name = get_type_name_(handle);
    if (!name)
        return std::u16string();
    std::u16string result(name);
    std::free(name);  // allocated by the managed side with malloc
    return result;
}
