// Native host of the managed class Orvane.WrpGen.Interop.ObjectHost: text,
// hash, equality and disposal of any managed object behind a handle.
#pragma once

#include <cstdint>
#include <string>

class HostEnvironment;

class ObjectHost {
public:
    static constexpr const char* kManagedType = "Orvane.WrpGen.Interop.ObjectHost";

    // Binds on first use, with the assembly of the initialised ExchangeHost.
    static ObjectHost* get_instance();

    bool is_not_valid() const { return !error_.empty(); }
    const std::string& error_msg() const { return error_; }

    bool set_method_ptr(const HostEnvironment& host, const char* method, void** slot);

    // 1: *out is a new reference to a Python str; 0: the object has no text;
    // -1: a Python error is set.
    int32_t to_string(void* handle, void** out) const { return instance_to_string_(handle, out); }
    int32_t get_hash_code(void* handle) const { return get_hash_(handle); }
    bool equals(void* a, void* b) const { return is_equals_(a, b) != 0; }
    void dispose(void* handle) const { dispose_(handle); }

private:
    using instance_to_string_fn = int32_t (*)(void* handle, void** out);
    using get_hash_fn = int32_t (*)(void* handle);
    using is_equals_fn = uint8_t (*)(void* a, void* b);
    using dispose_fn = void (*)(void* handle);

    ObjectHost();
    template <typename Fn>
    bool bind(const HostEnvironment& host, const char* method, Fn& slot);

    instance_to_string_fn instance_to_string_ = nullptr;
    get_hash_fn get_hash_ = nullptr;
    is_equals_fn is_equals_ = nullptr;
    dispose_fn dispose_ = nullptr;

    std::string assembly_;
    bool has_assembly_ = false;
    std::string error_;
};
