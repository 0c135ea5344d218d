// Host tracing, switched on by COREHOST_TRACE. Errors always go to standard
// error; the other levels go to standard output only while tracing is on.
// Each line is the formatted message followed by "\r\n".
#pragma once

#define ORVANE_TRACE_FORMAT __attribute__((format(printf, 1, 2)))

namespace trace {

// Enables tracing when COREHOST_TRACE holds a number >= 1; no-op once enabled.
void initialize();
void enable();
void disable();
bool is_enabled();

void error(const char* format, ...) ORVANE_TRACE_FORMAT;
void warning(const char* format, ...) ORVANE_TRACE_FORMAT;
void info(const char* format, ...) ORVANE_TRACE_FORMAT;
void verbose(const char* format, ...) ORVANE_TRACE_FORMAT;

}  // namespace trace
