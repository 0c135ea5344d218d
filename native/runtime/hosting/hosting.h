// The runtime hosting layer: discovery, the host environment, tracing, host
// exceptions and the binding of native slots to managed proxy methods.
#pragma once

#include "dynamic_library.h"
#include "exchange_host.h"
#include "host_environment.h"
#include "host_exception.h"
#include "hosting_state.h"
#include "netcore_version.h"
#include "object_host.h"
#include "pal.h"
#include "proxy_binding.h"
#include "trace.h"
