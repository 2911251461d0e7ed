#ifndef STANDIN_OBJECTARX_API_H
#define STANDIN_OBJECTARX_API_H

/// Marks what the host stand-in exports.
#if defined(_WIN32) && defined(STANDIN_OBJECTARX_BUILD)
#define STANDIN_OBJECTARX_API __declspec(dllexport)
#elif defined(_WIN32)
#define STANDIN_OBJECTARX_API __declspec(dllimport)
#else
#define STANDIN_OBJECTARX_API __attribute__((visibility("default")))
#endif

#endif
