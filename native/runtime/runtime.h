// Everything the generated layer of an extension module uses from the runtime.
#pragma once

#include <Python.h>
#include <cstdint>
#include <string>

#include "hosting/hosting.h"
#include "marshal/records.h"
#include "marshal/scalars.h"
#include "marshal/strings.h"
#include "marshal/variant.h"
#include "marshal/error_bridge.h"
#include "marshal/callback_tables.h"
#include "objects/clr_object.h"
#include "objects/host_state.h"
#include "objects/types_map.h"
#include "objects/markattr.h"
#include "objects/clr_to_py.h"
#include "objects/py_to_clr.h"
#include "module/identifiers.h"
#include "module/import_errors.h"
#include "module/module_entry.h"
#include "interop/disposable.h"
