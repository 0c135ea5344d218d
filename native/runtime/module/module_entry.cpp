// The import sequence shared by every extension module of the family:
// identifiers, the CLR host and its callbacks, the generated module tree,
// _wrpgen, sibling capsules and static fields. Either the whole tree comes
// back or null with an ImportError that chains the underlying error.
#include "module/module_entry.h"

#include <cstdlib>
#include <exception>

#include "hosting/hosting.h"
#include "interop/interop_module.h"
#include "marshal/callback_tables.h"
#include "marshal/error_bridge.h"
#include "marshal/strings.h"
#include "module/identifiers.h"
#include "module/import_errors.h"

namespace {

constexpr const char kRuntimeVersion[] = "3.1";

}  // namespace

bool initialize_clr_host(std::string runtime_version, const char* assembly_name, bool flag, std::string company,
                         std::string product)
{
    // A host that cannot start ends the process: there is no runtime to fall
    // back to and no second attempt in the same process. Say why on stderr.
    try {
        HostEnvironment::instance(runtime_version.c_str(), flag, company.c_str(), product.c_str(), nullptr, nullptr);
    } catch (const std::exception& e) {
        trace::error("The CLR host could not start: %s", e.what());
        std::abort();
    } catch (...) {
        trace::error("The CLR host could not start.");
        std::abort();
    }

    ExchangeHost* exchange = ExchangeHost::get_instance();
    if (!exchange->initialize(assembly_name)) {
        PyErr_SetString(PyExc_TypeError, exchange->error_msg().c_str());
        return false;
    }
    exchange->set_exception_callback(reinterpret_cast<void*>(&on_clr_exception));
    exchange->set_catch_and_clear_error_callback(reinterpret_cast<void*>(&fn_catch_and_clear_py_error));
    exchange->set_u16_bytes_builder_callback(reinterpret_cast<void*>(&fn_create_u16_buffer));
    exchange->set_py_str_builder_callback(reinterpret_cast<void*>(&fn_conv_clr_string_to_py_string));
    exchange->set_py_unraisable_str_builder(reinterpret_cast<void*>(&fn_conv_clr_string_to_py_unraisable));
    exchange->set_py_bytes_builder_callback(reinterpret_cast<void*>(&fn_conv_clr_bytes_to_py_bytes));
    exchange->set_py_static_callbacks(get_all_py_wrapper_callbacks());
    exchange->set_py_generic_callbacks(get_all_pygn_generic_callbacks());

    ObjectHost* object_host = ObjectHost::get_instance();
    if (object_host->is_not_valid()) {
        PyErr_SetString(PyExc_TypeError, object_host->error_msg().c_str());
        return false;
    }
    return true;
}

PyObject* fn_module_entry(const WrpGeneratedModule& module)
{
    fn_intern_identifiers();
    // The fixed wrapper types carry this module's name; the generated tree
    // readies some of them before _wrpgen itself is built.
    wrpPye_prepare_interop_types(module.module_name);

    PyObject* root = nullptr;
    if (!initialize_clr_host(kRuntimeVersion, module.proxy_assembly, false, module.company, module.product))
        goto error;

    root = module.build_root();
    if (!root)
        goto error;
    if (!wrpPye_mlit_FFFFFFFF_common_wrappers(root))
        goto error;
    if (module.export_capsules && module.export_capsules(root) < 0)
        goto error;
    if (module.import_capsules && module.import_capsules() < 0)
        goto error;

    if (module.init_static_fields) {
        int warn_count = 0;
        module.init_static_fields(&warn_count);
        // Static fields never fail the import.
        if (PyErr_Occurred())
            PyErr_Clear();
    }
    return root;

error:
    Py_XDECREF(root);
    PyShlErr_ModuleImportError(module.module_name, -1);
    return nullptr;
}
