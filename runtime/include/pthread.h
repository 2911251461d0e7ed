/// The part of POSIX threads that the module uses: posix_threads.cpp.
#ifndef LM_RUNTIME_PTHREAD_H
#define LM_RUNTIME_PTHREAD_H

#ifdef __cplusplus
extern "C" {
#endif

typedef unsigned long long pthread_t;
struct pthread_attr_t;

int pthread_create(pthread_t* thread, const struct pthread_attr_t* attributes, void* (*body)(void*),
                   void* argument);
int pthread_join(pthread_t thread, void** result);
int pthread_detach(pthread_t thread);

#ifdef __cplusplus
}
#endif

#endif
