// Native host of the managed proxy Orvane.WrpGen.Interop.SiApiDisposable.
#pragma once

#include <cstdint>
#include <string>

class HostEnvironment;

class PyHost_ph_Disposable {
public:
    static constexpr const char* kManagedType = "Orvane.WrpGen.Interop.SiApiDisposable";

    // Binds on first use, with the assembly of the initialised exchange host;
    // a host that failed once stays invalid.
    static PyHost_ph_Disposable* get_instance();

    bool is_not_valid() const { return !error_.empty(); }
    const std::string& error_msg() const { return error_; }
    bool set_method_ptr(const HostEnvironment& host, const char* method, void** slot);

    // Whether the managed object behind the handle implements IDisposable.
    bool is_assignable_to(void* handle) const { return is_assignable_to_(handle) != 0; }

private:
    using is_assignable_to_fn = uint8_t (*)(void* handle);

    PyHost_ph_Disposable();

    is_assignable_to_fn is_assignable_to_ = nullptr;
    std::string assembly_;
    bool has_assembly_ = false;
    std::string error_;
};
