#include "trace.h"

#include <cstdarg>
#include <string>

#include "pal.h"

namespace trace {

namespace {
bool g_enabled = false;
}  // namespace

void initialize() {
    if (g_enabled)
        return;
    std::string value;
    if (pal::getenv("COREHOST_TRACE", value)) {
        g_enabled = pal::to_int(value) >= 1;
        if (g_enabled)
            info("%s", "CLR host tracing enabled");
    }
}

void enable() { g_enabled = true; }
void disable() { g_enabled = false; }
bool is_enabled() { return g_enabled; }

void error(const char* format, ...) {
    va_list args;
    va_start(args, format);
    pal::err_vprintf(format, args);
    va_end(args);
}

#define ORVANE_TRACE_TO_STDOUT(format)          \
    do {                                        \
        if (!g_enabled)                         \
            return;                             \
        va_list args;                           \
        va_start(args, format);                 \
        pal::out_vprintf(format, args);         \
        va_end(args);                           \
    } while (0)

void warning(const char* format, ...) { ORVANE_TRACE_TO_STDOUT(format); }
void info(const char* format, ...) { ORVANE_TRACE_TO_STDOUT(format); }
void verbose(const char* format, ...) { ORVANE_TRACE_TO_STDOUT(format); }

#undef ORVANE_TRACE_TO_STDOUT

}  // namespace trace
