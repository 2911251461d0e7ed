/// Makes a coming pthread_create of the module fail. The test program wraps the call at link time.
#ifndef TESTS_MODULE_THREAD_START_H
#define TESTS_MODULE_THREAD_START_H

/// The nth call from now on fails once with EAGAIN.
void failThreadStart(int nth);

#endif
