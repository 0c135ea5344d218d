// The shared entry sequence of every extension module of the family. The
// generated layer describes its module with one WrpGeneratedModule record
// (in wrp_entry.h) and PyInit_<name> hands it to fn_module_entry.
#pragma once

#include <Python.h>
#include <string>

struct WrpGeneratedModule {
    const char* module_name;                      // "orvane.folaro"
    const char* proxy_assembly;                   // "WrpInterop.Orvane.Folaro"
    const char* company;                          // "orvane"
    const char* product;                          // "folaro"
    PyObject* (*build_root)();                    // the generated root module builder
    int (*import_capsules)();                     // sibling capsules; null when none
    void (*init_static_fields)(int* warn_count);  // null when no class has static members
    int (*export_capsules)(PyObject* root);       // this module's own capsules; null when none
};

// Starts the host and binds the exchange proxy; TypeError and false on failure.
bool initialize_clr_host(std::string runtime_version, const char* assembly_name, bool flag, std::string company,
                         std::string product);

// The whole import: identifiers, host, module tree, _wrpgen, capsules, static fields.
PyObject* fn_module_entry(const WrpGeneratedModule& module);

// Builds <root>._wrpgen with _interop and _generic and hangs it on the root.
bool wrpPye_mlit_FFFFFFFF_common_wrappers(PyObject* root);
PyObject* wrpPye_mlit_FFFFFFFF_interop_wrappers(const char* root_name);

// Defined by each module's generated layer.
PyObject* wrpPygn_mlit_FFFFFFFF_generic_wrappers(const char* root_name);
