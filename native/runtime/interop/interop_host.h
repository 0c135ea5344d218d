// The common part of the fixed interop hosts: the proxy assembly and the
// binding of entries, in order, until the first one that cannot be bound.
#pragma once

#include <string>

class HostEnvironment;

class PyInteropHostBase {
public:
    bool is_not_valid() const { return !error_.empty(); }
    const std::string& error_msg() const { return error_; }

    // Binds `method` of the managed proxy class into *slot.
    bool set_method_ptr(const HostEnvironment& host, const char* method, void** slot);

protected:
    explicit PyInteropHostBase(const char* managed_type);

    // Binds one entry; once an entry failed every later one is skipped, so the
    // first failure's message is the one kept.
    template <typename Fn>
    bool bind(const char* method, Fn& slot)
    {
        if (is_not_valid())
            return false;
        void* entry = nullptr;
        if (!set_method_ptr(*host_, method, &entry))
            return false;
        slot = reinterpret_cast<Fn>(entry);
        return true;
    }

private:
    const char* managed_type_;
    const HostEnvironment* host_;
    std::string assembly_;
    bool has_assembly_ = false;
    std::string error_;
};
