/// The export mark of the Windows stand-in.
#ifndef STANDIN_WIN32_API_H
#define STANDIN_WIN32_API_H

/// Marks what the shared library of the Windows stand-in exports. The Windows build has of it only the clock,
/// which is linked into each program.
#if defined(_WIN32)
#define STANDIN_WIN32_API
#else
#define STANDIN_WIN32_API __attribute__((visibility("default")))
#endif

#endif
