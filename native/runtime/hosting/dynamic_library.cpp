#include "dynamic_library.h"

#include <stdexcept>
#include <utility>

#include "pal.h"
#include "trace.h"

DynamicLibrary::~DynamicLibrary()
{
    free();
}

DynamicLibrary::DynamicLibrary(DynamicLibrary&& other) noexcept
    : can_free_(other.can_free_), handle_(std::exchange(other.handle_, nullptr)),
      first_load_(std::exchange(other.first_load_, false))
{
}

DynamicLibrary& DynamicLibrary::operator=(DynamicLibrary&& other) noexcept
{
    if (this != &other) {
        free();
        can_free_ = other.can_free_;
        handle_ = std::exchange(other.handle_, nullptr);
        first_load_ = std::exchange(other.first_load_, false);
    }
    return *this;
}

bool DynamicLibrary::try_load(const std::string& path)
{
    free();
    handle_ = nullptr;
    first_load_ = false;

    trace::info("Try get module...");
    void* handle = nullptr;
    if (pal::get_module(path, &handle)) {
        trace::info("Using existed module...");
        handle_ = handle;
        return true;
    }
    trace::info("No existed module...");
    handle = pal::load_library(path);
    if (handle) {
        handle_ = handle;
        first_load_ = true;
        return true;
    }
    trace::info("No module...");
    trace::verbose("No: '%s'", path.c_str());
    return false;
}

DynamicLibrary DynamicLibrary::load(const std::string& path)
{
    DynamicLibrary library;
    if (!library.try_load(path))
        throw std::runtime_error("DynamicLibrary::load");
    return library;
}

bool DynamicLibrary::free()
{
    if (!handle_)
        return false;
    if (can_free_) {
        pal::free_library(handle_);
        handle_ = nullptr;
    }
    return true;
}

void* DynamicLibrary::get_symbol(const char* name) const
{
    if (!handle_)
        throw std::logic_error("Library was not opened!");
    void* symbol = pal::get_symbol(handle_, name);
    if (!symbol)
        throw std::runtime_error(std::string("No such symbol: ") + name);
    return symbol;
}
