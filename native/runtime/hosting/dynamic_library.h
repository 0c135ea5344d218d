// Owner of one shared library opened with the dynamic loader.
#pragma once

#include <string>

class DynamicLibrary {
public:
    DynamicLibrary() = default;
    ~DynamicLibrary();

    DynamicLibrary(DynamicLibrary&& other) noexcept;
    DynamicLibrary& operator=(DynamicLibrary&& other) noexcept;
    DynamicLibrary(const DynamicLibrary&) = delete;
    DynamicLibrary& operator=(const DynamicLibrary&) = delete;

    // Releases what was held, then takes the library at `path`: the copy
    // already loaded in the process if there is one (not a first load),
    // otherwise a fresh load with global symbols (a first load).
    bool try_load(const std::string& path);
    // A new object holding `path`; throws std::runtime_error("DynamicLibrary::load").
    static DynamicLibrary load(const std::string& path);

    // Closes the library when a handle is held and freeing is allowed.
    // Returns whether a handle was held.
    bool free();
    // false: the library stays loaded for the life of the process.
    void set_can_free(bool can_free) { can_free_ = can_free; }
    // Whether this object itself opened the library.
    bool is_first_load() const { return first_load_; }
    void* handle() const { return handle_; }

    // The symbol `name`; throws std::logic_error("Library was not opened!")
    // without a handle, std::runtime_error("No such symbol: <name>") when missing.
    void* get_symbol(const char* name) const;

private:
    bool can_free_ = true;
    void* handle_ = nullptr;
    bool first_load_ = false;
};
