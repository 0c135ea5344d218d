#include "proxy_binding.h"

#include "host_environment.h"

std::string missing_method_error_message(const char* assembly, const char* type, const char* method, int status)
{
    std::string message = "While initializing the host for the '";
    message += type ? type : "";
    message += " (Assembly=";
    message += assembly ? assembly : "";
    message += ")' type, an error occurred - Method '";
    message += method ? method : "";
    message += "' not found (error=";
    message += std::to_string(status);
    message += ")";
    return message;
}

bool fn_bind_host_method(const HostEnvironment& host, const char* assembly, const char* type, const char* method,
                         void** slot, std::string& error)
{
    // Without an assembly name (the exchange host was never initialised) there
    // is nothing the runtime could bind either.
    if (!host.is_ready() || !assembly) {
        error = HostNotReady;
        return false;
    }
    int status = host.try_create_delegate(assembly, type, method, slot);
    if (status == 0)
        return true;
    error = missing_method_error_message(assembly, type, method, status);
    return false;
}
