#include "object_host.h"

#include "exchange_host.h"
#include "host_environment.h"
#include "proxy_binding.h"

ObjectHost* ObjectHost::get_instance()
{
    static ObjectHost host;
    return &host;
}

bool ObjectHost::set_method_ptr(const HostEnvironment& host, const char* method, void** slot)
{
    return fn_bind_host_method(host, has_assembly_ ? assembly_.c_str() : nullptr, kManagedType, method, slot, error_);
}

template <typename Fn>
bool ObjectHost::bind(const HostEnvironment& host, const char* method, Fn& slot)
{
    void* entry = nullptr;
    if (!set_method_ptr(host, method, &entry))
        return false;
    slot = reinterpret_cast<Fn>(entry);
    return true;
}

ObjectHost::ObjectHost()
{
    if (const char* assembly = ExchangeHost::get_instance()->get_assembly_name()) {
        assembly_ = assembly;
        has_assembly_ = true;
    }
    const HostEnvironment& host = HostEnvironment::instance(nullptr, false, nullptr, nullptr, nullptr, nullptr);
    // Stops at the first failure; a host that failed once stays invalid.
    if (bind(host, "InstanceToString", instance_to_string_) && bind(host, "GetHash", get_hash_) &&
        bind(host, "IsEquals", is_equals_))
        bind(host, "Dispose", dispose_);
}
