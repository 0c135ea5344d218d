// Native host of the managed class Orvane.WrpGen.Interop.ExchangeHost:
// registration of native callbacks, type names, and release of managed
// handles and pending argument records.
#pragma once

#include <cstdint>
#include <string>

class HostEnvironment;
struct VariantArg;

class ExchangeHost {
public:
    static constexpr const char* kManagedType = "Orvane.WrpGen.Interop.ExchangeHost";

    static ExchangeHost* get_instance();

    // Binds every entry of the managed class in `assembly`, stopping at the
    // first failure (then error_msg() says why). Keeps the assembly name for
    // the other hosts.
    bool initialize(const char* assembly);
    const std::string& error_msg() const { return error_; }
    // The assembly given to initialize(), or null before.
    const char* get_assembly_name() const { return has_assembly_ ? assembly_.c_str() : nullptr; }

    bool set_method_ptr(const HostEnvironment& host, const char* method, void** slot);

    // The full name of the handle's runtime type; empty when the managed side gives none.
    std::u16string get_type_name(void* handle) const;
    void set_exception_callback(void* fn) const { set_exception_callback_(fn); }
    void set_catch_and_clear_error_callback(void* fn) const { set_catch_and_clear_error_callback_(fn); }
    void set_u16_bytes_builder_callback(void* fn) const { set_u16_str_builder_callback_(fn); }
    void set_py_str_builder_callback(void* fn) const { set_py_str_builder_callback_(fn); }
    void set_py_unraisable_str_builder(void* fn) const { set_py_unraisable_str_builder_callback_(fn); }
    void set_py_bytes_builder_callback(void* fn) const { set_py_bytes_builder_callback_(fn); }
    void set_py_static_callbacks(void*** tables) const { set_py_static_callbacks_(tables); }
    void set_py_generic_callbacks(void*** tables) const { set_py_generic_callbacks_(tables); }
    void free_pending_args(VariantArg* args, int count) const { free_pending_args_(args, count); }
    void free_instance(void* handle) const { free_instance_(handle); }

private:
    using get_type_name_fn = char16_t* (*)(void* handle);
    using set_callback_fn = void (*)(void* fn);
    using set_tables_fn = void (*)(void*** tables);
    using free_pending_args_fn = void (*)(VariantArg* args, int32_t count);
    using free_instance_fn = void (*)(void* handle);

    ExchangeHost() = default;
    template <typename Fn>
    bool bind(const HostEnvironment& host, const char* method, Fn& slot);

    // Slots in the managed class's order.
    get_type_name_fn get_type_name_ = nullptr;
    set_callback_fn set_exception_callback_ = nullptr;
    set_callback_fn set_catch_and_clear_error_callback_ = nullptr;
    set_callback_fn set_u16_str_builder_callback_ = nullptr;
    set_callback_fn set_py_str_builder_callback_ = nullptr;
    set_callback_fn set_py_unraisable_str_builder_callback_ = nullptr;
    set_callback_fn set_py_bytes_builder_callback_ = nullptr;
    set_tables_fn set_py_static_callbacks_ = nullptr;
    set_tables_fn set_py_generic_callbacks_ = nullptr;
    free_pending_args_fn free_pending_args_ = nullptr;
    free_instance_fn free_instance_ = nullptr;

    std::string assembly_;
    bool has_assembly_ = false;
    std::string error_;
};
