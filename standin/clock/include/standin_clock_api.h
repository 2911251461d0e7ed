#ifndef STANDIN_CLOCK_API_H
#define STANDIN_CLOCK_API_H

/// Marks what the clock's shared library exports. In the Windows build the clock is linked into each program.
#if defined(_WIN32)
#define STANDIN_CLOCK_API
#else
#define STANDIN_CLOCK_API __attribute__((visibility("default")))
#endif

#endif
