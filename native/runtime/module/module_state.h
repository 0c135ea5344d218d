// The process-wide state of the module layer, in one place.
//
// What is not in this structure, and why: the interned identifiers
// PyWrpId<Group>_<Name> (identifiers.h) are exported data symbols that the
// generated layer refers to by name; they stay separate globals, made once by
// fn_intern_identifiers() on the first import and kept for the process.
#pragma once

#include <Python.h>
#include <string>

struct ModuleState {
    // The definition of <root>._wrpgen and the full name its m_name points
    // into. Written by wrpPye_mlit_FFFFFFFF_common_wrappers while the root
    // module is built (under the import lock); a module definition must
    // outlive its module, so both live until exit.
    PyModuleDef wrpgen_def;
    std::string wrpgen_name;
};

// The one ModuleState of the process.
ModuleState& module_state();
