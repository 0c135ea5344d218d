// Binding native slots to static methods of managed proxy classes; shared by
// the hand-written hosts and the generated ones.
#pragma once

#include <string>

class HostEnvironment;

// "While initializing the host for the '<type> (Assembly=<assembly>)' type, an
// error occurred - Method '<method>' not found (error=<status>)".
std::string missing_method_error_message(const char* assembly, const char* type, const char* method, int status);

// Binds `type`.`method` of `assembly` into *slot. On failure stores the reason
// in `error` (replacing any earlier one) and returns false: HostNotReady when
// the host has no AppDomain, otherwise the missing-method message.
bool fn_bind_host_method(const HostEnvironment& host, const char* assembly, const char* type, const char* method,
                         void** slot, std::string& error);
