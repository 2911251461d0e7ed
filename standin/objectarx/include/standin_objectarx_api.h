/// How the host's names are marked. STANDIN_OBJECTARX_API goes before a free function or a class that only
/// the stand-ins and the workbench know; STANDIN_OBJECTARX_CLASS and STANDIN_OBJECTARX_MEMBER go into the
/// host's own classes.
#ifndef STANDIN_OBJECTARX_API_H
#define STANDIN_OBJECTARX_API_H

#if defined(_WIN32) && defined(STANDIN_OBJECTARX_BUILD)
#define STANDIN_OBJECTARX_API __declspec(dllexport)
#elif defined(_WIN32)
#define STANDIN_OBJECTARX_API __declspec(dllimport)
#else
#define STANDIN_OBJECTARX_API __attribute__((visibility("default")))
#endif

#if defined(_MSC_VER)
// In Microsoft's ABI a class that is imported whole imports its inline members too, which the real host does
// not have.
#define STANDIN_OBJECTARX_CLASS
#define STANDIN_OBJECTARX_MEMBER STANDIN_OBJECTARX_API
#else
#define STANDIN_OBJECTARX_CLASS STANDIN_OBJECTARX_API
#define STANDIN_OBJECTARX_MEMBER
#endif

#endif
