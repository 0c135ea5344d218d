#include "host_exception.h"

#include <utility>

#include "pal.h"

BaseException::BaseException(unsigned int code) : code_(code) {}

BaseException::BaseException(unsigned int code, std::string message) : message_(std::move(message)), code_(code) {}

BaseException::BaseException(std::string message) : message_(std::move(message)) {}

BaseException::BaseException(std::string message, unsigned int code) : message_(std::move(message)), code_(code) {}

const char* BaseException::what() const noexcept
{
    // noexcept: a failure while building the text ends the process.
    if (!what_built_) {
        what_ = message_;
        if (code_ != 0)
            what_ += ": " + pal::to_error_string(static_cast<int>(code_));
        what_built_ = true;
    }
    return what_.c_str();
}
