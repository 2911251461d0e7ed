#ifndef STANDIN_WIN32_API_H
#define STANDIN_WIN32_API_H

/// Marks what the shared library of the Windows stand-in exports.
#define STANDIN_WIN32_API __attribute__((visibility("default")))

#endif
