#include "trace.h"

#include <cstdarg>
#include <string>

#include "hosting_state.h"
#include "pal.h"

namespace trace {

void initialize()
{
    HostingState& state = hosting_state();
    if (state.trace_enabled)
        return;
    std::string value;
    if (pal::getenv("COREHOST_TRACE", value)) {
        state.trace_enabled = pal::to_int(value) >= 1;
        if (state.trace_enabled)
            info("%s", "CLR host tracing enabled");
    }
}

void enable()
{
    hosting_state().trace_enabled = true;
}
void disable()
{
    hosting_state().trace_enabled = false;
}
bool is_enabled()
{
    return hosting_state().trace_enabled;
}

void error(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    pal::err_vprintf(format, args);
    va_end(args);
}

#define ORVANE_TRACE_TO_STDOUT(format)                                                                                 \
    do {                                                                                                               \
        if (!hosting_state().trace_enabled)                                                                            \
            return;                                                                                                    \
        va_list args;                                                                                                  \
        va_start(args, format);                                                                                        \
        pal::out_vprintf(format, args);                                                                                \
        va_end(args);                                                                                                  \
    } while (0)

void warning(const char* format, ...)
{
    ORVANE_TRACE_TO_STDOUT(format);
}
void info(const char* format, ...)
{
    ORVANE_TRACE_TO_STDOUT(format);
}
void verbose(const char* format, ...)
{
    ORVANE_TRACE_TO_STDOUT(format);
}

#undef ORVANE_TRACE_TO_STDOUT

}  // namespace trace
