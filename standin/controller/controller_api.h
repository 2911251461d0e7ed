/// The export mark of the controller stand-in.
#ifndef STANDIN_CONTROLLER_API_H
#define STANDIN_CONTROLLER_API_H

/// Marks what the controller stand-in exports in addition to the seven operations.
#if defined(_WIN32) && defined(STANDIN_CONTROLLER_BUILD)
#define STANDIN_CONTROLLER_API __declspec(dllexport)
#elif defined(_WIN32)
#define STANDIN_CONTROLLER_API __declspec(dllimport)
#else
#define STANDIN_CONTROLLER_API __attribute__((visibility("default")))
#endif

#endif
