#include "interop/interop_host.h"

#include "hosting/hosting.h"

PyInteropHostBase::PyInteropHostBase(const char* managed_type)
    : managed_type_(managed_type), host_(&HostEnvironment::instance(nullptr, false, nullptr, nullptr, nullptr, nullptr))
{
    if (const char* assembly = ExchangeHost::get_instance()->get_assembly_name()) {
        assembly_ = assembly;
        has_assembly_ = true;
    }
}

bool PyInteropHostBase::set_method_ptr(const HostEnvironment& host, const char* method, void** slot)
{
    return fn_bind_host_method(host, has_assembly_ ? assembly_.c_str() : nullptr, managed_type_, method, slot, error_);
}
