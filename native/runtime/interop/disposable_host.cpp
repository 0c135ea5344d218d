#include "interop/disposable_host.h"

#include "hosting/hosting.h"

PyHost_ph_Disposable* PyHost_ph_Disposable::get_instance()
{
    static PyHost_ph_Disposable host;
    return &host;
}

bool PyHost_ph_Disposable::set_method_ptr(const HostEnvironment& host, const char* method, void** slot)
{
    return fn_bind_host_method(host, has_assembly_ ? assembly_.c_str() : nullptr, kManagedType, method, slot, error_);
}

PyHost_ph_Disposable::PyHost_ph_Disposable()
{
    if (const char* assembly = ExchangeHost::get_instance()->get_assembly_name()) {
        assembly_ = assembly;
        has_assembly_ = true;
    }
    const HostEnvironment& host = HostEnvironment::instance(nullptr, false, nullptr, nullptr, nullptr, nullptr);
    void* entry = nullptr;
    if (set_method_ptr(host, "IsAssignableTo", &entry))
        is_assignable_to_ = reinterpret_cast<is_assignable_to_fn>(entry);
}
