// The process-wide state of the hosting layer, in one place.
//
// What is not in this structure, and why:
// - HostEnvironment::instance(), ExchangeHost::get_instance() and
//   ObjectHost::get_instance() are singletons whose accessors are their
//   interface; each keeps its object in a function-local static, so it is
//   built on first use with thread-safe initialisation and destroyed by the
//   process exit handlers in reverse order of construction.
// - HostNotReady and OrvaneDomainName (host_environment.cpp) are exported C
//   data symbols looked up by name from outside this library.
#pragma once

struct HostingState {
    // Trace lines below error level are printed. Written by trace::initialize()
    // from COREHOST_TRACE when the host environment starts (first import, under
    // the import lock) and by trace::enable()/disable(); read by every trace
    // call.
    bool trace_enabled;
};

// The one HostingState of the process (zero-initialised, lives until exit).
HostingState& hosting_state();
