// Exceptions for fatal host start-up failures: a message and an optional
// system error code whose text what() appends.
#pragma once

#include <exception>
#include <string>

class BaseException : public std::exception {
public:
    explicit BaseException(unsigned int code);
    BaseException(unsigned int code, std::string message);
    explicit BaseException(std::string message);
    BaseException(std::string message, unsigned int code);

    unsigned int error_code() const noexcept { return code_; }
    // The message, then ": " and the system's text for the code when it is non-zero.
    const char* what() const noexcept override;

private:
    std::string message_;
    unsigned int code_ = 0;
    mutable std::string what_;  // built on first use
    mutable bool what_built_ = false;
};

class HostException : public BaseException {
public:
    using BaseException::BaseException;
};
